// libFuzzer target: hc11board's frame parser on any byte stream, with pauses
// taken from the input. Every frame it hands over must be one the monitor can
// execute: a command letter, its full length and a good sum.
#include "hc11board/FrameParser.h"

#include <cstdint>
#include <cstdlib>

using namespace hc11board;

namespace {
std::size_t LengthOf(const Frame& frame)
{
    switch (frame.Letter()) {
    case letter::Read: return 5;
    case letter::Write:
    case letter::Program: return 5 + std::size_t(frame.bytes.at(3));
    case letter::Erase: return 4;
    case letter::Step: return 15;
    case letter::Execute: return 14;
    default: return 0;
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FrameParser parser;
    std::uint64_t now = 0;
    // Even bytes of the input are the stream, odd ones the pause before each byte.
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        now += data[i + 1] % 64;
        const std::optional<Frame> frame = parser.Feed(data[i], now);
        if (!frame)
            continue;
        std::uint8_t sum = 0;
        for (std::size_t k = 1; k < frame->bytes.size(); ++k)
            sum = std::uint8_t(sum + frame->bytes[k]);
        if (frame->bytes.size() < 4 || LengthOf(*frame) != frame->bytes.size() || sum != 0)
            std::abort();
    }
    return 0;
}
