// The 64 KB address space of the board: RAM everywhere except the HC11's
// register block at $1000, the PIA at $1800 and the flash at $E000-$FFFF.
//
// Three kinds of access, because the board treats them differently:
//  - the monitor's reads and writes for the host ("R", "W"): no side effects
//    on the SCI, and a write leaves the flash as it is;
//  - programming ("P") and erasing ("E"): flash bits can only be cleared by
//    programming (new = old AND data) and only an erase sets them again;
//  - the CPU's bus cycles: SCDR and SCSR act on the serial interface, and a
//    store into the flash changes nothing.
#pragma once

#include "hc11board/Sci.h"

#include <array>
#include <cstdint>

namespace hc11board {

constexpr std::uint16_t RegisterBlockStart = 0x1000;
constexpr int RegisterBlockSize = 64;
constexpr std::uint16_t PiaStart = 0x1800;
constexpr int PiaSize = 10;
constexpr std::uint16_t FlashStart = 0xE000;

class BoardMemory {
public:
    BoardMemory();

    // What a hardware reset does to the address space: registers and PIA to
    // their reset values, the SCI idle. RAM and flash keep their contents.
    void ResetDevices();

    std::uint8_t Peek(std::uint16_t address) const;
    // A monitor write: RAM, the PIA's output and direction registers and
    // writable registers change; the flash, the PIA's input registers and the
    // SCI's status and data registers do not.
    void Poke(std::uint16_t address, std::uint8_t value);
    // Programming: flash bits only go from 1 to 0; elsewhere a plain write.
    void Program(std::uint16_t address, std::uint8_t value);
    // Every flash byte back to $FF.
    void EraseFlash();

    // The CPU's bus cycles, with the devices' side effects.
    std::uint8_t CpuRead(std::uint16_t address);
    void CpuWrite(std::uint16_t address, std::uint8_t value);

    static bool IsFlash(std::uint16_t address) { return address >= FlashStart; }

    Sci sci;

private:
    // What an input register of the PIA reads: its port's pins.
    std::uint8_t PiaPins(std::uint16_t inputAddress) const;

    std::array<std::uint8_t, 65536> bytes_{};
};

} // namespace hc11board
