// The free run: the board gets the CPU with an "X" frame and the host only
// listens until the monitor's reset report (MSComm_OnComm) ends the run.
// Breakpoints do not exist here; they are compared on the host only.
#include "core/BlockChanges.h"
#include "core/TargetState.h"
#include "platform/MsgBox.h"
#include "platform/TickCount.h"
#include "target/MonitorFrames.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <chrono>

namespace {
constexpr int PauseButton = 26;
constexpr int ReceiveThreshold = 6;
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
    if (TargetMode == BoardMode) {
        MSComm.SetRThreshold(0);
        MSComm.SetInBufferCount(0);
        ++TargetRuns;
        MSComm.Output(monitor::ExecuteFrame(CpuRegisters));
        // The acknowledgement is one byte; no events may run meanwhile.
        const std::uint32_t start = GetTickCount();
        while (MSComm.InBufferCount() < 1 && GetTickCount() - start < exchange_timeout::Write)
            MSComm.WaitForInput(std::chrono::milliseconds(1));
        QByteArray answer;
        if (MSComm.InBufferCount() >= 1) {
            // Only the ACK: what stands behind it may be the program's first output.
            MSComm.SetInputLen(1);
            answer = MSComm.Input();
            MSComm.SetInputLen(0);
        }
        if (answer.size() == 1 && static_cast<std::uint8_t>(answer[0]) == monitor::Ack) {
            EnterFreeRun();
        } else {
            BoardConnected = false;
            BoardStatus();
            MsgBox(answer.isEmpty() ? QStringLiteral("No Response from M68HC11 Board !")
                                    : QStringLiteral("Invalid Data from M68HC11 Board !"),
                   MbOkOnly | MbExclamation, QStringLiteral("Orvane - Communication Error"));
            MSComm.SetInBufferCount(0);
        }
        MSComm.SetRThreshold(ReceiveThreshold);
    } else {
        // The command is off in this mode unless the port failed at start.
        MsgBox(QStringLiteral("M68HC11 Simulator error !"), MbOkOnly | MbExclamation,
               QStringLiteral("Procedure called: RunHC11"));
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
