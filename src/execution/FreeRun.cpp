// The free run: the board gets the CPU with an "X" frame and the host only
// listens until the monitor's reset report (MSComm_OnComm) ends the run.
// Breakpoints do not exist here; they are compared on the host only.
#include "core/TargetState.h"
#include "execution/Debugger.h"

void Debugger::RunFree()
{
    link_.FindBoard();
    if (!BoardConnected)
        return;
    if (link_.StartFreeRun()) {
        EnterFreeRun();
        link_.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    }
    link_.BoardStatus();
    // The disassembly window's rules turn off what a running board cannot serve.
    view_.RunCommandsChanged();
}

void Debugger::EnterFreeRun()
{
    BoardConnected = true;
    BoardRunning = true;
    StatusSuffix = "";
    view_.FreezeDisplay();
    // A free run cannot be paused: only the board's reset ends it.
    view_.SetPauseEnabled(false);
}
