#include "support/DebuggerFixture.h"

#include "core/TargetState.h"
#include "platform/DoEvents.h"

void RecordedView::LetEventsRun()
{
    DoEvents();
}

DebuggerFixture::DebuggerFixture(bool simulator)
{
    ResetTargetState();
    TargetMode = simulator ? SimulatorMode : BoardMode;
    RunStopped = true;
    link.MSComm.SetDeviceFactory(line.Factory());
    link.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    BoardConnected = link.MSComm.SetPortOpen(true);
}

DebuggerFixture::~DebuggerFixture()
{
    ResetTargetState();
}
