// hc11board: an HC11 board with its serial monitor, or a ROM of the user's,
// on a pseudo-terminal.
#include "BoardLoop.h"
#include "SerialLine.h"
#include "hc11/asm/S19Reader.h"
#include "hc11board/Monitor.h"
#include "hc11board/Options.h"
#include "hc11board/RomRunner.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The image of --rom, or nothing with the reason on standard error.
std::unique_ptr<hc11board::BoardProgram> LoadRom(const hc11board::Options& options)
{
    std::ifstream in(options.rom, std::ios::binary);
    std::ostringstream text;
    if (!(in && text << in.rdbuf())) {
        std::fprintf(stderr, "hc11board: cannot read %s\n", options.rom.c_str());
        return nullptr;
    }
    const hc11::as11::S19Image image = hc11::as11::ReadS19(text.str());
    if (!image.error.empty()) {
        std::fprintf(stderr, "hc11board: %s:%d: %s\n", options.rom.c_str(), image.errorLine, image.error.c_str());
        return nullptr;
    }
    return std::make_unique<hc11board::RomRunner>(image, hc11board::FlashTimingFor(options.monitor));
}

} // namespace

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
    std::unique_ptr<BoardProgram> program =
        options.rom.empty() ? std::make_unique<Monitor>(options.monitor) : LoadRom(options);
    if (!program)
        return 2;

    std::string error;
    SerialLine line = options.device.empty() ? SerialLine::OpenPseudoTerminal(error)
                                             : SerialLine::OpenDevice(options.device, error);
    if (!line.Open()) {
        std::fprintf(stderr, "hc11board: %s\n", error.c_str());
        return 1;
    }
    BoardLoop loop(options, line, *program);
    if (!loop.Ready()) {
        std::perror("hc11board: signals");
        return 1;
    }
    loop.PowerOn();
    std::printf("%s\n", line.Path().c_str());
    std::fflush(stdout);
    return loop.Run();
}
