// Everything the chip takes from outside itself: the operating mode the MODA
// and MODB pins select, the CONFIG byte its EEPROM cell holds, and the levels
// on its input pins. Where the manual leaves a value to the board, the
// defaults here are what a board with nothing attached shows; this is the one
// place those choices are made.
#pragma once

#include <array>
#include <cstdint>

namespace hc11::chip {

enum class OperatingMode : std::uint8_t {
    SingleChip,   // ports B and C are ports
    Expanded,     // the bus runs outside: the host's devices answer where it maps them
    // Expanded, with the vectors at $BFC0-$BFFF and the time-protected bits
    // open (the reference manual's resets and interrupts section): a board
    // starts a monitor from an EPROM below $C000 this way.
    SpecialTest,
};

// Fixed for the chip's life: set before the first reset.
struct ChipSetup {
    OperatingMode mode = OperatingMode::Expanded;
    // CONFIG as its EEPROM cell holds it at first: no security, COP off, ROM
    // and EEPROM off (EEON clear), so that memory the host loads is what runs,
    // $B600-$B7FF included. A program may program the cell (Eeprom.h); the
    // new value counts from the next reset.
    std::uint8_t config = 0x0C;
};

// Levels on the input pins, as the host sets them. 1 is a high pin.
struct InputPins {
    // Input pins nobody drives read high: every board pulls them up, as the
    // IRQ, XIRQ and RESET lines must be.
    std::uint8_t portA = 0xFF;   // PA0-PA2 always, PA3 and PA7 when inputs
    std::uint8_t portC = 0xFF;   // the DDRC inputs
    std::uint8_t portD = 0x3F;   // PD0-PD5, the DDRD inputs; PD0 is the idle receive line
    bool stra = true;            // the strobe A input
    bool irqAsserted = false;    // IRQ pin held low
    bool xirqAsserted = false;   // XIRQ pin held low
    // Port E carries analog inputs: each level as the code a conversion of it
    // gives, $00 at VRL to $FF at VRH. Nothing attached sits at VRL.
    std::array<std::uint8_t, 8> analog{};
};

// The digital reading of an analog level: a pin reads 1 from mid-scale up.
constexpr bool AnalogReadsHigh(std::uint8_t level) { return level >= 0x80; }

// Data that leaves through a pin with nobody listening is lost: the SCI sends
// at the programmed rate whether or not a host drains its line, and keeps
// only the latest characters for a host that comes late (Sci::OutputLimit).
// The same holds for the SPI's transfers (Spi::OutputLimit).
//
// An SPI master with no peer attached reads $FF: nothing drives MISO, and
// the board's pull-up holds it high. A slave that is not selected answers
// an outside master with $FF for the same reason.
//
// An EEPROM fresh from the factory is erased: every byte $FF.

} // namespace hc11::chip
