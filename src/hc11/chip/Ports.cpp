#include "hc11/chip/Ports.h"

#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"

namespace hc11::chip {

namespace {
constexpr std::uint8_t OwnRegisters[] = {reg::PIOC, reg::PORTC, reg::PORTB, reg::PORTCL,
                                         reg::DDRC, reg::PORTD, reg::DDRD, reg::PORTE};
} // namespace

std::span<const std::uint8_t> Ports::Registers() const
{
    return OwnRegisters;
}

void Ports::Reset(std::uint64_t)
{
    pioc_ = 0x03;   // EGA and INVB
    portB_ = portC_ = portCL_ = ddrc_ = portD_ = ddrd_ = 0;
    stafSeen_ = false;
}

std::uint8_t Ports::PortEPins() const
{
    std::uint8_t levels = 0;
    for (int pin = 0; pin < 8; ++pin)
        if (AnalogReadsHigh(pins_.analog[pin]))
            levels |= std::uint8_t(1 << pin);
    return levels;
}

std::uint8_t Ports::Read(unsigned offset, std::uint64_t)
{
    if (offset == reg::PIOC) {
        stafSeen_ = pioc_ & pioc::STAF;
    } else if (offset == reg::PORTCL && stafSeen_) {
        pioc_ &= std::uint8_t(~pioc::STAF);
        stafSeen_ = false;
    }
    return Peek(offset);
}

std::uint8_t Ports::Peek(unsigned offset) const
{
    switch (offset) {
    case reg::PIOC: return pioc_;
    case reg::PORTC: return PortCPins();
    case reg::PORTB: return portB_;
    case reg::PORTCL: return portCL_;
    case reg::DDRC: return ddrc_;
    case reg::PORTD: return PortDPins();
    case reg::DDRD: return ddrd_;
    default: return PortEPins();
    }
}

void Ports::Write(unsigned offset, std::uint8_t value, std::uint64_t)
{
    switch (offset) {
    case reg::PIOC: pioc_ = std::uint8_t((pioc_ & pioc::STAF) | (value & ~pioc::STAF)); break;
    case reg::PORTC: case reg::PORTCL: portC_ = value; break;   // both write the output latch
    case reg::PORTB: portB_ = value; break;
    case reg::DDRC: ddrc_ = value; break;
    case reg::PORTD: portD_ = value & 0x3F; break;
    case reg::DDRD: ddrd_ = value & 0x3F; break;
    default: break;   // PORTE: inputs only
    }
}

void Ports::PinsChanged(const InputPins& before, std::uint64_t)
{
    if (before.stra == pins_.stra)
        return;
    const bool activeRising = pioc_ & pioc::EGA;
    if (pins_.stra == activeRising) {
        portCL_ = PortCPins();
        pioc_ |= pioc::STAF;
    }
}

std::uint32_t Ports::PendingInterrupts() const
{
    return (pioc_ & pioc::STAF) && (pioc_ & pioc::STAI) ? Bit(Source::Irq) : 0;
}

} // namespace hc11::chip
