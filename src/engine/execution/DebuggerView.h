// What the debugger asks of the windows. The debugger knows no window: the
// main window implements this with its menus, toolbar, panels and tool
// windows; a test implements it with a few counters.
#pragma once

class QByteArray;

class DebuggerView {
public:
    virtual ~DebuggerView() = default;

    // The disassembly page at PC and every open register, stack, watch and
    // peripheral window, read anew from the target.
    virtual void Refresh() = 0;
    // The same without the disassembly page.
    virtual void RefreshRun() = 0;
    // During a run on the simulated chip: the peripheral windows redraw from
    // the chip as it runs, their marks still those of the last stop.
    virtual void FollowPeripherals() = 0;
    // Shut the debugger's windows and commands for a run, with Pause on;
    // open them again once the run has stopped.
    virtual void FreezeDisplay() = 0;
    virtual void ThawDisplay() = 0;
    // Pause's menu entry and toolbar button.
    virtual void SetPauseEnabled(bool on) = 0;
    // The clock panel shows ClockCount.
    virtual void ShowClockCount() = 0;
    // The run state has changed under the disassembly window: its rules
    // decide its commands again (nothing while it is closed).
    virtual void RunCommandsChanged() = 0;
    // The disassembly window's cursor row goes to PC.
    virtual void ShowPCRow() = 0;
    // After Play: the disassembly window, if open, reads its page again at PC.
    virtual void RedrawAtPC() = 0;
    // The CPU window is open. Asked as Play begins: the window then follows each step.
    virtual bool CpuWindowShown() = 0;
    // The CPU window shows the registers as they stand (board: the step's
    // reply has them) or reads them back from the save area first.
    virtual void FollowStep(bool readBack) = 0;
    // The periodic timers stop for a run and come back as they were.
    virtual void SuspendTimers() = 0;
    virtual void ResumeTimers() = 0;
    // Lets pending events run once, so that Pause and a reset report reach the run.
    virtual void LetEventsRun() = 0;
    // The user program's output during a free run, for the serial terminal.
    virtual void PassToTerminal(const QByteArray& bytes) = 0;
};
