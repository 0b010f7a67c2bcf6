// The HC11's interrupt sources: the maskable ones in their fixed priority
// order with their vectors at $FFD6-$FFF2, the choice of the one HPRIO's PSEL
// bits promote, and the vectors of the sources the I bit does not mask.
#pragma once

#include <cstdint>

namespace hc11::chip {

// Maskable sources, highest fixed priority first. Each one's bit in a
// pending mask is 1 << its value; its vector is $FFF2 - 2 * value.
enum class Source : std::uint8_t {
    Irq,          // the IRQ pin, and the parallel I/O strobe (STAF) on the same vector
    Rti,          // real-time interrupt
    Ic1, Ic2, Ic3,
    Oc1, Oc2, Oc3, Oc4,
    Ic4Oc5,
    Tof,          // timer overflow
    PaOverflow,   // pulse accumulator overflow
    PaInput,      // pulse accumulator input edge
    Spi,
    Sci,
};
constexpr int SourceCount = 15;

constexpr std::uint32_t Bit(Source source) { return 1u << unsigned(source); }
constexpr std::uint16_t VectorOf(Source source) { return std::uint16_t(0xFFF2 - 2 * unsigned(source)); }

// The resets' vectors besides the pin's; XIRQ, SWI, the illegal opcode trap
// and the reset pin have theirs in the CPU core.
constexpr std::uint16_t CopFailVector = 0xFFFA;
constexpr std::uint16_t ClockMonitorVector = 0xFFFC;

// The source HPRIO's PSEL3:PSEL0 raise to the top of the maskable ones. The
// reserved code 5 leaves IRQ on top, as the default order has it.
Source PromotedSource(std::uint8_t psel);

// The vector of the source to serve among the pending ones, the promoted
// source first and then the fixed order; 0 when none is pending.
std::uint16_t HighestPriorityVector(std::uint32_t pending, std::uint8_t psel);

} // namespace hc11::chip
