// The command line. The IDE's configuration is its Options dialog; the line
// only answers the two questions every program on Linux answers without
// starting: its version and its usage. It is read before the application
// object exists, so that neither needs a display.
#pragma once

#include <optional>
#include <ostream>

// Answers "--version" and "--help" (or "-h") on out and gives the exit
// status; nothing when the IDE is to start. Everything else is left to Qt,
// which takes its own options (-platform, --style ...) from the same line.
std::optional<int> AnswerCommandLine(int argc, const char* const argv[], std::ostream& out);
