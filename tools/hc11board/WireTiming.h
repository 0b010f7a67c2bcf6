// The two clocks of the program: the wire, which lets a byte reach the other side
// only when its ten bits at 38400 bit/s have gone by, and the E clock, which
// holds a free run to the board's own (2 MHz, or the monitor firmware's 2.4576 MHz).
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace hc11board {

using SteadyClock = std::chrono::steady_clock;

class WirePacer {
public:
    static constexpr std::chrono::nanoseconds ByteTime{1'000'000'000LL * 10 / 38400};

    // Bytes were queued on an idle line at now: the first starts when the
    // line is free.
    void Start(SteadyClock::time_point now) { sendingSince_ = std::max(now, sendingSince_); }

    // How many of the queued bytes have fully arrived by now; they count as sent.
    std::size_t Due(SteadyClock::time_point now, std::size_t queued)
    {
        if (now < sendingSince_)
            return 0;
        const auto whole = std::size_t((now - sendingSince_) / ByteTime);
        const std::size_t due = std::min(whole, queued);
        sendingSince_ += due * ByteTime;
        return due;
    }

    SteadyClock::time_point NextDue() const { return sendingSince_ + ByteTime; }

private:
    SteadyClock::time_point sendingSince_{};
};

class EClock {
public:
    explicit EClock(std::uint64_t hertz) : hertz_(hertz) {}

    void Restart(SteadyClock::time_point now, std::uint64_t cycles)
    {
        start_ = now;
        startCycles_ = cycles;
    }

    // The cycles a board would have run by now, given the CPU's count.
    std::uint64_t CyclesOwed(SteadyClock::time_point now, std::uint64_t cycles)
    {
        const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(now - start_).count();
        const std::uint64_t target = startCycles_ + std::uint64_t(elapsed) * hertz_ / 1'000'000'000ULL;
        if (target <= cycles)
            return 0;
        const std::uint64_t maxLag = hertz_ / 20;   // the most a run catches up after the process was held up
        if (target - cycles > maxLag) {
            Restart(now, cycles);
            return maxLag;
        }
        return target - cycles;
    }

private:
    std::uint64_t hertz_;
    SteadyClock::time_point start_{};
    std::uint64_t startCycles_ = 0;
};

} // namespace hc11board
