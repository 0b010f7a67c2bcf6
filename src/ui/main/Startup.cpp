// Start-up and shut-down of the main window: settings in, port open, status
// shown; settings out at a normal end.
#include "engine/state/AppSettings.h"
#include "ui/main/DefaultPlacements.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/MsgBox.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "ui/code/frmDisAsm.h"
#include "ui/main/frmMain.h"

#include <QDir>
#include <QMdiArea>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QWidget>

WindowPlacement frmMain::PlacementDefault(const QString& prefix) const
{
    const QWidget* client = mdiArea()->viewport();
    // The disassembly's frame adds its border on both sides.
    const int border = 2 * mdiArea()->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return DefaultPlacement(prefix, PixelsToTwipsX(client->width()), PixelsToTwipsY(client->height()),
                            PixelsToTwipsX(frmDisAsm::SymbolRowWidth() + border));
}

void frmMain::MDIForm_Load()
{
    SetSettingsWriteFailure([](const QString& reason) {
        MsgBox(reason + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Write Error"));
    });
    LoadPlacement(this, QStringLiteral("Main"), PlacementDefault(QStringLiteral("Main")));

    Menu("mnuViewToolbar")->setChecked(GetFlagSetting(QStringLiteral("Toolbar"), true));
    tbToolbar->setVisible(Menu("mnuViewToolbar")->isChecked());
    Menu("mnuViewStatusBar")->setChecked(GetFlagSetting(QStringLiteral("StatusBar"), true));
    sbStatusBar->setVisible(Menu("mnuViewStatusBar")->isChecked());
    Menu("mnuDebugCodeOn")->setChecked(GetFlagSetting(QStringLiteral("CodeOn"), true));
    Menu("mnuDebugIncludeSym")->setChecked(GetFlagSetting(QStringLiteral("IncludeSym"), false));
    Menu("mnuPopupSerialHex")->setChecked(GetFlagSetting(QStringLiteral("HexTerminal"), false));
    Menu("mnuPopupSerialAscii")->setChecked(!Menu("mnuPopupSerialHex")->isChecked());

    LoadPortAndFonts();
    TargetMode = GetFlagSetting(QStringLiteral("SimEnabled"), false) ? SimulatorMode : BoardMode;
    SimulatePeripherals = GetFlagSetting(QStringLiteral("SimPeripherals"), true);
    Menu("mnuRunFullSpeed")->setChecked(GetFlagSetting(QStringLiteral("FullSpeed"), false));
    debugger_.FullSpeed = Menu("mnuRunFullSpeed")->isChecked();

    // The current folder stays the user's, where the IDE was started: file
    // dialogs begin there and bare names land there. Only a start from inside
    // the program's own folder, which is the installation's and no place for
    // the user's files, moves to the user's home.
    if (QDir::current().canonicalPath() == QDir(ProgramFolder()).canonicalPath())
        QDir::setCurrent(QDir::homePath());
    HelpFile = QDir(ProgramFolder()).filePath(QStringLiteral("Orvane.HLP"));

    for (QAction* button : tbToolbar->actions()) {
        if (QWidget* widget = tbToolbar->widgetForAction(button); widget && !button->isSeparator())
            widget->setMinimumSize(24, 22);
    }

    MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    RunStopped = true;
    // The port opens in both modes; a failure is told by the panel alone.
    link_.OpenPort(COMPort);

    ClockCount = 0;
    ClockCountUpdate();
}

void frmMain::MDIForm_Unload()
{
    SavePlacement(this, QStringLiteral("Main"));

    SaveFlagSetting(QStringLiteral("Toolbar"), Menu("mnuViewToolbar")->isChecked());
    SaveFlagSetting(QStringLiteral("StatusBar"), Menu("mnuViewStatusBar")->isChecked());
    SaveFlagSetting(QStringLiteral("CodeOn"), Menu("mnuDebugCodeOn")->isChecked());
    SaveFlagSetting(QStringLiteral("IncludeSym"), Menu("mnuDebugIncludeSym")->isChecked());
    SaveFlagSetting(QStringLiteral("HexTerminal"), Menu("mnuPopupSerialHex")->isChecked());
    SavePortAndFonts();
    SaveFlagSetting(QStringLiteral("SimEnabled"), TargetMode != 0);
    SaveFlagSetting(QStringLiteral("SimPeripherals"), SimulatePeripherals);
    SaveFlagSetting(QStringLiteral("FullSpeed"), Menu("mnuRunFullSpeed")->isChecked());

    // The device paths behind the port numbers, so that the user finds them in the file.
    for (int port = 1; port <= 4; ++port)
        SaveTextSetting(QStringLiteral("PortDevice%1").arg(port), PortDevicePath(port));
}

void frmMain::mnuViewToolbar_Click()
{
    QAction* entry = Menu("mnuViewToolbar");
    entry->setChecked(!entry->isChecked());
    tbToolbar->setVisible(entry->isChecked());
}

void frmMain::mnuViewStatusBar_Click()
{
    QAction* entry = Menu("mnuViewStatusBar");
    entry->setChecked(!entry->isChecked());
    sbStatusBar->setVisible(entry->isChecked());
}
