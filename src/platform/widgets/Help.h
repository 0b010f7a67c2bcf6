// The help engine: a window of our own that shows HTML topics, opened by the
// classic help call (file, command, context). Context numbers name topics;
// HelpTopicUrl says which page and anchor stand for each. A test installs a
// handler to see which help was asked for.
#pragma once

#include <QString>
#include <QUrl>
#include <functional>

// The commands of the help call.
enum HelpCommandCode : int {
    HelpContextCommand = 1,    // the topic of a context number
    HelpQuitCommand = 2,       // close the help window
    HelpContentsCommand = 3,   // the contents
    HelpOnHelpCommand = 4,     // how to use help
};

void ShowHelp(const QString& helpFile, int command, int context);

// The topic that a help call shows: a page of the help resources with the
// context's anchor. An unknown context gives the contents.
QUrl HelpTopicUrl(int command, int context);

using HelpHandler = std::function<void(const QString& helpFile, int command, int context)>;
// Replaces the help window; an empty handler restores it. Returns the previous one.
HelpHandler SetHelpHandler(HelpHandler handler);
