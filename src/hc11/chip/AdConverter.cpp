#include "hc11/chip/AdConverter.h"

#include "hc11/chip/RegisterMap.h"

namespace hc11::chip {

namespace {
constexpr std::uint8_t OwnRegisters[] = {reg::ADCTL, reg::ADR1, reg::ADR1 + 1, reg::ADR1 + 2, reg::ADR4};
constexpr unsigned VrhChannel = 12, VrlChannel = 13, HalfVrhChannel = 14;
} // namespace

std::span<const std::uint8_t> AdConverter::Registers() const
{
    return OwnRegisters;
}

void AdConverter::Reset(std::uint64_t)
{
    control_ = 0;
    complete_ = false;
    results_.fill(0);
    conversionEnd_ = NoEvent;
    slot_ = 0;
    held_ = -1;
}

unsigned AdConverter::ChannelOf(int slot) const
{
    return control_ & adctl::MULT ? (control_ & adctl::Group) | unsigned(slot) : control_ & adctl::Channel;
}

std::uint8_t AdConverter::Level(unsigned channel, const InputPins& pins)
{
    if (channel < pins.analog.size())
        return pins.analog[channel];
    switch (channel) {
    case VrhChannel: return 0xFF;
    case HalfVrhChannel: return 0x80;
    case VrlChannel:
    default: return 0x00;
    }
}

void AdConverter::Convert()
{
    results_[slot_] = held_ >= 0 ? std::uint8_t(held_) : Level(ChannelOf(slot_), pins_);
    held_ = -1;
    if (slot_ == 3) {
        complete_ = true;
        if (!(control_ & adctl::SCAN)) {
            conversionEnd_ = NoEvent;
            return;
        }
    }
    slot_ = (slot_ + 1) & 3;
    conversionEnd_ += ConversionCycles;
}

void AdConverter::AdvanceTo(std::uint64_t now)
{
    if (conversionEnd_ > now)
        return;
    Convert();
    // The inputs held still since the last catch-up: in a long scan only the
    // last round of four shows.
    const std::uint64_t pending = conversionEnd_ <= now ? (now - conversionEnd_) / ConversionCycles + 1 : 0;
    if (pending > 4) {
        const std::uint64_t skipped = pending - 4;
        slot_ = int((slot_ + skipped) & 3);
        conversionEnd_ += skipped * ConversionCycles;
    }
    while (conversionEnd_ <= now)
        Convert();
}

void AdConverter::PinsChanged(const InputPins& before, std::uint64_t now)
{
    const bool sampled = Converting() && now >= conversionEnd_ - ConversionCycles + SampleCycles;
    if (sampled && held_ < 0)
        held_ = Level(ChannelOf(slot_), before);
}

void AdConverter::PowerChanged()
{
    if (!(option_ & option::ADPU))
        conversionEnd_ = NoEvent;
}

std::uint8_t AdConverter::Peek(unsigned offset) const
{
    if (offset == reg::ADCTL)
        return std::uint8_t(control_ | (complete_ ? adctl::CCF : 0));
    return results_[offset - reg::ADR1];
}

void AdConverter::Write(unsigned offset, std::uint8_t value, std::uint64_t now)
{
    if (offset != reg::ADCTL)
        return;   // the result registers are read-only
    control_ = value & (adctl::SCAN | adctl::MULT | adctl::Channel);
    complete_ = false;
    slot_ = 0;
    held_ = -1;
    conversionEnd_ = option_ & option::ADPU ? now + ConversionCycles : NoEvent;
}

} // namespace hc11::chip
