// The state of the link to the target: board presence by CTS, the status
// panel, and what the board sends unasked (CTS changes, the monitor's reset
// report, the user program's own output).
#include "core/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/MsgBox.h"
#include "workspace/frmMain.h"

#include <QAction>

namespace {
const QString CommCaption = QStringLiteral("Orvane - Communication Error");
const QByteArray ResetReport = QByteArrayLiteral("BBB");
}  // namespace

void frmMain::BoardStatus()
{
    if (TargetMode == SimulatorMode) {
        SetPanelText(1, QStringLiteral("Simulator mode"));
        // A free run exists only on the board. Every simulated target
        // operation ends here, Play's emulated calls and returns among them:
        // the entry is looked up once.
        if (!runEntry_)
            runEntry_ = Menu(QStringLiteral("mnuRunRun"));
        runEntry_->setEnabled(false);
        Button(23)->setEnabled(false);
        return;
    }
    if (!MSComm.CTSHolding())
        SetPanelText(1, QStringLiteral("HC11 Board: Not Connected !"));
    else if (BoardRunning)
        SetPanelText(1, QStringLiteral("HC11 Board: Running ..."));
    else if (BoardConnected)
        SetPanelText(1, QStringLiteral("HC11 Board: Ready") + QString::fromLatin1(StatusSuffix));
    else
        SetPanelText(1, QStringLiteral("HC11 Board: Not Responding !"));
}

void frmMain::FindBoard()
{
    if (TargetMode == SimulatorMode) {
        BoardConnected = true;
        return;
    }
    if (TargetMode != BoardMode)
        return;
    if (!MSComm.PortOpen() && !MSComm.SetPortOpen(true)) {
        BoardConnected = false;
        SetPanelText(1, QStringLiteral("HC11 Board: Communication Port Error !"));
        MsgBox(MSComm.ErrorDescription() + QStringLiteral(" !"), MbOkOnly | MbExclamation, CommCaption);
        return;
    }
    if (MSComm.CTSHolding()) {
        // No receive event may cut into the exchange that follows.
        MSComm.SetRThreshold(0);
        BoardConnected = true;
        return;
    }
    BoardConnected = false;
    MsgBox(QStringLiteral("M68HC11 Board Not Connected !"), MbOkOnly | MbExclamation, CommCaption);
    BoardStatus();
}

void frmMain::PassToTerminal(const QByteArray& bytes)
{
    if (Menu("mnuViewSerialTerminal")->isChecked() && SerialTerminalDisplay)
        SerialTerminalDisplay(bytes);
}

void frmMain::MSComm_OnComm()
{
    const int event = MSComm.CommEvent();
    if (event == ::MSComm::comEvCTS)
        BoardStatus();
    if (event == ::MSComm::comEvReceive) {
        QByteArray block = MSComm.Input();
        // The monitor announces a reset with three "B"s: they must end this block.
        if (block.endsWith(ResetReport)) {
            BoardConnected = true;
            InResetVector(CpuRegisters.PC);
            ThawDisplay();
            StatusSuffix = "";
            BoardStatus();
            DoEvents();
            BoardRunning = false;
            RefreshRun();
            StatusSuffix = " (Reset)";
            BoardStatus();
            block.chop(ResetReport.size());
        }
        if (!block.isEmpty())
            PassToTerminal(block);
    }
    ClockCount = 0;
}

void frmMain::tmrComm_Timer()
{
    if (TargetMode != BoardMode || !BoardRunning) {
        TerminalPassCount = 0;
        return;
    }
    // Output shorter than the receive threshold reaches the terminal after a quiet tick.
    if (MSComm.InBufferCount() == TerminalPassCount && TerminalPassCount != 0)
        PassToTerminal(MSComm.Input());
    TerminalPassCount = static_cast<std::int16_t>(MSComm.InBufferCount());
}
