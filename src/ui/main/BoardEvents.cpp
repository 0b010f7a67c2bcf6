// The main window's side of the link's reports: its failures as message
// boxes, its state on panel 1; and the user program's output for the serial
// terminal. What the board sends unasked is the debugger's (Debugger::OnComm).
#include "engine/state/TargetState.h"
#include "platform/widgets/MsgBox.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QLabel>

namespace {
const QString CommCaption = QStringLiteral("Orvane - Communication Error");
// A message without a subject of its own carries the application's title.
const QString ApplicationTitle = QStringLiteral("Orvane Integrated Development Tools");
}  // namespace

void frmMain::LinkFailed(LinkFailure failure, const QString& detail)
{
    QString text;
    QString caption = CommCaption;
    switch (failure) {
    case LinkFailure::NoResponse: text = QStringLiteral("No Response from M68HC11 Board !"); break;
    case LinkFailure::InvalidData: text = QStringLiteral("Invalid Data from M68HC11 Board !"); break;
    case LinkFailure::PortError: text = detail + QStringLiteral(" !"); break;
    case LinkFailure::NotConnected: text = QStringLiteral("M68HC11 Board Not Connected !"); break;
    case LinkFailure::PortNotOpen: text = QStringLiteral("Communication port is not open !"); break;
    case LinkFailure::EraseFailed:
        text = QStringLiteral("Erasing Flash failed!");
        caption = ApplicationTitle;
        break;
    case LinkFailure::EraseInvalidData: text = QStringLiteral("Invalid data from board !"); break;
    case LinkFailure::SimulatorRun:
        text = QStringLiteral("M68HC11 Simulator error !");
        caption = QStringLiteral("Procedure called: RunHC11");
        break;
    }
    MsgBox(text, MbOkOnly | MbExclamation, caption);
}

void frmMain::LinkStateChanged(LinkState state)
{
    // Why the port would not open, a missing permission with its fix among
    // the causes, is the panel's tool tip while the panel tells the error.
    // Every simulated operation ends here: the tip is set only when it changes.
    const QString tip = state == LinkState::PortError ? MSComm.ErrorDescription() : QString();
    if (Panel(1)->toolTip() != tip)
        Panel(1)->setToolTip(tip);
    switch (state) {
    case LinkState::Simulator:
        SetPanelText(1, QStringLiteral("Simulator mode"));
        // Flat memory has no free run. Every simulated target operation ends
        // here, Play's emulated calls and returns among them: the entry is
        // looked up once.
        if (SimulatePeripherals)
            break;
        if (!runEntry_)
            runEntry_ = Menu(QStringLiteral("mnuRunRun"));
        runEntry_->setEnabled(false);
        Button(23)->setEnabled(false);
        break;
    case LinkState::SimulatorRunning: SetPanelText(1, QStringLiteral("Simulator: Running ...")); break;
    case LinkState::NotConnected: SetPanelText(1, QStringLiteral("HC11 Board: Not Connected !")); break;
    case LinkState::Running: SetPanelText(1, QStringLiteral("HC11 Board: Running ...")); break;
    case LinkState::Ready:
        SetPanelText(1, QStringLiteral("HC11 Board: Ready") + QString::fromLatin1(StatusSuffix));
        break;
    case LinkState::NotResponding: SetPanelText(1, QStringLiteral("HC11 Board: Not Responding !")); break;
    case LinkState::PortError: SetPanelText(1, QStringLiteral("HC11 Board: Communication Port Error !")); break;
    }
}

bool frmMain::IoUnitShown() const
{
    return Menu(QStringLiteral("mnuViewIOunit"))->isChecked();
}

void frmMain::PassToTerminal(const QByteArray& bytes)
{
    if (Menu("mnuViewSerialTerminal")->isChecked() && SerialTerminalDisplay)
        SerialTerminalDisplay(bytes);
}
