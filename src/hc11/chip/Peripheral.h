// What every on-chip peripheral offers the chip: the registers of the block
// it answers for, its clock, and its interrupt requests.
//
// Time is in E cycles, absolute: the chip's peripheral clock, which runs
// with every instruction, interrupt entry and wait cycle and stands still
// while STOP holds the clocks. A peripheral runs lazily: the chip brings it
// up to date (AdvanceTo) before any access to its registers, before a host
// looks at it, and whenever the chip's clock passes the peripheral's
// NextEvent(). Between those it does nothing, which keeps a step cheap.
#pragma once

#include "hc11/chip/OutsideWorld.h"

#include <cstdint>
#include <limits>
#include <span>

namespace hc11::chip {

constexpr std::uint64_t NoEvent = std::numeric_limits<std::uint64_t>::max();

class Peripheral {
public:
    virtual ~Peripheral() = default;

    // Offsets in the register block (0 to $3F) this peripheral answers.
    virtual std::span<const std::uint8_t> Registers() const = 0;

    // The state after a reset at E cycle now.
    virtual void Reset(std::uint64_t now) = 0;

    // Runs every event up to and including E cycle now, in order: flags
    // set, pins moved, characters shifted. Never called with a time earlier
    // than the last.
    virtual void AdvanceTo(std::uint64_t now) = 0;

    // The first E cycle at which the peripheral changes something by
    // itself (a flag, a pin, a character on its line), or NoEvent.
    virtual std::uint64_t NextEvent() const = 0;

    // The CPU's accesses, at E cycle now (the peripheral is up to date):
    // with every side effect the manual gives, such as a flag cleared by a
    // status read followed by a data access.
    virtual std::uint8_t Read(unsigned offset, std::uint64_t now) = 0;
    virtual void Write(unsigned offset, std::uint8_t value, std::uint64_t now) = 0;

    // The register as a debugger shows it: the value a read would give,
    // without its side effects.
    virtual std::uint8_t Peek(unsigned offset) const = 0;

    // The host changed the input pins (the new levels are in the InputPins
    // the peripheral was given); before holds the old ones, for edges.
    virtual void PinsChanged(const InputPins& before, std::uint64_t now)
    {
        (void)before;
        (void)now;
    }

    // The interrupt sources whose flag and local enable are both set, as
    // bits of Source.
    virtual std::uint32_t PendingInterrupts() const = 0;
};

} // namespace hc11::chip
