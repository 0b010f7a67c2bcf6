// The serial communications interface: BAUD's prescaler and rate from the E
// clock, SCCR1 (R8, T8, M, WAKE), SCCR2 (TIE, TCIE, RIE, ILIE, TE, RE, RWU,
// SBK) and SCSR's flags with their set and clear rules, each character taking
// its frame time at the programmed rate.
//
// The host's side is the line: Receive() puts a character on the receive
// line (it starts when the one before it has ended, and is in the receiver
// a frame time later), TakeOutput() hands over the characters the
// transmitter has finished, each with the E cycle its stop bit ended.
#pragma once

#include "hc11/chip/Peripheral.h"

#include <deque>
#include <vector>

namespace hc11::chip {

namespace scsr {
constexpr std::uint8_t TDRE = 0x80, TC = 0x40, RDRF = 0x20, IDLE = 0x10, OR = 0x08, NF = 0x04, FE = 0x02;
constexpr std::uint8_t ReceiveFlags = RDRF | IDLE | OR | NF | FE;
constexpr std::uint8_t TransmitFlags = TDRE | TC;
} // namespace scsr

namespace sccr1 {
constexpr std::uint8_t R8 = 0x80, T8 = 0x40, M = 0x10, WAKE = 0x08;
} // namespace sccr1

namespace sccr2 {
constexpr std::uint8_t TIE = 0x80, TCIE = 0x40, RIE = 0x20, ILIE = 0x10, TE = 0x08, RE = 0x04,
                       RWU = 0x02, SBK = 0x01;
} // namespace sccr2

// One character on a line.
struct SciFrame {
    std::uint8_t data = 0;
    bool ninth = false;           // the ninth data bit, with M set
    bool isBreak = false;         // a break character: all bits 0
    bool noise = false;           // received: the receiver heard noise in it (NF)
    bool framingError = false;    // received: its stop bit was 0 (FE)
    std::uint64_t endsAt = 0;     // sent: the E cycle its stop bit ended
};

class Sci final : public Peripheral {
public:
    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override;
    std::uint8_t Read(unsigned offset, std::uint64_t now) override;
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    std::uint32_t PendingInterrupts() const override;

    // E cycles of one bit at BAUD's rate: 16 receiver samples of the
    // prescaled clock, E / (16 * SCP * 2^SCR).
    std::uint64_t BitCycles() const;
    // One character: start bit, 8 or 9 data bits (M), stop bit.
    std::uint64_t FrameCycles() const { return BitCycles() * (sccr1_ & sccr1::M ? 11 : 10); }

    // The host's side of the line, at E cycle now (the SCI advanced to now).
    void Receive(const SciFrame& frame, std::uint64_t now);
    std::size_t PendingInput() const { return input_.size(); }
    // The transmitter has a character (or a preamble, or a break) to finish.
    bool Sending() const { return tdrFull_ || shifting_ != Shifting::Idle; }
    // Sent characters wait here until taken; beyond OutputLimit the older
    // half goes, as characters on a line nobody listens to.
    static constexpr std::size_t OutputLimit = 4096;
    std::vector<SciFrame> TakeOutput();
    const std::vector<SciFrame>& Output() const { return output_; }

private:
    enum class Shifting : std::uint8_t { Idle, Preamble, Data, Break };

    void FinishShift(std::uint64_t at);
    void StartShift(std::uint64_t at);
    void Deliver(const SciFrame& frame, std::uint64_t at);
    void LineIdle();

    std::uint8_t baud_ = 0, sccr1_ = 0, sccr2_ = 0;
    std::uint8_t status_ = 0;
    std::uint8_t armed_ = 0;       // flags a status read saw, cleared by the data access that follows

    // Transmitter: the data register and the shifter.
    bool tdrFull_ = false;
    std::uint8_t tdr_ = 0;
    Shifting shifting_ = Shifting::Idle;
    SciFrame shifter_;
    std::uint64_t shiftEnd_ = NoEvent;
    std::vector<SciFrame> output_;

    // Receiver: characters on the line, and the data register.
    struct Incoming {
        SciFrame frame;
        std::uint64_t arrived;
    };
    std::deque<Incoming> input_;
    std::uint64_t rxEnd_ = NoEvent;     // when the character at the head of input_ is in
    std::uint64_t lineFreeAt_ = 0;      // the end of the last character on the line
    std::uint64_t idleAt_ = NoEvent;    // a frame of idle line after the last character
    bool idleArmed_ = false;            // IDLE may be set: a character came since the last IDLE
    std::uint8_t rdr_ = 0;
    bool r8_ = false;
};

} // namespace hc11::chip
