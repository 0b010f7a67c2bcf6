// What runs on the board, as the program's one loop serves it: the built-in
// monitor, or a ROM image on the chip alone. Time on the wall clock comes in
// as a millisecond count from the caller; the chip's time as E cycles the
// caller hands out, so that nothing here ever sleeps.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace hc11board {

// The board's E clock: 2 MHz from its 8 MHz crystal.
constexpr std::uint64_t EClockHertzOfBoard = 2'000'000;

class BoardProgram {
public:
    virtual ~BoardProgram() = default;

    // Bytes from the line, arrived at nowMs.
    virtual void Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs) = 0;
    // Lets wall-clock time pass for work that waits on it; NextDeadlineMs
    // says when there is some.
    virtual void Service(std::uint64_t) {}
    virtual std::optional<std::uint64_t> NextDeadlineMs() const { return std::nullopt; }

    // True while the chip runs on its own: the loop holds it to the E clock.
    virtual bool FreeRunning() const = 0;
    // Runs about this many E cycles; returns those spent (0 when not running).
    virtual std::uint64_t Run(std::uint64_t cycles) = 0;
    virtual std::uint64_t Cycles() const = 0;
    // The E clock the loop paces the chip to.
    virtual std::uint64_t EClockHertz() const { return EClockHertzOfBoard; }

    // The reset button; RAM keeps its contents.
    virtual void Reset() = 0;
    // The host closed the line.
    virtual void LineDropped() {}
    // Everything sent to the host since the last call, in order.
    virtual std::vector<std::uint8_t> TakeOutput() = 0;
};

} // namespace hc11board
