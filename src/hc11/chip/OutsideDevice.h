// The devices a host attaches to the chip. On the outside bus: a board's PIA,
// its flash, the IDE's input-output unit; the chip hands such a device every
// access to the addresses it was mapped at that the chip itself does not
// take. On the SPI's lines: a peer the chip talks to as master.
#pragma once

#include <cstdint>

namespace hc11::chip {

class OutsideDevice {
public:
    virtual ~OutsideDevice() = default;

    // The CPU's bus cycles, with whatever the device does on them.
    virtual std::uint8_t Read(std::uint16_t address) = 0;
    virtual void Write(std::uint16_t address, std::uint8_t value) = 0;

    // A debugger's look and change: by default the same as the CPU's; a
    // device whose reads have side effects overrides Peek.
    virtual std::uint8_t Peek(std::uint16_t address) { return Read(address); }
    virtual void Poke(std::uint16_t address, std::uint8_t value) { Write(address, value); }
};

// A slave on the SPI's lines: for each byte the chip's master sends, the byte
// it shifts back during the same eight clocks (called as the transfer ends).
class SpiPeer {
public:
    virtual ~SpiPeer() = default;
    virtual std::uint8_t Exchange(std::uint8_t sent) = 0;
};

} // namespace hc11::chip
