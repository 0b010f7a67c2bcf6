// hc11board: an HC11 board with its serial monitor on a pseudo-terminal.
#include "BoardLoop.h"
#include "SerialLine.h"
#include "hc11board/Options.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    using namespace hc11board;
    const ParsedOptions parsed = ParseOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (!parsed.error.empty()) {
        std::fprintf(stderr, "hc11board: %s\n%s", parsed.error.c_str(), Usage().c_str());
        return 2;
    }
    const Options& options = parsed.options;
    if (options.help) {
        std::fputs(Usage().c_str(), stdout);
        return 0;
    }

    std::string error;
    SerialLine line = options.device.empty() ? SerialLine::OpenPseudoTerminal(error)
                                             : SerialLine::OpenDevice(options.device, error);
    if (!line.Open()) {
        std::fprintf(stderr, "hc11board: %s\n", error.c_str());
        return 1;
    }
    BoardLoop loop(options, line);
    if (!loop.Ready()) {
        std::perror("hc11board: signals");
        return 1;
    }
    std::printf("%s\n", line.Path().c_str());
    std::fflush(stdout);
    return loop.Run();
}
