// A main window for a test: an empty settings store, fresh target records,
// a scripted serial line plugged in before start-up, and message boxes
// answered and recorded.
#pragma once

#include "support/FakeSerialLine.h"
#include "support/ui/MsgBoxRecorder.h"
#include "support/TestSettings.h"
#include "ui/main/frmMain.h"

#include <memory>

struct MainFormFixture {
    MainFormFixture();
    ~MainFormFixture();

    // Builds frmMain on the scripted line and runs MDIForm_Load.
    frmMain& Start() { return StartWith(line.Factory()); }
    // Builds frmMain on a device path (a pseudo-terminal) and runs MDIForm_Load.
    frmMain& StartOn(const QString& devicePath);
    // Builds frmMain on the devices the factory makes (none: the system's serial ports) and runs MDIForm_Load.
    frmMain& StartWith(const SerialDeviceFactory& factory);

    // A test's simulator is flat memory, the one the older tests were written
    // for, unless its settings choose the chip ("SimPeripherals").
    void KeepFlatSimulator();

    TestSettings settings;
    FakeSerialLine line;
    MsgBoxRecorder boxes;
    std::unique_ptr<frmMain> form;
};

// The target's byte at address, read through the main window's link.
inline std::uint8_t TargetByte(frmMain& form, std::int32_t address)
{
    std::uint8_t byte = 0;
    form.Link().InByte(address, byte);
    return byte;
}
