// Keeping the windows in step with the target: the clock panel, the thaw
// after a run, the refresh of the open views and the auto-refresh timer.
#include "core/TargetState.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>

void frmMain::ClockCountUpdate()
{
    SetPanelText(4, QStringLiteral("Clock= ") + QStringLiteral("%1").arg(ClockCount, 8, 10, QLatin1Char('0')));
}

void frmMain::ThawDisplay()
{
    Menu("mnuRunPause")->setEnabled(!RunStopped);
    Button(26)->setEnabled(!RunStopped);
    for (const char* name : {"mnuDebugAddWatch", "mnuFileDownload", "mnuViewDisassembler", "mnuViewMemory",
                             "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewRegPIA", "mnuViewStack", "mnuViewWatch"})
        Menu(QString::fromLatin1(name))->setEnabled(true);
    Button(34)->setEnabled(true);
    Button(21)->setEnabled(true);
    Menu("mnuViewIOunit")->setEnabled(TargetMode == SimulatorMode);
    // The run commands come back only with a disassembly window to host them.
    if (Menu("mnuViewDisassembler")->isChecked() && RunStopped) {
        Menu("mnuRunRun")->setEnabled(TargetMode == BoardMode);
        Button(23)->setEnabled(TargetMode == BoardMode);
        for (const char* name : {"mnuRunPlay", "mnuRunAnimate"})
            Menu(QString::fromLatin1(name))->setEnabled(true);
        Button(24)->setEnabled(true);
        Button(25)->setEnabled(true);
    }
}

void frmMain::RefreshRun()
{
    // Each open view rereads the target here; the views register as they land.
    // With none of them open there is nothing to read.
}

void frmMain::tmrRefresh_Timer()
{
    if (BoardRunning || AnimateActive || PlayActive)
        return;
    // Every window that turns this timer on has a mnuRefresh.
    if (QMdiSubWindow* active = mdiArea()->activeSubWindow(); active && active->widget())
        QMetaObject::invokeMethod(active->widget(), "mnuRefresh");
}

void frmMain::mnuDebugResetCounter_Click()
{
    ClockCount = 0;
    ClockCountUpdate();
}

void frmMain::mnuDebugCodeOn_Click()
{
    QAction* entry = Menu("mnuDebugCodeOn");
    entry->setChecked(!entry->isChecked());
}

void frmMain::mnuDebugIncludeSym_Click()
{
    QAction* entry = Menu("mnuDebugIncludeSym");
    entry->setChecked(!entry->isChecked());
}
