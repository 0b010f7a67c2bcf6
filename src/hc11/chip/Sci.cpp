#include "hc11/chip/Sci.h"

#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"

#include <algorithm>

namespace hc11::chip {

namespace {
constexpr std::uint8_t OwnRegisters[] = {reg::BAUD, reg::SCCR1, reg::SCCR2, reg::SCSR, reg::SCDR};
constexpr int PrescaleFactors[4] = {1, 3, 4, 13};   // BAUD's SCP1:SCP0
} // namespace

std::span<const std::uint8_t> Sci::Registers() const
{
    return OwnRegisters;
}

void Sci::Reset(std::uint64_t now)
{
    baud_ = sccr1_ = sccr2_ = 0;
    status_ = scsr::TDRE | scsr::TC;
    armed_ = 0;
    tdrFull_ = false;
    shifting_ = Shifting::Idle;
    shiftEnd_ = NoEvent;
    // Characters still on the receive line would find the receiver off.
    input_.clear();
    rxEnd_ = idleAt_ = NoEvent;
    lineFreeAt_ = now;
    idleArmed_ = false;
    rdr_ = 0;
    r8_ = false;
}

std::uint64_t Sci::BitCycles() const
{
    return std::uint64_t(16 * PrescaleFactors[(baud_ >> 4) & 3]) << (baud_ & 7);
}

std::uint64_t Sci::NextEvent() const
{
    return std::min({shiftEnd_, rxEnd_, idleAt_});
}

void Sci::AdvanceTo(std::uint64_t now)
{
    for (;;) {
        const std::uint64_t at = NextEvent();
        if (at > now)
            return;
        if (at == shiftEnd_) {
            FinishShift(at);
        } else if (at == rxEnd_) {
            const SciFrame frame = input_.front().frame;
            input_.pop_front();
            lineFreeAt_ = at;
            const std::uint64_t frameCycles = FrameCycles();
            const bool nextClose = !input_.empty() && input_.front().arrived < at + frameCycles;
            idleAt_ = nextClose ? NoEvent : at + frameCycles;
            rxEnd_ = input_.empty() ? NoEvent : std::max(input_.front().arrived, at) + frameCycles;
            Deliver(frame, at);
        } else {
            idleAt_ = NoEvent;
            LineIdle();
        }
    }
}

// ---- transmitter ----

void Sci::StartShift(std::uint64_t at)
{
    const bool enabled = sccr2_ & sccr2::TE;
    if (enabled && tdrFull_) {
        shifter_ = SciFrame{};
        shifter_.data = tdr_;
        shifter_.ninth = sccr1_ & sccr1::T8;
        tdrFull_ = false;
        status_ |= scsr::TDRE;
        shifting_ = Shifting::Data;
    } else if (enabled && (sccr2_ & sccr2::SBK)) {
        shifter_ = SciFrame{};
        shifter_.isBreak = true;
        shifting_ = Shifting::Break;
    } else {
        shifting_ = Shifting::Idle;
        shiftEnd_ = NoEvent;
        status_ |= scsr::TC;
        return;
    }
    shiftEnd_ = at + FrameCycles();
}

void Sci::FinishShift(std::uint64_t at)
{
    if (shifting_ == Shifting::Data || shifting_ == Shifting::Break) {
        shifter_.endsAt = at;
        if (output_.size() >= OutputLimit)
            output_.erase(output_.begin(), output_.begin() + OutputLimit / 2);
        output_.push_back(shifter_);
    }
    StartShift(at);
}

std::vector<SciFrame> Sci::TakeOutput()
{
    std::vector<SciFrame> taken;
    taken.swap(output_);
    return taken;
}

// ---- receiver ----

void Sci::Receive(const SciFrame& frame, std::uint64_t now)
{
    input_.push_back({frame, now});
    if (input_.size() == 1) {
        rxEnd_ = std::max(now, lineFreeAt_) + FrameCycles();
        idleAt_ = NoEvent;   // the line is busy again before a whole idle frame went by
    }
}

void Sci::Deliver(const SciFrame& frame, std::uint64_t)
{
    if (!(sccr2_ & sccr2::RE))
        return;
    const bool nineBits = sccr1_ & sccr1::M;
    if (sccr2_ & sccr2::RWU) {
        // Asleep: idle-line wake-up ignores characters; address-mark wake-up
        // wakes on a character whose last data bit is 1, and takes it.
        const bool mark = nineBits ? frame.ninth : (frame.data & 0x80) != 0;
        if (!(sccr1_ & sccr1::WAKE) || !mark || frame.isBreak)
            return;
        sccr2_ &= std::uint8_t(~sccr2::RWU);
    }
    idleArmed_ = true;
    if (status_ & scsr::RDRF) {
        status_ |= scsr::OR;   // the new character is lost, the old one stays
        return;
    }
    rdr_ = frame.isBreak ? 0 : frame.data;
    r8_ = !frame.isBreak && frame.ninth;
    status_ |= scsr::RDRF;
    if (frame.noise)
        status_ |= scsr::NF;
    if (frame.framingError || frame.isBreak)
        status_ |= scsr::FE;
}

void Sci::LineIdle()
{
    if (sccr2_ & sccr2::RWU) {
        if (!(sccr1_ & sccr1::WAKE))
            sccr2_ &= std::uint8_t(~sccr2::RWU);   // a frame of idle line wakes the receiver
        return;
    }
    if ((sccr2_ & sccr2::RE) && idleArmed_) {
        status_ |= scsr::IDLE;
        idleArmed_ = false;
    }
}

// ---- registers ----

std::uint8_t Sci::Read(unsigned offset, std::uint64_t)
{
    if (offset == reg::SCSR) {
        armed_ = status_;
    } else if (offset == reg::SCDR) {
        status_ &= std::uint8_t(~(armed_ & scsr::ReceiveFlags));
        armed_ &= std::uint8_t(~scsr::ReceiveFlags);
    }
    return Peek(offset);
}

std::uint8_t Sci::Peek(unsigned offset) const
{
    switch (offset) {
    case reg::BAUD: return baud_;
    case reg::SCCR1: return std::uint8_t((sccr1_ & ~sccr1::R8) | (r8_ ? sccr1::R8 : 0));
    case reg::SCCR2: return sccr2_;
    case reg::SCSR: return status_;
    default: return rdr_;
    }
}

void Sci::Write(unsigned offset, std::uint8_t value, std::uint64_t now)
{
    switch (offset) {
    case reg::BAUD: baud_ = value; break;
    case reg::SCCR1: sccr1_ = value & (sccr1::T8 | sccr1::M | sccr1::WAKE); break;
    case reg::SCCR2: {
        const std::uint8_t before = sccr2_;
        sccr2_ = value;
        const bool idle = shifting_ == Shifting::Idle;
        if (!(before & sccr2::TE) && (value & sccr2::TE) && idle) {
            shifting_ = Shifting::Preamble;   // a frame of ones before the first character
            shiftEnd_ = now + FrameCycles();
        } else if (idle && (value & sccr2::TE) && (value & sccr2::SBK)) {
            StartShift(now);
        }
        break;
    }
    case reg::SCSR: break;   // read-only
    default:                 // SCDR
        status_ &= std::uint8_t(~(armed_ & scsr::TransmitFlags));
        armed_ &= std::uint8_t(~scsr::TransmitFlags);
        tdr_ = value;
        tdrFull_ = true;
        if (shifting_ == Shifting::Idle)
            StartShift(now);
        break;
    }
}

std::uint32_t Sci::PendingInterrupts() const
{
    const std::uint8_t s = status_, c = sccr2_;
    const bool request = ((c & sccr2::TIE) && (s & scsr::TDRE)) || ((c & sccr2::TCIE) && (s & scsr::TC)) ||
                         ((c & sccr2::RIE) && (s & (scsr::RDRF | scsr::OR))) ||
                         ((c & sccr2::ILIE) && (s & scsr::IDLE));
    return request ? Bit(Source::Sci) : 0;
}

} // namespace hc11::chip
