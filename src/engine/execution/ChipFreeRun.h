// The free run on the simulated chip: the program runs in slices between
// turns of the event loop, so that the windows, the keys and Pause stay live.
// Paced, each slice brings the chip's clock up to the wall clock at the 2 MHz
// E clock, so a delay loop takes its real time; at full speed a slice runs
// for SliceMs of wall time. A slice stops early at a breakpoint, always
// between two instructions.
#pragma once

#include "engine/link/ChipSimulator.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cstdint>
#include <functional>

class ChipFreeRun {
public:
    static constexpr double EClockHz = 2'000'000.0;
    static constexpr int TickMs = 5;                // a paced slice's period
    static constexpr int SliceMs = 8;               // a full-speed slice's length
    static constexpr std::uint64_t MaxLagCycles = 200'000;   // 100 ms: a late host does not catch up in a burst

    explicit ChipFreeRun(ChipSimulator& chip);
    ChipFreeRun(const ChipFreeRun&) = delete;
    ChipFreeRun& operator=(const ChipFreeRun&) = delete;

    // Runs from the registers the core holds; the first instruction is not
    // tested for a breakpoint, so the run leaves the one it stands on.
    void Start(bool fullSpeed);
    void Stop() { timer_.stop(); }
    bool Active() const { return timer_.isActive(); }

    // After each slice, with the E cycles it ran.
    std::function<void(std::uint64_t)> sliceDone;
    // A breakpoint has stopped the run (Active() is already false).
    std::function<void()> breakpointReached;

    // One slice now, as the timer runs it.
    void RunSlice();

private:
    ChipSimulator& chip_;
    QTimer timer_;
    QElapsedTimer wall_;
    ChipSimulator::BreakpointMap breakpoints_;
    std::uint64_t startCycles_ = 0;   // the chip's clock as wall_ started, moved on by lag dropped
    bool fullSpeed_ = false;
    bool leaveBreakpoint_ = true;
};
