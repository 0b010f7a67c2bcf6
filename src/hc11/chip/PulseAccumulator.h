// The pulse accumulator: PACNT counting edges of the PAI pin (PA7) in event
// mode, or E/64 clocks while PAI holds its gate level in gated mode, with
// PAOVF on the roll-over from $FF and PAIF on the selected edge (event mode)
// or the edge that ends the gate (gated mode). Part of the main timer, which
// owns PACTL and TFLG2; this class keeps the count and says which flags to set.
#pragma once

#include <cstdint>

namespace hc11::chip {

namespace pactl {
constexpr std::uint8_t DDRA7 = 0x80, PAEN = 0x40, PAMOD = 0x20, PEDGE = 0x10, DDRA3 = 0x08,
                       I4O5 = 0x04, RTR = 0x03;
} // namespace pactl

namespace tflg2 {
constexpr std::uint8_t TOF = 0x80, RTIF = 0x40, PAOVF = 0x20, PAIF = 0x10;
} // namespace tflg2

class PulseAccumulator {
public:
    static constexpr std::uint64_t GateClockCycles = 64;   // the gated mode's E/64 clock

    void Reset(std::uint64_t now);

    // Counts the gated clocks up to now; returns the TFLG2 flags to set.
    std::uint8_t AdvanceTo(std::uint64_t now, std::uint8_t pactlValue, bool pai);
    // PAI moved (at now, the count already advanced to now); returns the flags to set.
    std::uint8_t Edge(bool rising, std::uint8_t pactlValue);
    // When the gated count next rolls over, or NoEvent.
    std::uint64_t NextOverflow(std::uint8_t pactlValue, bool pai) const;

    std::uint8_t count = 0;

private:
    static bool Gating(std::uint8_t pactlValue, bool pai);
    std::uint64_t Clocks(std::uint64_t at) const { return (at - resetAt_) / GateClockCycles; }

    std::uint64_t resetAt_ = 0;
    std::uint64_t syncedAt_ = 0;
};

} // namespace hc11::chip
