// Ports B to E and the parallel I/O strobe: PORTB an output latch, PORTC and
// PORTD each pin's way by DDRC and DDRD, PORTE the digital reading of the
// analog inputs, and PORTCL latching port C on the active STRA edge (PIOC's
// EGA) with STAF, cleared by a PIOC read that saw it followed by a PORTCL
// read; STAF with STAI asks for the IRQ vector. Port A is the timer's.
//
// In the expanded mode ports B and C carry the bus on a real chip; here they
// keep their registers and pins all the same, so a program that uses them
// still sees what it wrote.
#pragma once

#include "hc11/chip/OutsideWorld.h"
#include "hc11/chip/Peripheral.h"

namespace hc11::chip {

namespace pioc {
constexpr std::uint8_t STAF = 0x80, STAI = 0x40, EGA = 0x02;
} // namespace pioc

class Ports final : public Peripheral {
public:
    explicit Ports(const InputPins& pins) : pins_(pins) {}

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t) override {}
    std::uint64_t NextEvent() const override { return NoEvent; }
    std::uint8_t Read(unsigned offset, std::uint64_t now) override;
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    void PinsChanged(const InputPins& before, std::uint64_t now) override;
    std::uint32_t PendingInterrupts() const override;

    // The levels on the pins: outputs as driven, inputs as the host set them.
    std::uint8_t PortBPins() const { return portB_; }
    std::uint8_t PortCPins() const { return std::uint8_t((portC_ & ddrc_) | (pins_.portC & ~ddrc_)); }
    std::uint8_t PortDPins() const { return std::uint8_t(((portD_ & ddrd_) | (pins_.portD & ~ddrd_)) & 0x3F); }
    std::uint8_t PortEPins() const;

    std::uint8_t Ddrd() const { return ddrd_; }
    // The SPI's mode fault takes its pins back to inputs.
    void ClearDirections(std::uint8_t ddrdBits) { ddrd_ &= std::uint8_t(~ddrdBits); }

private:
    const InputPins& pins_;
    std::uint8_t pioc_ = 0, portB_ = 0, portC_ = 0, portCL_ = 0, ddrc_ = 0, portD_ = 0, ddrd_ = 0;
    bool stafSeen_ = false;
};

} // namespace hc11::chip
