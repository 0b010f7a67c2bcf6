// The window in which time-protected bits (OPTION's IRQE, DLY, CR1:CR0,
// TMSK2's PR1:PR0, BPROT's clearing, INIT) may be written: the first 64 E
// cycles after a reset in the normal modes. Shared by the chip and the
// peripherals that own such bits.
#pragma once

#include <cstdint>

namespace hc11::chip {

struct TimeProtection {
    static constexpr std::uint64_t WindowCycles = 64;

    std::uint64_t resetAt = 0;    // peripheral clock at the last reset
    bool specialMode = false;     // special modes lift the protection

    bool Open(std::uint64_t now) const { return specialMode || now - resetAt < WindowCycles; }
};

} // namespace hc11::chip
