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

frmMain& MainFormFixture::StartOn(const QString& devicePath)
{
    return StartWith([devicePath](int) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<QtSerialDevice>(devicePath);
    });
}

frmMain& MainFormFixture::StartWith(const SerialDeviceFactory& factory)
{
    form = std::make_unique<frmMain>();
    if (factory)
        form->MSComm.SetDeviceFactory(factory);
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
