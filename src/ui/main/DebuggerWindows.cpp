// The main window as the debugger's view: Pause's entry and button, the
// disassembly and CPU windows' parts in a step or a run, the timers; and
// Run to Cursor, which hands the debugger the cursor row's address.
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "ui/code/frmDisAsm.h"
#include "ui/main/frmMain.h"

#include <QAction>

namespace {
constexpr int PauseButton = 26;
const QString DisAsm = QStringLiteral("frmDisAsm");
}  // namespace

void frmMain::SetPauseEnabled(bool on)
{
    Menu("mnuRunPause")->setEnabled(on);
    Button(PauseButton)->setEnabled(on);
}

void frmMain::RunCommandsChanged()
{
    if (IsOpen(DisAsm))
        DisAsmMenus();
}

void frmMain::ShowPCRow()
{
    CallWindow(Window(DisAsm), "mnuGoToPCAddress");
}

void frmMain::RedrawAtPC()
{
    if (ViewShown(TargetView::Code))
        RefreshView(TargetView::Code);
}

void frmMain::mnuRunFullSpeed_Click()
{
    QAction* entry = Menu("mnuRunFullSpeed");
    entry->setChecked(!entry->isChecked());
    debugger_.FullSpeed = entry->isChecked();
}

void frmMain::mnuRunRunTo_Click()
{
    const auto* disAsm = qobject_cast<const frmDisAsm*>(Window(DisAsm));
    if (!debugger_.RunToCursor(disAsm ? disAsm->CursorAddress() : std::nullopt))
        frmDisAsm::SayTableFull();
}

bool frmMain::CpuWindowShown()
{
    return Window(QStringLiteral("frmRegCPU")) != nullptr;
}

void frmMain::FollowStep(bool readBack)
{
    CallWindow(Window(QStringLiteral("frmRegCPU")), readBack ? "mnuRefresh" : "Redraw");
}

void frmMain::SuspendTimers()
{
    tmrCommWasOn_ = tmrComm.isActive();
    tmrRefreshWasOn_ = tmrRefresh.isActive();
    tmrComm.stop();
    tmrRefresh.stop();
}

void frmMain::ResumeTimers()
{
    if (tmrCommWasOn_)
        tmrComm.start();
    if (tmrRefreshWasOn_)
        tmrRefresh.start();
}

void frmMain::LetEventsRun()
{
    DoEvents();
}
