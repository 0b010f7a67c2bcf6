#include "hc11board/Options.h"

#include <charconv>

namespace hc11board {

namespace {

bool ParseCount(const std::string& text, std::uint64_t& value)
{
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end && !text.empty();
}

} // namespace

ParsedOptions ParseOptions(const std::vector<std::string>& arguments)
{
    ParsedOptions parsed;
    Options& o = parsed.options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& arg = arguments[i];
        // Options with a value take it from the next argument.
        auto value = [&](std::string& out) {
            if (i + 1 >= arguments.size()) {
                parsed.error = arg + " needs a value";
                return false;
            }
            out = arguments[++i];
            return true;
        };
        auto count = [&](std::uint64_t& out) {
            std::string text;
            if (!value(text))
                return false;
            if (!ParseCount(text, out)) {
                parsed.error = arg + " needs a whole number, not \"" + text + "\"";
                return false;
            }
            return true;
        };

        bool ok = true;
        if (arg == "--device")
            ok = value(o.device);
        else if (arg == "--paced")
            o.paced = true;
        else if (arg == "--fast")
            o.fast = true;
        else if (arg == "--stay")
            o.stay = true;
        else if (arg == "--step-budget") {
            ok = count(o.monitor.stepBudget);
            if (ok && o.monitor.stepBudget == 0) {
                parsed.error = "--step-budget must be at least 1";
                ok = false;
            }
        } else if (arg == "--erase-ms")
            ok = count(o.monitor.eraseMs);
        else if (arg == "--erase-fails")
            o.monitor.eraseFails = true;
        else if (arg == "--help" || arg == "-h")
            o.help = true;
        else {
            parsed.error = "unknown option \"" + arg + "\"";
            ok = false;
        }
        if (!ok)
            break;
    }
    return parsed;
}

std::string Usage()
{
    return "Usage: hc11board [options]\n"
           "An HC11 board with its serial monitor. Prints the path of its serial line\n"
           "(a new pseudo-terminal) as the first line, then serves the monitor's frames\n"
           "R, W, P, E, S and X on it. A line \"reset\" on standard input, or SIGUSR1,\n"
           "resets the board; SIGTERM ends it.\n"
           "\n"
           "  --device PATH       serve this serial device instead of a pseudo-terminal\n"
           "  --paced             send and receive at the wire's speed, 38400 bit/s\n"
           "  --fast              run programs as fast as possible, not at the 2 MHz E clock\n"
           "  --stay              keep serving when the host closes the line\n"
           "  --step-budget N     E-cycles a step may take before it is given up (10000000)\n"
           "  --erase-ms N        an erase keeps the board busy N ms before it answers (0)\n"
           "  --erase-fails       answer every erase with NAK\n"
           "  --help              this text\n";
}

} // namespace hc11board
