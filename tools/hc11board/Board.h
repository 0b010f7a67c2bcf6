// The board: an MC68HC11E in expanded mode with its PIA at $1800 and its
// flash at $E000-$FFFF on the outside bus, RAM everywhere else. Strapped for
// special test mode it also has its boot EPROM at $BC00-$BFFF (BootRom.h),
// from which the chip then takes its vectors.
//
// Besides the CPU's bus cycles (the chip's), the host has the monitor's ways
// in: Peek and Poke as the "R" and "W" frames see memory (a poke leaves the
// flash and the SCI's status and data registers alone), Program and
// EraseFlash as "P" and "E" do.
#pragma once

#include "hc11/chip/Chip.h"
#include "hc11board/BootRom.h"
#include "hc11board/FlashPart.h"
#include "hc11board/Pia.h"

#include <cstdint>
#include <vector>

namespace hc11board {

class Board {
public:
    explicit Board(const FlashTiming& timing = {},
                   hc11::chip::OperatingMode mode = hc11::chip::OperatingMode::Expanded);

    hc11::chip::Chip& Hc11() { return chip_; }
    const hc11::chip::Chip& Hc11() const { return chip_; }
    FlashPart& Flash() { return flash_; }

    // The reset button: the chip and the PIA restart, the CPU from the reset
    // vector; RAM and the flash keep their contents.
    void Reset();

    std::uint8_t Peek(std::uint16_t address) { return chip_.Peek(address); }
    void Poke(std::uint16_t address, std::uint8_t value);
    // Flash bits only go from 1 to 0 (false when a bit had to rise); elsewhere
    // a plain poke.
    bool Program(std::uint16_t address, std::uint8_t value);
    void EraseFlash() { flash_.Erase(); }
    // An image's byte before the board starts: into the flash array, the
    // boot EPROM (in special test mode) or RAM.
    void Load(std::uint16_t address, std::uint8_t value);

    // What the SCI has sent since the last call, as bytes on the line; a
    // break arrives as the NUL byte a receiving UART makes of it.
    void TakeSciBytes(std::vector<std::uint8_t>& out);

private:
    hc11::chip::Chip chip_;
    Pia pia_;
    FlashPart flash_;
    BootRom bootRom_;
    bool hasBootRom_;
};

} // namespace hc11board
