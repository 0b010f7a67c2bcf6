#include "support/ui/MainFormFixture.h"

#include "platform/SettingsStore.h"

#include "engine/state/TargetState.h"
#include "platform/QtSerialDevice.h"

MainFormFixture::MainFormFixture()
{
    ResetTargetState();
}

MainFormFixture::~MainFormFixture()
{
    form.reset();
    ResetTargetState();
}

frmMain& MainFormFixture::Start()
{
    form = std::make_unique<frmMain>();
    form->MSComm.SetDeviceFactory(line.Factory());
    form->MDIForm_Load();
    KeepFlatSimulator();
    return *form;
}

frmMain& MainFormFixture::StartOn(const QString& devicePath)
{
    form = std::make_unique<frmMain>();
    form->MSComm.SetDeviceFactory([devicePath](int) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<QtSerialDevice>(devicePath);
    });
    form->MDIForm_Load();
    KeepFlatSimulator();
    return *form;
}

void MainFormFixture::KeepFlatSimulator()
{
    // Nothing is written: a test of the store finds it as the program left it.
    if (GetSetting(QStringLiteral("Settings"), QStringLiteral("SimPeripherals")).isEmpty())
        SimulatePeripherals = false;
}
