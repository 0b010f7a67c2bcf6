// libFuzzer target: hc11board's monitor fed any bytes by the host, with time
// passing, resets and free runs in between. It must neither crash, hang nor
// step outside the language (the build adds the address and behaviour checks);
// the code buffer may make the SCI send anything, so the replies are not judged.
#include "hc11board/Monitor.h"

#include <cstdint>

using namespace hc11board;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A small step budget keeps a looping code buffer from eating the run.
    Monitor monitor(MonitorSettings{.stepBudget = 20'000, .eraseFails = size % 2 == 1, .eraseMs = 5});
    std::uint64_t now = 0;
    std::size_t i = 0;
    // Chunks: a control byte, then up to 31 bytes for the line.
    while (i < size) {
        const std::uint8_t control = data[i++];
        const std::size_t count = std::min<std::size_t>(control & 31, size - i);
        monitor.Receive(data + i, count, now);
        i += count;
        monitor.TakeOutput();
        now += control >> 5;
        monitor.Service(now);
        if (control == 0xFF)
            monitor.Reset();
        monitor.Run(2'000);
    }
    return 0;
}
