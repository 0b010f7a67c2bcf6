#include "hc11/chip/Timer.h"

#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"

#include <algorithm>

namespace hc11::chip {

namespace {

constexpr std::uint8_t OwnRegisters[] = {
    reg::PORTA, reg::CFORC, reg::OC1M, reg::OC1D, reg::TCNT, reg::TCNT + 1,
    reg::TIC1, reg::TIC1 + 1, reg::TIC2, reg::TIC2 + 1, reg::TIC3, reg::TIC3 + 1,
    reg::TOC1, reg::TOC1 + 1, reg::TOC2, reg::TOC2 + 1, reg::TOC3, reg::TOC3 + 1,
    reg::TOC4, reg::TOC4 + 1, reg::TI4O5, reg::TI4O5 + 1,
    reg::TCTL1, reg::TCTL2, reg::TMSK1, reg::TFLG1, reg::TMSK2, reg::TFLG2, reg::PACTL, reg::PACNT,
};

constexpr int PrescaleFactors[4] = {1, 4, 8, 16};
constexpr std::uint8_t OcPins = 0xF8;   // PA7-PA3, in OC1M, OC1D and CFORC order

// The compare channels OC2-OC5: their TFLG1 bit (and CFORC bit), their pin,
// and their TCTL1 action field's shift.
struct CompareChannel {
    std::uint8_t flag, pin, shift;
};
constexpr CompareChannel OtherCompares[4] = {
    {tflg1::OC2F, 0x40, 6}, {tflg1::OC3F, 0x20, 4}, {tflg1::OC4F, 0x10, 2}, {tflg1::I4O5F, 0x08, 0},
};

// The capture channels: their pin, TCTL2 edge field's shift and TFLG1 bit.
struct CaptureChannel {
    std::uint8_t pin, shift, flag;
};
constexpr CaptureChannel Captures[4] = {
    {0x04, 4, tflg1::IC1F}, {0x02, 2, tflg1::IC2F}, {0x01, 0, tflg1::IC3F}, {0x08, 6, tflg1::I4O5F},
};

// TFLG1/TMSK1 and TFLG2/TMSK2 bits to interrupt sources.
constexpr Source Flag1Sources[8] = {Source::Ic3, Source::Ic2, Source::Ic1, Source::Ic4Oc5,
                                    Source::Oc4, Source::Oc3, Source::Oc2, Source::Oc1};

std::uint16_t SetByte(std::uint16_t word, unsigned offset, std::uint8_t value)
{
    return offset & 1 ? std::uint16_t((word & 0xFF00) | value) : std::uint16_t((word & 0x00FF) | value << 8);
}

std::uint8_t ByteOf(std::uint16_t word, unsigned offset)
{
    return offset & 1 ? std::uint8_t(word) : std::uint8_t(word >> 8);
}

} // namespace

std::span<const std::uint8_t> Timer::Registers() const
{
    return OwnRegisters;
}

void Timer::Reset(std::uint64_t now)
{
    prescale_ = 1;
    resetAt_ = tickBaseCycle_ = syncedAt_ = now;
    tickBase_ = doneTick_ = 0;
    rtiNext_ = now + RtiBaseCycles;
    toc_.fill(0xFFFF);
    tic_.fill(0xFFFF);
    outputLevels_ = oc1m_ = oc1d_ = tctl1_ = tctl2_ = tmsk1_ = tflg1_ = tmsk2_ = tflg2_ = pactl_ = 0;
    prescaleWritten_ = false;
    lowLatchAt_ = NoEvent;
    accumulator_.Reset(now);
    ScheduleNext();
}

// ---- port A ----

std::uint8_t Timer::OutputPinMask() const
{
    return std::uint8_t(0x70 | (pactl_ & pactl::DDRA7 ? 0x80 : 0) | (pactl_ & pactl::DDRA3 ? 0x08 : 0));
}

std::uint8_t Timer::ComparePins() const
{
    std::uint8_t pins = oc1m_;
    for (const CompareChannel& oc : OtherCompares)
        if ((tctl1_ >> oc.shift) & 3 && (oc.flag != tflg1::I4O5F || Oc5Active()))
            pins |= oc.pin;
    return pins;
}

std::uint8_t Timer::PortAPins() const
{
    return PortAPinsWith(pins_.portA);
}

std::uint8_t Timer::PortAPinsWith(std::uint8_t inputs) const
{
    const std::uint8_t out = OutputPinMask();
    return std::uint8_t((outputLevels_ & out) | (inputs & ~out));
}

void Timer::PinEdges(std::uint8_t before, std::uint64_t now)
{
    const std::uint8_t after = PortAPins();
    const std::uint8_t changed = before ^ after;
    if (!changed)
        return;
    for (const CaptureChannel& ic : Captures) {
        if (!(changed & ic.pin) || (ic.flag == tflg1::I4O5F && Oc5Active()))
            continue;
        const int edges = (tctl2_ >> ic.shift) & 3;   // 1 rising, 2 falling, 3 both
        const bool rising = after & ic.pin;
        if (edges == 3 || (edges == 1 && rising) || (edges == 2 && !rising))
            Capture(ic.flag, now);
    }
    if (changed & 0x80)
        tflg2_ |= accumulator_.Edge(after & 0x80, pactl_);
}

void Timer::Capture(std::uint8_t flag, std::uint64_t now)
{
    const std::uint16_t count = Counter(now);
    switch (flag) {
    case tflg1::IC1F: tic_[0] = count; break;
    case tflg1::IC2F: tic_[1] = count; break;
    case tflg1::IC3F: tic_[2] = count; break;
    default: toc_[4] = count; break;   // IC4 into TI4O5
    }
    tflg1_ |= flag;
}

void Timer::Compare(std::uint8_t matched, bool setFlags, std::uint64_t now)
{
    const std::uint8_t before = PortAPins();
    if (setFlags)
        tflg1_ |= matched;
    std::uint8_t oc1Pins = 0;
    if (matched & tflg1::OC1F) {
        oc1Pins = oc1m_;
        outputLevels_ = std::uint8_t((outputLevels_ & ~oc1Pins) | (oc1d_ & oc1Pins));
    }
    for (const CompareChannel& oc : OtherCompares) {
        if (!(matched & oc.flag) || (oc.pin & oc1Pins))
            continue;
        switch ((tctl1_ >> oc.shift) & 3) {
        case 1: outputLevels_ ^= oc.pin; break;
        case 2: outputLevels_ &= std::uint8_t(~oc.pin); break;
        case 3: outputLevels_ |= oc.pin; break;
        default: break;
        }
    }
    PinEdges(before, now);
}

// ---- the clock ----

void Timer::SetPrescale(int prescale, std::uint64_t now)
{
    // The prescaler taps a divider that runs from reset: the first tick at
    // the new rate falls on its next multiple.
    tickBase_ = Ticks(now);
    tickBaseCycle_ = resetAt_ + (now - resetAt_) / prescale * prescale;
    prescale_ = prescale;
}

void Timer::ScheduleNext()
{
    const std::uint64_t first = doneTick_ + 1;
    unsigned distance = (0u - unsigned(first)) & 0xFFFF;   // to the overflow
    const int compares = Oc5Active() ? 5 : 4;
    for (int i = 0; i < compares; ++i)
        distance = std::min(distance, (toc_[i] - unsigned(first)) & 0xFFFF);
    nextTickEvent_ = TickCycle(first + distance);
    nextEvent_ = std::min({nextTickEvent_, rtiNext_, accumulator_.NextOverflow(pactl_, Pai())});
}

void Timer::RunEventsAt(std::uint64_t cycle)
{
    tflg2_ |= accumulator_.AdvanceTo(cycle, pactl_, Pai());
    if (cycle == nextTickEvent_) {
        const std::uint16_t count = Counter(cycle);
        if (count == 0)
            tflg2_ |= tflg2::TOF;
        std::uint8_t matched = 0;
        for (int i = 0; i < 4; ++i)
            if (toc_[i] == count)
                matched |= std::uint8_t(tflg1::OC1F >> i);
        if (Oc5Active() && toc_[4] == count)
            matched |= tflg1::I4O5F;
        if (matched)
            Compare(matched, true, cycle);
    }
    if (cycle == rtiNext_) {
        tflg2_ |= tflg2::RTIF;
        rtiNext_ += RtiPeriod();
    }
    doneTick_ = Ticks(cycle);
    syncedAt_ = cycle;
    ScheduleNext();
}

void Timer::AdvanceTo(std::uint64_t now)
{
    while (nextEvent_ <= now)
        RunEventsAt(nextEvent_);
    tflg2_ |= accumulator_.AdvanceTo(now, pactl_, Pai());
    doneTick_ = Ticks(now);
    syncedAt_ = now;
}

// ---- registers ----

std::uint8_t Timer::Read(unsigned offset, std::uint64_t now)
{
    if (offset == reg::TCNT) {
        lowLatch_ = std::uint8_t(Counter(now));
        lowLatchAt_ = now;
    } else if (offset == reg::TCNT + 1 && lowLatchAt_ == now) {
        return lowLatch_;   // the low byte as the high byte's read found it
    }
    return Peek(offset);
}

std::uint8_t Timer::Peek(unsigned offset) const
{
    switch (offset) {
    case reg::PORTA: return PortAPins();
    case reg::CFORC: return 0;
    case reg::OC1M: return oc1m_;
    case reg::OC1D: return oc1d_;
    case reg::TCNT: case reg::TCNT + 1: return ByteOf(Counter(syncedAt_), offset);
    case reg::TCTL1: return tctl1_;
    case reg::TCTL2: return tctl2_;
    case reg::TMSK1: return tmsk1_;
    case reg::TFLG1: return tflg1_;
    case reg::TMSK2: return tmsk2_;
    case reg::TFLG2: return tflg2_;
    case reg::PACTL: return pactl_;
    case reg::PACNT: return accumulator_.count;
    default: break;
    }
    if (offset >= reg::TIC1 && offset < reg::TOC1)
        return ByteOf(tic_[(offset - reg::TIC1) / 2], offset);
    return ByteOf(toc_[(offset - reg::TOC1) / 2], offset);
}

void Timer::Write(unsigned offset, std::uint8_t value, std::uint64_t now)
{
    const std::uint8_t pinsBefore = PortAPins();
    switch (offset) {
    case reg::PORTA: {
        const std::uint8_t mask = OcPins & ~ComparePins();
        outputLevels_ = std::uint8_t((outputLevels_ & ~mask) | (value & mask));
        break;
    }
    case reg::CFORC:   // the compares' pin actions now, without their flags
        Compare(std::uint8_t(value & (Oc5Active() ? OcPins : OcPins & ~tflg1::I4O5F)), false, now);
        break;
    case reg::OC1M: oc1m_ = value & OcPins; break;
    case reg::OC1D: oc1d_ = value & OcPins; break;
    case reg::TCNT: case reg::TCNT + 1: break;                        // test mode only
    case reg::TIC1: case reg::TIC1 + 1: case reg::TIC2: case reg::TIC2 + 1:
    case reg::TIC3: case reg::TIC3 + 1: break;                        // captures only
    case reg::TCTL1: tctl1_ = value; break;
    case reg::TCTL2: tctl2_ = value; break;
    case reg::TMSK1: tmsk1_ = value; break;
    case reg::TFLG1: tflg1_ &= std::uint8_t(~value); break;
    case reg::TMSK2: {
        std::uint8_t writable = tmsk2::TOI | tmsk2::RTII | tmsk2::PAOVI | tmsk2::PAII;
        if (protection_.Open(now) && !prescaleWritten_) {
            writable |= tmsk2::PR;
            prescaleWritten_ = !protection_.specialMode;
            SetPrescale(PrescaleFactors[value & tmsk2::PR], now);
        }
        tmsk2_ = std::uint8_t((tmsk2_ & ~writable) | (value & writable));
        break;
    }
    case reg::TFLG2: tflg2_ &= std::uint8_t(~value); break;
    case reg::PACTL: {
        const std::uint64_t oldPeriod = RtiPeriod();
        pactl_ = value;
        if (RtiPeriod() != oldPeriod)
            rtiNext_ = resetAt_ + ((now - resetAt_) / RtiPeriod() + 1) * RtiPeriod();
        break;
    }
    case reg::PACNT: accumulator_.count = value; break;
    default:   // TOC1-TOC4, TI4O5
        toc_[(offset - reg::TOC1) / 2] = SetByte(toc_[(offset - reg::TOC1) / 2], offset, value);
        break;
    }
    if (offset != reg::CFORC)
        PinEdges(pinsBefore, now);
    ScheduleNext();
}

void Timer::PinsChanged(const InputPins& before, std::uint64_t now)
{
    PinEdges(PortAPinsWith(before.portA), now);
    ScheduleNext();
}

std::uint32_t Timer::PendingInterrupts() const
{
    std::uint32_t pending = 0;
    const std::uint8_t f1 = tflg1_ & tmsk1_;
    for (int bit = 0; bit < 8; ++bit)
        if (f1 & (1 << bit))
            pending |= Bit(Flag1Sources[bit]);
    const std::uint8_t f2 = tflg2_ & tmsk2_;
    if (f2 & tflg2::TOF) pending |= Bit(Source::Tof);
    if (f2 & tflg2::RTIF) pending |= Bit(Source::Rti);
    if (f2 & tflg2::PAOVF) pending |= Bit(Source::PaOverflow);
    if (f2 & tflg2::PAIF) pending |= Bit(Source::PaInput);
    return pending;
}

} // namespace hc11::chip
