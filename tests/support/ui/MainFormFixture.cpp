#include "support/ui/MainFormFixture.h"

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
    return *form;
}

frmMain& MainFormFixture::StartOn(const QString& devicePath)
{
    form = std::make_unique<frmMain>();
    form->MSComm.SetDeviceFactory([devicePath](int) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<QtSerialDevice>(devicePath);
    });
    form->MDIForm_Load();
    return *form;
}
