// The board's boot EPROM: 1 KB at $BC00-$BFFF, where a board run in special
// test mode finds its vectors ($BFC0-$BFFF). It holds a monitor firmware;
// the CPU and the host's writes leave it as it was burnt.
#pragma once

#include "hc11/chip/OutsideDevice.h"

#include <array>
#include <cstdint>

namespace hc11board {

class BootRom final : public hc11::chip::OutsideDevice {
public:
    static constexpr std::uint16_t Start = 0xBC00;
    static constexpr std::uint16_t Last = 0xBFFF;
    static bool Holds(std::uint16_t address) { return address >= Start && address <= Last; }

    std::uint8_t Read(std::uint16_t address) override { return bytes_[address - Start]; }
    void Write(std::uint16_t, std::uint8_t) override {}
    // Burns an image's byte.
    void Load(std::uint16_t address, std::uint8_t value) { bytes_[address - Start] = value; }

private:
    std::array<std::uint8_t, Last - Start + 1> bytes_{};
};

} // namespace hc11board
