#include "support/DebuggerFixture.h"

#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/QtSerialDevice.h"

void RecordedView::LetEventsRun() { DoEvents(); }

DebuggerFixture::DebuggerFixture(const QString& path)
    : DebuggerFixture(false, [path](int) -> std::unique_ptr<SerialDevice> {
          return std::make_unique<QtSerialDevice>(path);
      })
{
}

DebuggerFixture::DebuggerFixture(bool simulator, const SerialDeviceFactory& device)
{
    ResetTargetState();
    TargetMode = simulator ? SimulatorMode : BoardMode;
    RunStopped = true;
    QObject::connect(&link.MSComm, &MSComm::OnComm, [this] { debugger.OnComm(); });
    link.MSComm.SetDeviceFactory(device ? device : line.Factory());
    link.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    BoardConnected = link.MSComm.SetPortOpen(true);
}

DebuggerFixture::~DebuggerFixture() { ResetTargetState(); }
