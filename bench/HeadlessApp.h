// The application of a benchmark that builds windows: offscreen unless
// QT_QPA_PLATFORM names a display, with a throw-away settings store, so a run
// starts as a first start and leaves the user's settings alone; and the count
// of failures that the program reported in message boxes.
#pragma once

#include <QApplication>
#include <QTemporaryDir>

#include "platform/SettingsStore.h"
#include "platform/widgets/MsgBox.h"

class HeadlessApp {
public:
    HeadlessApp(int& argc, char** argv) : app_(Offscreen(argc), argv) { SetSettingsFolder(store_.path()); }

    QString StorePath() const { return store_.path(); }

private:
    static int& Offscreen(int& argc)
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        return argc;
    }

    QApplication app_;
    QTemporaryDir store_;
};

// Every message box the run shows counts as a failure and is answered OK.
inline void CountMessageBoxesAsFailures(int& failures)
{
    SetMsgBoxHandler([&failures](const QString&, int, const QString&) {
        ++failures;
        return MbResultOk;
    });
}
