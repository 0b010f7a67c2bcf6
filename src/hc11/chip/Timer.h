// The main timer and port A: TCNT through the PR1:PR0 prescaler with TOF,
// output compares OC1-OC5 with their pin actions (TCTL1) and OC1's mask and
// data (OC1M, OC1D), CFORC, input captures IC1-IC3 and IC4 (PACTL's I4/O5)
// on the edges TCTL2 selects, the real-time interrupt at PACTL's RTR rate,
// and the pulse accumulator.
//
// Port A's pins belong to the timer: PA0-PA2 are inputs (IC3, IC2, IC1), PA4-
// PA6 outputs (OC4, OC3, OC2), PA3 (OC5 or IC4) and PA7 (OC1, PAI) go either
// way by PACTL's DDRA3 and DDRA7. An output pin keeps one level: PORTA
// writes set it while no compare drives it, a compare's action sets it while
// one does.
#pragma once

#include "hc11/chip/OutsideWorld.h"
#include "hc11/chip/Peripheral.h"
#include "hc11/chip/PulseAccumulator.h"
#include "hc11/chip/TimeProtection.h"

#include <array>

namespace hc11::chip {

namespace tflg1 {
constexpr std::uint8_t OC1F = 0x80, OC2F = 0x40, OC3F = 0x20, OC4F = 0x10, I4O5F = 0x08,
                       IC1F = 0x04, IC2F = 0x02, IC3F = 0x01;
} // namespace tflg1

namespace tmsk2 {
constexpr std::uint8_t TOI = 0x80, RTII = 0x40, PAOVI = 0x20, PAII = 0x10, PR = 0x03;
} // namespace tmsk2

class Timer final : public Peripheral {
public:
    // E cycles per RTI period at RTR = 0; each RTR step doubles it.
    static constexpr std::uint64_t RtiBaseCycles = 8192;

    Timer(const InputPins& pins, const TimeProtection& protection) : pins_(pins), protection_(protection) {}

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override { return nextEvent_; }
    std::uint8_t Read(unsigned offset, std::uint64_t now) override;
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    void PinsChanged(const InputPins& before, std::uint64_t now) override;
    std::uint32_t PendingInterrupts() const override;

    // The levels on port A's pins: the outputs as driven, the inputs as the host set them.
    std::uint8_t PortAPins() const;
    std::uint8_t PortAPinsWith(std::uint8_t inputs) const;
    // TCNT as it stands at E cycle now (the timer advanced to now).
    std::uint16_t Counter(std::uint64_t now) const { return std::uint16_t(Ticks(now)); }
    int Prescale() const { return prescale_; }

private:
    // TCNT ticks counted since reset, at E cycle `at`.
    std::uint64_t Ticks(std::uint64_t at) const { return tickBase_ + (at - tickBaseCycle_) / prescale_; }
    std::uint64_t TickCycle(std::uint64_t tick) const { return tickBaseCycle_ + (tick - tickBase_) * prescale_; }
    std::uint64_t RtiPeriod() const { return RtiBaseCycles << (pactl_ & pactl::RTR); }
    bool Oc5Active() const { return !(pactl_ & pactl::I4O5); }
    std::uint8_t OutputPinMask() const;
    // Pins a compare drives: OC1M's, and those with a TCTL1 action.
    std::uint8_t ComparePins() const;
    bool Pai() const { return PortAPins() & 0x80; }

    void RunEventsAt(std::uint64_t cycle);
    // Compare actions at one tick (or forced): OC1 first, its pins win.
    void Compare(std::uint8_t matched, bool setFlags, std::uint64_t now);
    void Capture(std::uint8_t flag, std::uint64_t now);
    // Captures and pulse accumulator edges for port A's pins moving from before.
    void PinEdges(std::uint8_t before, std::uint64_t now);
    void ScheduleNext();
    void SetPrescale(int prescale, std::uint64_t now);

    const InputPins& pins_;
    const TimeProtection& protection_;

    int prescale_ = 1;
    std::uint64_t resetAt_ = 0;
    std::uint64_t tickBase_ = 0;
    std::uint64_t tickBaseCycle_ = 0;
    std::uint64_t doneTick_ = 0;       // every tick up to this one has had its events
    std::uint64_t syncedAt_ = 0;
    std::uint64_t rtiNext_ = 0;
    std::uint64_t nextEvent_ = NoEvent;
    std::uint64_t nextTickEvent_ = 0;  // cycle of the next TOF or compare

    std::array<std::uint16_t, 5> toc_{};   // TOC1-TOC4, and TI4O5 as TOC5 or TIC4
    std::array<std::uint16_t, 3> tic_{};   // TIC1-TIC3
    std::uint8_t outputLevels_ = 0;        // PA3-PA7 as the chip drives them
    std::uint8_t oc1m_ = 0, oc1d_ = 0, tctl1_ = 0, tctl2_ = 0, tmsk1_ = 0, tflg1_ = 0;
    std::uint8_t tmsk2_ = 0, tflg2_ = 0, pactl_ = 0;
    bool prescaleWritten_ = false;
    std::uint64_t lowLatchAt_ = NoEvent;   // TCNT's low byte held by a high-byte read
    std::uint8_t lowLatch_ = 0;
    PulseAccumulator accumulator_;
};

} // namespace hc11::chip
