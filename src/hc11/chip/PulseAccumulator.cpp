#include "hc11/chip/PulseAccumulator.h"

#include "hc11/chip/Peripheral.h"

namespace hc11::chip {

void PulseAccumulator::Reset(std::uint64_t now)
{
    resetAt_ = syncedAt_ = now;
    count = 0;
}

bool PulseAccumulator::Gating(std::uint8_t pactlValue, bool pai)
{
    // PEDGE clear: counts while PAI is high; set: while it is low.
    const bool enabled = (pactlValue & (pactl::PAEN | pactl::PAMOD)) == (pactl::PAEN | pactl::PAMOD);
    return enabled && pai != bool(pactlValue & pactl::PEDGE);
}

std::uint8_t PulseAccumulator::AdvanceTo(std::uint64_t now, std::uint8_t pactlValue, bool pai)
{
    std::uint8_t flags = 0;
    if (Gating(pactlValue, pai)) {
        const std::uint64_t clocks = Clocks(now) - Clocks(syncedAt_);
        if (count + clocks > 0xFF)
            flags |= tflg2::PAOVF;
        count = std::uint8_t(count + clocks);
    }
    syncedAt_ = now;
    return flags;
}

std::uint8_t PulseAccumulator::Edge(bool rising, std::uint8_t pactlValue)
{
    if (!(pactlValue & pactl::PAEN))
        return 0;
    const bool selected = rising == bool(pactlValue & pactl::PEDGE);
    if (pactlValue & pactl::PAMOD)
        return selected ? tflg2::PAIF : 0;   // the trailing edge of the gate
    if (!selected)
        return 0;
    ++count;
    return count == 0 ? tflg2::PAIF | tflg2::PAOVF : tflg2::PAIF;
}

std::uint64_t PulseAccumulator::NextOverflow(std::uint8_t pactlValue, bool pai) const
{
    if (!Gating(pactlValue, pai))
        return NoEvent;
    const std::uint64_t clock = Clocks(syncedAt_) + (0x100 - count);
    return resetAt_ + clock * GateClockCycles;
}

} // namespace hc11::chip
