// The A/D converter: a write to ADCTL starts a sequence of four conversions
// of 32 E cycles each (the first 12 sample the input), filling ADR1-ADR4 in
// turn: one channel four times, or with MULT the four channels of the group
// CD:CC picks. CCF comes with the fourth result; with SCAN the sequence goes
// round again, each result replacing the one before it in its register.
//
// Where the manual leaves the outcome open:
//  - With OPTION's ADPU clear the converter is off: a write to ADCTL still
//    clears CCF and picks the channels, but nothing converts until a write
//    to ADCTL with ADPU set; clearing ADPU stops a sequence under way. The
//    settling time after ADPU is set is not counted.
//  - CSEL (the converter's own RC clock) leaves a conversion at 32 E cycles.
//  - The internal channels read VRH $FF, VRL $00, VRH/2 $80; the reserved
//    channel codes read $00.
// The converter has no interrupt: it catches up whenever the chip brings it
// up to date, and names no events of its own.
#pragma once

#include "hc11/chip/OutsideWorld.h"
#include "hc11/chip/Peripheral.h"

#include <array>

namespace hc11::chip {

namespace adctl {
constexpr std::uint8_t CCF = 0x80, SCAN = 0x20, MULT = 0x10, Channel = 0x0F, Group = 0x0C;
} // namespace adctl

class AdConverter final : public Peripheral {
public:
    static constexpr std::uint64_t ConversionCycles = 32;
    static constexpr std::uint64_t SampleCycles = 12;

    // The input levels the host sets, and the OPTION byte the chip keeps.
    AdConverter(const InputPins& pins, const std::uint8_t& option) : pins_(pins), option_(option) {}

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override { return NoEvent; }
    std::uint8_t Read(unsigned offset, std::uint64_t) override { return Peek(offset); }
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    void PinsChanged(const InputPins& before, std::uint64_t now) override;
    std::uint32_t PendingInterrupts() const override { return 0; }

    // OPTION was written (the converter advanced to now): ADPU clear stops it.
    void PowerChanged();

private:
    bool Converting() const { return conversionEnd_ != NoEvent; }
    unsigned ChannelOf(int slot) const;
    static std::uint8_t Level(unsigned channel, const InputPins& pins);
    void Convert();

    const InputPins& pins_;
    const std::uint8_t& option_;
    std::uint8_t control_ = 0;   // ADCTL without CCF
    bool complete_ = false;      // CCF
    std::array<std::uint8_t, 4> results_{};
    std::uint64_t conversionEnd_ = NoEvent;   // end of the conversion under way
    int slot_ = 0;                            // the result register it fills
    int held_ = -1;   // its sample, when the input moved after the sample time ended
};

} // namespace hc11::chip
