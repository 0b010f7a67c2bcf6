// Play and Animate: host loops over Step Into that test the breakpoints
// before each step but the first, let events run so that Pause, timers and
// keys reach the program every few milliseconds, and stop at the first failed
// exchange rather than repeat its message at every step. Play keeps the
// windows still; Animate redraws everything and takes at least 100 ms a step.
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "engine/execution/StepPlan.h"
#include "platform/TickCount.h"
#include "engine/execution/Debugger.h"

#include <chrono>
#include <thread>

namespace {
constexpr std::uint32_t AnimateStepMs = 100;
constexpr std::uint32_t EventPassMs = 10;
}  // namespace

void Debugger::BeginRun(bool play)
{
    // The View entries are shut for the run: no CPU window opens meanwhile.
    followCpuWindow_ = play && view_.CpuWindowShown();
    RunStopped = false;
    PlayActive = play;
    AnimateActive = !play;
    PlayFirstStep = true;
    view_.SetPauseEnabled(true);
    view_.ShowPCRow();
    view_.SuspendTimers();
    view_.FreezeDisplay();
}

void Debugger::EndRun()
{
    view_.SetPauseEnabled(false);
    view_.ResumeTimers();
    if (clockPanelStale_)
        view_.ShowClockCount();
    clockPanelStale_ = false;
}

void Debugger::LetEventsRun()
{
    if (clockPanelStale_)
        view_.ShowClockCount();
    clockPanelStale_ = false;
    PassChipOutput();
    view_.LetEventsRun();
}

void Debugger::Play()
{
    PlayUntil(std::nullopt);
}

void Debugger::PlayUntil(std::optional<std::int32_t> temporary)
{
    if (!BoardFound())
        return;
    if (temporary)
        AddBreakpoint(*temporary);
    BeginRun(true);
    // A board's step takes milliseconds: events run after each. Simulated
    // steps are let through to the events about as often as a screen shows a
    // new picture, which is as often as Pause or the clock panel can be seen.
    stepping::EventPump pump = TargetMode == SimulatorMode ? stepping::EventPump(64, EventPassMs)
                                                           : stepping::EventPump(1, 0);
    while (!RunStopped) {
        if (!PlayFirstStep && HasBreakpoint(CpuRegisters.PC)) {
            RunStopped = true;
            PlayActive = false;
        }
        if (RunStopped) {
            LetEventsRun();
            continue;
        }
        const bool returning = outAboveSP_ && stepping::ReturnAt(CpuRegisters.PC);
        if (BoardConnected)
            StepOne();
        PlayFirstStep = false;
        if (returning && CpuRegisters.SP > *outAboveSP_)
            RunStopped = true;
        // A lost board has shown its message once; the loop would show it at every step.
        if (!BoardConnected)
            RunStopped = true;
        else if (pump.Due())
            LetEventsRun();
    }
    // Off the table before the page is drawn: the user never sees it.
    std::int32_t taken = 0;
    if (temporary)
        TakeLastBreakpoint(taken);
    view_.RedrawAtPC();
    view_.ThawDisplay();
    PlayActive = false;
    PassChipOutput();
    EndRun();
}

void Debugger::Animate()
{
    if (!BoardFound())
        return;
    BeginRun(false);
    stepping::EventPump pump(1, EventPassMs);
    while (!RunStopped) {
        if (!PlayFirstStep && HasBreakpoint(CpuRegisters.PC)) {
            RunStopped = true;
            AnimateActive = false;
        }
        if (!RunStopped) {
            const std::uint32_t start = GetTickCount();
            // MakeStep refreshes every open window while AnimateActive is set.
            StepOne();
            // The rest of the step's 100 ms: events go on meanwhile, and Pause ends the wait.
            while (!RunStopped && GetTickCount() - start < AnimateStepMs) {
                if (pump.Due())
                    LetEventsRun();
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            }
            PlayFirstStep = false;
            if (!BoardConnected)
                RunStopped = true;
        }
        view_.LetEventsRun();
    }
    view_.ThawDisplay();
    AnimateActive = false;
    EndRun();
}

void Debugger::Pause()
{
    RunStopped = true;
    // The chip's run is between two slices, so at an instruction boundary.
    if (chipRun_.Active())
        EndChipRun();
    // The board's Step Over and Step Out wait too: the board keeps the routine.
    if (stepWaitRunning_)
        stepWaitAbandoned_ = true;
}
