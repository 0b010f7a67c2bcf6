// The COP watchdog: enabled when CONFIG's NOCOP is clear, it fails unless a
// program writes $55 and then $AA to COPRST before its time-out. Its clock is
// E / 2^15 from a divider that runs from reset; CR1:CR0 in OPTION count 1,
// 4, 16 or 64 of those clocks after the first one that follows the clearing
// write, so a failure comes between that count and one clock more after it.
#pragma once

#include "hc11/chip/Peripheral.h"

namespace hc11::chip {

class Cop final : public Peripheral {
public:
    static constexpr std::uint64_t ClockCycles = std::uint64_t(1) << 15;

    // The OPTION and CONFIG bytes the chip keeps.
    Cop(const std::uint8_t& option, const std::uint8_t& config) : option_(option), config_(config) {}

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override;
    std::uint8_t Read(unsigned, std::uint64_t) override { return 0; }
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned) const override { return 0; }
    std::uint32_t PendingInterrupts() const override { return 0; }

    bool Enabled() const;
    // The time-out passed: the chip resets through the COP vector.
    bool Failed() const { return failed_; }
    // Clocks from the clearing write to the time-out at OPTION's CR1:CR0.
    std::uint64_t TimeoutClocks() const { return std::uint64_t(1) << (2 * (option_ & 3)); }

private:
    const std::uint8_t& option_;
    const std::uint8_t& config_;
    std::uint64_t resetAt_ = 0;
    std::uint64_t clearedClock_ = 0;   // the divider's clock count at the last clearing
    bool armed_ = false;               // $55 written, $AA awaited
    bool failed_ = false;
};

} // namespace hc11::chip
