// The main window's side of the refresh cycle: its tool windows as the
// round's views, the freeze and thaw of the debugger's windows and commands
// around a run, the auto-refresh timer, the clock panel and the Debug
// commands that only forward to frmDisAsm. What is refreshed, in which order,
// is the engine's RefreshCycle. "Open" is always the View entry's check mark
// (ToolWindows.h).
#include "engine/state/TargetMoves.h"
#include "engine/state/TargetState.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>

namespace {
constexpr int DownloadButton = 21, RunButton = 23, PlayButton = 24, AnimateButton = 25, PauseButton = 26,
              AddWatchButton = 34;

// The windows that draw from RegisterBlock, in the order of their Redraw.
const char* const RegisterBlockWindows[] = {
    "frmRegAD", "frmRegOther", "frmRegPA", "frmRegPorts", "frmRegSCI", "frmRegSPI", "frmRegTimer"};

// View entries that a run shuts, so that no window opens or closes meanwhile.
const char* const FrozenViewEntries[] = {
    "mnuViewMemory", "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewRegPIA",
    "mnuViewStack", "mnuViewWatch", "mnuViewDisassembler", "mnuViewIOunit"};

// Windows that take no input during a run; they stay visible and are still redrawn.
const char* const FrozenRegisterWindows[] = {
    "frmRegCPU", "frmRegPorts", "frmRegTimer", "frmRegSCI", "frmRegSPI",
    "frmRegPA", "frmRegAD", "frmRegOther", "frmRegPIA"};

// The window of a view that is one window.
QString WindowOf(TargetView view)
{
    switch (view) {
    case TargetView::Code: return QStringLiteral("frmDisAsm");
    case TargetView::CpuRegisters: return QStringLiteral("frmRegCPU");
    case TargetView::Stack: return QStringLiteral("frmStack");
    case TargetView::Watches: return QStringLiteral("frmWatch");
    case TargetView::Pia: return QStringLiteral("frmRegPIA");
    case TargetView::RegisterBlock: break;
    }
    return {};
}
}  // namespace

void frmMain::ClockCountUpdate()
{
    SetPanelText(4, QStringLiteral("Clock= ") + QStringLiteral("%1").arg(ClockCount, 8, 10, QLatin1Char('0')));
}

bool frmMain::ViewShown(TargetView view)
{
    if (view != TargetView::RegisterBlock)
        return IsOpen(WindowOf(view));
    return std::any_of(std::begin(RegisterBlockWindows), std::end(RegisterBlockWindows),
                       [this](const char* name) { return IsOpen(QString::fromLatin1(name)); });
}

void frmMain::RefreshView(TargetView view)
{
    if (view == TargetView::RegisterBlock) {
        for (const char* name : RegisterBlockWindows)
            if (IsOpen(QString::fromLatin1(name)))
                CallWindow(Window(QString::fromLatin1(name)), "Redraw");
        return;
    }
    QWidget* window = Window(WindowOf(view));
    CallWindow(window, "mnuRefresh");
    if (view == TargetView::Code)
        CallWindow(window, "mnuGoToPCAddress");
}

void frmMain::FreezeDisplay()
{
    NoteTargetMoves();
    Menu("mnuRunPause")->setEnabled(true);
    Button(PauseButton)->setEnabled(true);
    for (const char* name : {"mnuDebugAddWatch", "mnuFileDownload", "mnuRunRun", "mnuRunPlay", "mnuRunAnimate"})
        Menu(QString::fromLatin1(name))->setEnabled(false);
    for (int button : {AddWatchButton, DownloadButton, RunButton, PlayButton, AnimateButton})
        Button(button)->setEnabled(false);
    for (const char* name : FrozenViewEntries)
        Menu(QString::fromLatin1(name))->setEnabled(false);
    for (const char* name : FrozenRegisterWindows)
        if (QWidget* window = Window(QString::fromLatin1(name)))
            window->setEnabled(false);
    for (const char* name : {"frmDisAsm", "frmStack"}) {
        if (QWidget* window = Window(QString::fromLatin1(name))) {
            CallWindow(window, "ClearMarks");
            window->setEnabled(false);
        }
    }
    for (const char* name : {"frmWatch", "frmMemory"})
        if (QWidget* window = Window(QString::fromLatin1(name)))
            window->setEnabled(false);
}

void frmMain::ThawDisplay()
{
    Menu("mnuRunPause")->setEnabled(!RunStopped);
    Button(PauseButton)->setEnabled(!RunStopped);
    for (const char* name : {"mnuDebugAddWatch", "mnuFileDownload", "mnuViewDisassembler", "mnuViewMemory",
                             "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewRegPIA", "mnuViewStack", "mnuViewWatch"})
        Menu(QString::fromLatin1(name))->setEnabled(true);
    Button(AddWatchButton)->setEnabled(true);
    Button(DownloadButton)->setEnabled(true);
    Menu("mnuViewIOunit")->setEnabled(TargetMode == SimulatorMode);
    for (const char* name : FrozenRegisterWindows)
        if (QWidget* window = Window(QString::fromLatin1(name)))
            window->setEnabled(true);
    for (const char* name : {"frmStack", "frmWatch", "frmMemory"})
        if (QWidget* window = Window(QString::fromLatin1(name)))
            window->setEnabled(true);
    // The run commands come back only with a disassembly window to host them.
    QWidget* disAsm = Window(QStringLiteral("frmDisAsm"));
    if (IsOpen(QStringLiteral("frmDisAsm")) && RunStopped) {
        Menu("mnuRunRun")->setEnabled(FreeRunAvailable());
        Button(RunButton)->setEnabled(FreeRunAvailable());
        for (const char* name : {"mnuRunPlay", "mnuRunAnimate"})
            Menu(QString::fromLatin1(name))->setEnabled(true);
        Button(PlayButton)->setEnabled(true);
        Button(AnimateButton)->setEnabled(true);
        if (disAsm) {
            disAsm->setEnabled(true);
            mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(disAsm->parentWidget()));
            disAsm->setFocus();
            CallWindow(disAsm, "mnuGoToPCAddress");
        }
    }
}

void frmMain::tmrRefresh_Timer()
{
    // Every window that turns this timer on has a mnuRefresh.
    if (RefreshCycle::AutoRefreshDue())
        CallWindow(ActiveWindow(), "mnuRefresh");
}

void frmMain::mnuDebugResetCounter_Click()
{
    ClockCount = 0;
    ClockCountUpdate();
}

void frmMain::mnuDebugGetResVec_Click()
{
    // The simulated chip starts over as at its RESET pin: the time-protected
    // writes of the program's first cycles take again.
    if (ChipSimulated())
        link_.ChipSim.Reset();
    link_.InResetVector(CpuRegisters.PC);
    CallWindow(LoadWindow(QStringLiteral("frmDisAsm")), "mnuGoToPCAddress");
}

void frmMain::mnuDebugCodeOn_Click()
{
    QAction* entry = Menu("mnuDebugCodeOn");
    entry->setChecked(!entry->isChecked());
    CallWindow(LoadWindow(QStringLiteral("frmDisAsm")), "PageRedraw");
}

void frmMain::mnuDebugIncludeSym_Click()
{
    QAction* entry = Menu("mnuDebugIncludeSym");
    entry->setChecked(!entry->isChecked());
    CallWindow(LoadWindow(QStringLiteral("frmDisAsm")), "PageRedraw");
}
