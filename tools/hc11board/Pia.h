// The board's parallel interface at $1800-$1809: two ports with an input,
// an output and a direction register each, and two control registers.
// An input register shows its port's pins: a bit whose direction bit is set
// drives its pin from the output register; an input pin with nothing
// connected is pulled high. Writing an input register changes nothing.
#pragma once

#include "hc11/chip/OutsideDevice.h"

#include <array>
#include <cstdint>

namespace hc11board {

class Pia final : public hc11::chip::OutsideDevice {
public:
    static constexpr std::uint16_t Start = 0x1800;
    static constexpr std::uint16_t Last = 0x1809;

    Pia() { Reset(); }
    // Every register 0, as after the board's reset.
    void Reset() { registers_.fill(0); }

    std::uint8_t Read(std::uint16_t address) override;
    void Write(std::uint16_t address, std::uint8_t value) override;

private:
    std::array<std::uint8_t, Last - Start + 1> registers_{};
};

} // namespace hc11board
