#include <QApplication>

#include "platform/CommandLine.h"
#include "ui/main/frmMain.h"

#include <iostream>

int main(int argc, char* argv[])
{
    // Before the application object, which wants a display.
    if (const std::optional<int> answered = AnswerCommandLine(argc, argv, std::cout))
        return *answered;
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Orvane"));
    // The desktop entry's name, which Wayland desktops match the window with.
    app.setDesktopFileName(QStringLiteral("orvane"));
    frmMain window;
    window.MDIForm_Load();
    window.show();
    return app.exec();
}
