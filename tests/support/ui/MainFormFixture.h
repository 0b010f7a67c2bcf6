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
    frmMain& Start();
    // Builds frmMain on a device path (a pseudo-terminal) and runs MDIForm_Load.
    frmMain& StartOn(const QString& devicePath);

    // A test's simulator is flat memory, the one the older tests were written
    // for, unless its settings choose the chip ("SimPeripherals").
    void KeepFlatSimulator();

    TestSettings settings;
    FakeSerialLine line;
    MsgBoxRecorder boxes;
    std::unique_ptr<frmMain> form;
};
