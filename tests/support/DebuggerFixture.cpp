#include "support/DebuggerFixture.h"

#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"

void RecordedView::LetEventsRun() { DoEvents(); }

DebuggerFixture::DebuggerFixture(bool simulator)
{
    ResetTargetState();
    TargetMode = simulator ? SimulatorMode : BoardMode;
    RunStopped = true;
    QObject::connect(&link.MSComm, &MSComm::OnComm, [this] { debugger.OnComm(); });
    link.MSComm.SetDeviceFactory(line.Factory());
    link.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    BoardConnected = link.MSComm.SetPortOpen(true);
}

DebuggerFixture::~DebuggerFixture() { ResetTargetState(); }
