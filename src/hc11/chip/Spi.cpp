#include "hc11/chip/Spi.h"

#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"

namespace hc11::chip {

namespace {
constexpr std::uint8_t OwnRegisters[] = {reg::SPCR, reg::SPSR, reg::SPDR};
constexpr int RateDivisors[4] = {2, 4, 16, 32};   // SPR1:SPR0
constexpr std::uint8_t NoPeerByte = 0xFF;
} // namespace

std::span<const std::uint8_t> Spi::Registers() const
{
    return OwnRegisters;
}

void Spi::Reset(std::uint64_t)
{
    control_ = spcr::CPHA;
    status_ = armed_ = 0;
    shifter_ = received_ = 0;
    transferEnd_ = NoEvent;
}

std::uint64_t Spi::BitCycles() const
{
    return std::uint64_t(RateDivisors[control_ & spcr::SPR]);
}

void Spi::AdvanceTo(std::uint64_t now)
{
    if (transferEnd_ > now)
        return;
    const std::uint64_t at = transferEnd_;
    transferEnd_ = NoEvent;
    const std::uint8_t sent = shifter_;
    Finish(sent, peer_ ? peer_->Exchange(sent) : NoPeerByte, at);
}

void Spi::Finish(std::uint8_t sent, std::uint8_t received, std::uint64_t at)
{
    shifter_ = received_ = received;
    status_ |= spsr::SPIF;
    if (output_.size() >= OutputLimit)
        output_.erase(output_.begin(), output_.begin() + OutputLimit / 2);
    output_.push_back({sent, received, at});
}

std::vector<SpiTransfer> Spi::TakeOutput()
{
    std::vector<SpiTransfer> taken;
    taken.swap(output_);
    return taken;
}

void Spi::CheckModeFault()
{
    const bool slaveSelectIsInput = !(ports_.Ddrd() & SlaveSelectPin);
    if (!Master() || !slaveSelectIsInput || !SlaveSelected())
        return;
    status_ |= spsr::MODF;
    control_ &= std::uint8_t(~(spcr::MSTR | spcr::SPE));
    ports_.ClearDirections(SpiPins);
    transferEnd_ = NoEvent;   // the transfer under way stops with the SPI
}

void Spi::PinsChanged(const InputPins&, std::uint64_t)
{
    CheckModeFault();
}

std::uint8_t Spi::ShiftIn(std::uint8_t byte, std::uint64_t now)
{
    if (!Slave() || !SlaveSelected())
        return NoPeerByte;   // MISO left floating
    const std::uint8_t sent = shifter_;
    Finish(sent, byte, now);
    return sent;
}

// ---- registers ----

void Spi::ClearSeenDataFlags()
{
    constexpr std::uint8_t DataFlags = spsr::SPIF | spsr::WCOL;
    status_ &= std::uint8_t(~(armed_ & DataFlags));
    armed_ &= std::uint8_t(~DataFlags);
}

std::uint8_t Spi::Read(unsigned offset, std::uint64_t)
{
    if (offset == reg::SPSR) {
        armed_ = status_;
    } else if (offset == reg::SPDR) {
        ClearSeenDataFlags();
    }
    return Peek(offset);
}

std::uint8_t Spi::Peek(unsigned offset) const
{
    switch (offset) {
    case reg::SPCR: return control_;
    case reg::SPSR: return status_;
    default: return received_;
    }
}

void Spi::Write(unsigned offset, std::uint8_t value, std::uint64_t now)
{
    switch (offset) {
    case reg::SPCR: {
        status_ &= std::uint8_t(~(armed_ & spsr::MODF));
        armed_ &= std::uint8_t(~spsr::MODF);
        control_ = value;
        if (!(value & spcr::SPE))
            transferEnd_ = NoEvent;
        CheckModeFault();
        break;
    }
    case reg::SPSR: break;   // read-only
    default: WriteData(value, now); break;
    }
}

void Spi::WriteData(std::uint8_t value, std::uint64_t now)
{
    ClearSeenDataFlags();
    // A slave with CPHA clear is in a transfer for as long as /SS is low.
    const bool slaveBusy = Slave() && !(control_ & spcr::CPHA) && SlaveSelected();
    if (transferEnd_ != NoEvent || slaveBusy) {
        status_ |= spsr::WCOL;   // the transfer goes on; the byte is lost
        return;
    }
    if (status_ & spsr::SPIF)
        return;   // a set SPIF not yet seen by a status read holds writes off
    shifter_ = value;
    if (Master())
        transferEnd_ = now + 8 * BitCycles();
}

std::uint32_t Spi::PendingInterrupts() const
{
    return (control_ & spcr::SPIE) && (status_ & (spsr::SPIF | spsr::MODF)) ? Bit(Source::Spi) : 0;
}

} // namespace hc11::chip
