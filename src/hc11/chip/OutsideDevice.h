// A device the host puts on the chip's outside bus: a board's PIA, its flash,
// the IDE's input-output unit. The chip hands it every access to the
// addresses it was mapped at that the register block does not take.
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

} // namespace hc11::chip
