#include "platform/widgets/Help.h"

#include "platform/widgets/HelpViewer.h"

namespace {
HelpHandler& Handler()
{
    static HelpHandler handler;
    return handler;
}

// The pages and the contexts they hold, each page a range of numbers.
struct TopicPage {
    int first;
    int last;
    const char* page;
};
const TopicPage Pages[] = {
    {1, 12, "file.html"},      {13, 24, "edit.html"},     {25, 44, "view.html"},
    {45, 55, "debug.html"},    {56, 62, "run.html"},      {63, 67, "window.html"},
    {68, 72, "helpmenu.html"}, {73, 94, "popups.html"},   {95, 99, "registers.html"},
    {999, 999, "hc11symbols.html"},
};

QUrl Page(const char* page)
{
    return QUrl(QStringLiteral("qrc:/help/") + QLatin1String(page));
}
}  // namespace

HelpHandler SetHelpHandler(HelpHandler handler)
{
    return std::exchange(Handler(), std::move(handler));
}

QUrl HelpTopicUrl(int command, int context)
{
    if (command == HelpOnHelpCommand)
        return Page("usinghelp.html");
    if (command == HelpContextCommand) {
        for (const TopicPage& topic : Pages) {
            if (context >= topic.first && context <= topic.last) {
                QUrl url = Page(topic.page);
                url.setFragment(QStringLiteral("c%1").arg(context));
                return url;
            }
        }
    }
    return Page("index.html");
}

void ShowHelp(const QString& helpFile, int command, int context)
{
    if (Handler()) {
        Handler()(helpFile, command, context);
        return;
    }
    if (command == HelpQuitCommand)
        HelpViewer::CloseAll();
    else
        HelpViewer::Show(HelpTopicUrl(command, context));
}
