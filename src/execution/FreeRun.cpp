// The free run: the board gets the CPU with an "X" frame and the host only
// listens until the monitor's reset report (MSComm_OnComm) ends the run.
// Breakpoints do not exist here; they are compared on the host only.
#include "core/TargetState.h"
#include "workspace/frmMain.h"

#include <QAction>

namespace {
constexpr int PauseButton = 26;
}  // namespace

void frmMain::mnuRunRun_Click()
{
    RunHC11();
}

void frmMain::RunHC11()
{
    FindBoard();
    if (!BoardConnected)
        return;
    if (link_.StartFreeRun()) {
        EnterFreeRun();
        MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    }
    BoardStatus();
    // The disassembly window's rules turn off what a running board cannot serve.
    if (IsOpen(QStringLiteral("frmDisAsm")))
        DisAsmMenus();
}

void frmMain::EnterFreeRun()
{
    BoardConnected = true;
    BoardRunning = true;
    StatusSuffix = "";
    FreezeDisplay();
    // A free run cannot be paused: only the board's reset ends it.
    Menu("mnuRunPause")->setEnabled(false);
    Button(PauseButton)->setEnabled(false);
}
