#include "engine/execution/ChipFreeRun.h"

#include "engine/execution/Breakpoints.h"

namespace {
// Full speed looks at the wall clock after each such stretch of E cycles.
constexpr std::uint64_t FullSpeedChunk = 20'000;
} // namespace

ChipFreeRun::ChipFreeRun(ChipSimulator& chip) : chip_(chip)
{
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] { RunSlice(); });
}

void ChipFreeRun::Start(bool fullSpeed)
{
    fullSpeed_ = fullSpeed;
    leaveBreakpoint_ = true;
    // The table cannot change while the run holds the windows.
    breakpoints_ = BreakpointMap();
    startCycles_ = chip_.Chip().Cycles();
    wall_.start();
    timer_.start(fullSpeed ? 0 : TickMs);
}

void ChipFreeRun::RunSlice()
{
    const std::uint64_t before = chip_.Chip().Cycles();
    bool hit = false;
    if (fullSpeed_) {
        QElapsedTimer slice;
        slice.start();
        do {
            hit = chip_.RunUntil(chip_.Chip().Cycles() + FullSpeedChunk, breakpoints_, leaveBreakpoint_);
            leaveBreakpoint_ = false;
        } while (!hit && slice.elapsed() < SliceMs);
    } else {
        std::uint64_t due = startCycles_ + static_cast<std::uint64_t>(wall_.nsecsElapsed() * (EClockHz / 1e9));
        if (due > before + MaxLagCycles) {
            startCycles_ += due - (before + MaxLagCycles);
            due = before + MaxLagCycles;
        }
        hit = chip_.RunUntil(due, breakpoints_, leaveBreakpoint_);
    }
    const std::uint64_t ran = chip_.Chip().Cycles() - before;
    if (ran > 0)
        leaveBreakpoint_ = false;
    if (hit)
        timer_.stop();
    if (sliceDone)
        sliceDone(ran);
    if (hit && breakpointReached)
        breakpointReached();
}
