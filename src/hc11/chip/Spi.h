// The serial peripheral interface: SPCR (SPIE, SPE, DWOM, MSTR, CPOL, CPHA,
// SPR1:SPR0), SPSR's SPIF, WCOL and MODF with their set and clear rules, and
// SPDR, written straight into the shifter and read from the receive buffer.
//
// As master, a write to SPDR starts a transfer of eight bit times at E/2,
// E/4, E/16 or E/32; the peer (OutsideDevice.h) answers each byte at its
// end. /SS (PD5) low while the SPI is an enabled master that takes PD5 as
// its input (DDRD bit 5 clear) is a mode fault: MODF, MSTR and SPE cleared,
// DDRD's four SPI bits (PD2-PD5) cleared. As slave, selected by /SS low, an
// outside master shifts a byte in (ShiftIn) and takes the shifter's byte.
// Clearing SPE stops a transfer under way. CPOL, CPHA and DWOM shape the
// waveforms on the pins only, which this model does not draw; CPHA still
// decides the slave's write collisions.
#pragma once

#include "hc11/chip/OutsideDevice.h"
#include "hc11/chip/OutsideWorld.h"
#include "hc11/chip/Peripheral.h"
#include "hc11/chip/Ports.h"

#include <vector>

namespace hc11::chip {

namespace spcr {
constexpr std::uint8_t SPIE = 0x80, SPE = 0x40, DWOM = 0x20, MSTR = 0x10, CPOL = 0x08, CPHA = 0x04, SPR = 0x03;
} // namespace spcr

namespace spsr {
constexpr std::uint8_t SPIF = 0x80, WCOL = 0x40, MODF = 0x10;
} // namespace spsr

// One byte across the SPI's lines, either way.
struct SpiTransfer {
    std::uint8_t sent = 0;       // out of the chip: MOSI as master, MISO as slave
    std::uint8_t received = 0;   // into the chip
    std::uint64_t endsAt = 0;    // the E cycle the eighth bit was in
};

class Spi final : public Peripheral {
public:
    // The input pins, and the ports whose DDRD a mode fault clears.
    Spi(const InputPins& pins, Ports& ports) : pins_(pins), ports_(ports) {}

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override { return transferEnd_; }
    std::uint8_t Read(unsigned offset, std::uint64_t now) override;
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    void PinsChanged(const InputPins& before, std::uint64_t now) override;
    std::uint32_t PendingInterrupts() const override;

    // E cycles of one bit at SPR1:SPR0's rate; a byte takes eight.
    std::uint64_t BitCycles() const;
    // /SS or DDRD may have changed: a master that sees /SS low faults.
    void CheckModeFault();

    // The host's side: the peer the master talks to (none: reads $FF).
    void Attach(SpiPeer* peer) { peer_ = peer; }
    // An outside master shifts a byte in now; returns the byte shifted out,
    // $FF when the SPI is not an enabled, selected slave.
    std::uint8_t ShiftIn(std::uint8_t byte, std::uint64_t now);
    // Finished transfers wait here until taken; beyond OutputLimit the older half goes.
    static constexpr std::size_t OutputLimit = 4096;
    std::vector<SpiTransfer> TakeOutput();

private:
    bool Master() const { return (control_ & (spcr::SPE | spcr::MSTR)) == (spcr::SPE | spcr::MSTR); }
    bool Slave() const { return (control_ & (spcr::SPE | spcr::MSTR)) == spcr::SPE; }
    bool SlaveSelected() const { return !(pins_.portD & SlaveSelectPin); }
    void Finish(std::uint8_t sent, std::uint8_t received, std::uint64_t at);
    void WriteData(std::uint8_t value, std::uint64_t now);
    // SPIF and WCOL, where the last status read saw them: cleared by an SPDR access.
    void ClearSeenDataFlags();

    static constexpr std::uint8_t SlaveSelectPin = 0x20;   // PD5
    static constexpr std::uint8_t SpiPins = 0x3C;          // PD2-PD5: MISO, MOSI, SCK, /SS

    const InputPins& pins_;
    Ports& ports_;
    SpiPeer* peer_ = nullptr;
    std::uint8_t control_ = 0, status_ = 0;
    std::uint8_t armed_ = 0;      // flags a status read saw, cleared by the access that follows
    std::uint8_t shifter_ = 0, received_ = 0;
    std::uint64_t transferEnd_ = NoEvent;
    std::vector<SpiTransfer> output_;
};

} // namespace hc11::chip
