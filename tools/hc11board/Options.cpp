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
        else if (arg == "--rom")
            ok = value(o.rom);
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
           "An HC11 board (MC68HC11E, 2 MHz E clock, expanded mode) with a PIA at $1800,\n"
           "an Am29F040B flash at $E000-$FFFF and RAM elsewhere. Prints the path of its\n"
           "serial line (a new pseudo-terminal) as the first line, then serves its\n"
           "serial monitor's frames R, W, P, E, S and X on it; a program started with X\n"
           "runs on the chip and talks through the chip's SCI. A line \"reset\" on\n"
           "standard input, or SIGUSR1, resets the board (RAM keeps its contents); a\n"
           "line \"quit\" or SIGTERM ends it, and so does the host closing the line.\n"
           "\n"
           "  --rom FILE.s19      no monitor: load the image (bytes at $E000-$FFFF into the\n"
           "                      flash, the others into RAM) and run the chip from its\n"
           "                      reset vector from the start, as a board switched on\n"
           "                      before the host comes: what it sends while no host has\n"
           "                      the line open is lost. The line is the SCI's, both ways\n"
           "                      at the rate the program sets\n"
           "                      (an image that sets $BFFE is a boot EPROM at $BC00-$BFFF:\n"
           "                      the chip starts in special test mode, vectors at $BFC0,\n"
           "                      with a 9.8304 MHz crystal: E = 2.4576 MHz)\n"
           "  --device PATH       serve this serial device instead of a pseudo-terminal\n"
           "  --paced             pass bytes both ways at the wire's speed, 38400 bit/s\n"
           "  --fast              run the chip as fast as possible, not at the 2 MHz E clock\n"
           "  --stay              keep serving when the host closes the line\n"
           "  --step-budget N     E-cycles a step may take before it is given up (10000000)\n"
           "  --erase-ms N        an erase takes N ms: the monitor answers after it, the CPU\n"
           "                      sees the flash busy for it (0: the monitor answers at once,\n"
           "                      the CPU waits the datasheet's 1 s, 8 s for a chip erase)\n"
           "  --erase-fails       erases fail: the monitor answers NAK, the CPU sees DQ5\n"
           "  --help              this text\n";
}

} // namespace hc11board
