#include "platform/CommandLine.h"

#include "platform/Version.h"

#include <string_view>

namespace {
void Usage(std::ostream& out)
{
    out << "Usage: orvane [--help] [--version]\n"
           "Orvane Integrated Development Tools: writes, assembles, downloads and debugs\n"
           "Motorola M68HC11 programs on a board over a serial port or in the simulator.\n"
           "\n"
           "  -h, --help     print this text and end\n"
           "      --version  print the version and end\n"
           "\n"
           "Settings are chosen under View > Options and kept in ~/.config/Orvane/Orvane.ini.\n";
}
}  // namespace

std::optional<int> AnswerCommandLine(int argc, const char* const argv[], std::ostream& out)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "--version") {
            out << "orvane " << VersionText() << '\n';
            return 0;
        }
        if (arg == "--help" || arg == "-h") {
            Usage(out);
            return 0;
        }
    }
    return std::nullopt;
}
