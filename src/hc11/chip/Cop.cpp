#include "hc11/chip/Cop.h"

#include "hc11/chip/RegisterMap.h"

namespace hc11::chip {

namespace {
constexpr std::uint8_t OwnRegisters[] = {reg::COPRST};
} // namespace

std::span<const std::uint8_t> Cop::Registers() const
{
    return OwnRegisters;
}

bool Cop::Enabled() const
{
    return !(config_ & config::NOCOP);
}

void Cop::Reset(std::uint64_t now)
{
    resetAt_ = now;
    clearedClock_ = 0;
    armed_ = failed_ = false;
}

std::uint64_t Cop::NextEvent() const
{
    if (!Enabled() || failed_)
        return NoEvent;
    return resetAt_ + (clearedClock_ + 1 + TimeoutClocks()) * ClockCycles;
}

void Cop::AdvanceTo(std::uint64_t now)
{
    if (NextEvent() <= now)
        failed_ = true;
}

void Cop::Write(unsigned, std::uint8_t value, std::uint64_t now)
{
    if (value == 0x55) {
        armed_ = true;
    } else if (value == 0xAA && armed_) {
        clearedClock_ = (now - resetAt_) / ClockCycles;
        armed_ = false;
    }
}

} // namespace hc11::chip
