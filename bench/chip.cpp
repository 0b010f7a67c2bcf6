// Speed of the whole chip on the program of ChipProgram.h, unpaced.
// chip_realtime is E cycles a second over a 2 MHz board's; chip_vs_core the
// chip's E cycles a second over the bare core's on the same program (where
// nothing interrupts the main loop).

#include "hc11/Cpu.h"
#include "hc11/asm/Assembler.h"
#include "hc11/chip/Chip.h"
#include "ChipProgram.h"

#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr double EClockHz = 2'000'000.0;
constexpr std::uint64_t Cycles = 400'000'000;

// Processor time of this process: the figure stays the work done when other
// programs share the machine.
double CpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

} // namespace

int main()
{
    const auto assembled = hc11::as11::AssembleSource(bench::Program);
    if (!assembled.errors.empty()) {
        std::fputs(assembled.ErrorFileText().c_str(), stderr);
        return 1;
    }

    hc11::chip::Chip chip;
    bench::LoadS19(assembled.s19, chip.Ram().data());
    chip.Reset();
    double start = CpuSeconds();
    std::size_t sent = 0;   // drained as a host would, so that none are dropped
    while (chip.Cycles() < Cycles) {
        chip.RunUntil(chip.Cycles() + 1'000'000);
        sent += chip.TakeSciOutput().size();
    }
    const double chipSeconds = CpuSeconds() - start;

    hc11::FlatMemory memory;
    bench::LoadS19(assembled.s19, memory.bytes.data());
    hc11::Cpu core(memory);
    core.Reset();
    start = CpuSeconds();
    while (core.cycles < Cycles)
        core.Step();
    const double coreSeconds = CpuSeconds() - start;

    const double chipRate = double(chip.Cycles()) / chipSeconds;
    const double coreRate = double(core.cycles) / coreSeconds;
    std::printf("chip_realtime: %.1f x\n", chipRate / EClockHz);
    std::printf("chip_vs_core: %.2f\n", chipRate / coreRate);
    std::printf("chip_sci_characters: %zu chars\n", sent);
    return 0;
}
