// Speed of the whole chip: a program that keeps the SCI transmitting from
// its TDRE interrupt, takes an output compare interrupt every 1000 E cycles
// and the RTI at its fastest rate, around a main loop of mixed work. Unpaced.
// chip_realtime is E cycles a second over a 2 MHz board's; chip_vs_core the
// chip's E cycles a second over the bare core's on the same program (where
// nothing interrupts the main loop).

#include "hc11/Cpu.h"
#include "hc11/asm/Assembler.h"
#include "hc11/chip/Chip.h"

#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr double EClockHz = 2'000'000.0;
constexpr std::uint64_t Cycles = 400'000'000;

const char* const Program = R"(
REGS    EQU     $1000
        ORG     $E000
START   LDS     #$01FF
        LDX     #REGS
        LDAA    #$30            9600 baud
        STAA    $2B,X
        LDAA    #$88            TIE, TE
        STAA    $2D,X
        LDAA    #$40            OC2I
        STAA    $22,X
        STAA    $24,X           RTII, E/2^13
        CLI
OUTER   LDX     #$2000
        LDY     #$2100
LOOP    LDAA    0,X
        LDAB    1,X
        ABA
        STAA    0,Y
        MUL
        ADDD    #$1234
        STD     $40
        JSR     SUB
        LDAA    $43
        ANDA    #$7F
        INCA
        STAA    2,X
        BSET    3,X $01
        BRCLR   3,X $80 SKIP
        NOP
SKIP    INX
        INY
        CPX     #$2080
        BNE     LOOP
        BRA     OUTER
SUB     PSHX
        LDD     $40
        LDX     #$0007
        IDIV
        STX     $42
        PULX
        RTS

SCIH    LDAA    $102E           status read, then the data write clears TDRE
        LDAA    $50
        STAA    $102F
        INC     $50
        RTI
OC2H    LDD     $1018
        ADDD    #1000
        STD     $1018
        LDAA    #$40
        STAA    $1023
        RTI
RTIH    LDAA    #$40
        STAA    $1025
        INC     $51
        RTI

        ORG     $FFD6
        FDB     SCIH
        ORG     $FFE6
        FDB     OC2H
        ORG     $FFF0
        FDB     RTIH
        ORG     $FFFE
        FDB     START
)";

// The S1 records of the assembled program into memory.
void LoadS19(const std::string& s19, std::uint8_t* memory)
{
    std::size_t at = 0;
    while ((at = s19.find("S1", at)) != std::string::npos) {
        const auto byte = [&](std::size_t i) { return std::uint8_t(std::strtoul(s19.substr(i, 2).c_str(), nullptr, 16)); };
        const int count = byte(at + 2);
        const unsigned address = unsigned(byte(at + 4)) << 8 | byte(at + 6);
        for (int i = 0; i < count - 3; ++i)
            memory[(address + i) & 0xFFFF] = byte(at + 8 + 2 * i);
        at += 2;
    }
}

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
    const auto assembled = hc11::as11::AssembleSource(Program);
    if (!assembled.errors.empty()) {
        std::fputs(assembled.ErrorFileText().c_str(), stderr);
        return 1;
    }

    hc11::chip::Chip chip;
    LoadS19(assembled.s19, chip.Ram().data());
    chip.Reset();
    double start = CpuSeconds();
    std::size_t sent = 0;   // drained as a host would, so that none are dropped
    while (chip.Cycles() < Cycles) {
        chip.RunUntil(chip.Cycles() + 1'000'000);
        sent += chip.TakeSciOutput().size();
    }
    const double chipSeconds = CpuSeconds() - start;

    hc11::FlatMemory memory;
    LoadS19(assembled.s19, memory.bytes.data());
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
