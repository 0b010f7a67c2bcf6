// Keeping the windows in step with the target: the refresh of the open views,
// the freeze and thaw of the debugger around a run, the auto-refresh timer,
// the clock panel and the Debug commands that only forward to frmDisAsm.
// "Open" is always the View entry's check mark (ToolWindows.h).
#include "core/ByteHistory.h"
#include "core/TargetMoves.h"
#include "core/TargetState.h"
#include "workspace/frmMain.h"

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
}  // namespace

void frmMain::ClockCountUpdate()
{
    SetPanelText(4, QStringLiteral("Clock= ") + QStringLiteral("%1").arg(ClockCount, 8, 10, QLatin1Char('0')));
}

void frmMain::Refresh()
{
    if (IsOpen(QStringLiteral("frmDisAsm"))) {
        QWidget* disAsm = Window(QStringLiteral("frmDisAsm"));
        CallWindow(disAsm, "mnuRefresh");
        CallWindow(disAsm, "mnuGoToPCAddress");
    }
    if (BoardConnected)
        RefreshRun();
}

void frmMain::RefreshRun()
{
    // A dead board stops the round after the window that found it: one message, not one a window.
    for (const char* name : {"frmRegCPU", "frmStack", "frmWatch"}) {
        if (IsOpen(QString::fromLatin1(name)))
            CallWindow(Window(QString::fromLatin1(name)), "mnuRefresh");
        if (!BoardConnected)
            return;
    }
    const auto open = [this](const char* name) { return IsOpen(QString::fromLatin1(name)); };
    if (std::any_of(std::begin(RegisterBlockWindows), std::end(RegisterBlockWindows), open)) {
        // One read serves all seven windows.
        ReadRegisterBlock();
        if (!BoardConnected)
            return;
        for (const char* name : RegisterBlockWindows)
            if (open(name))
                CallWindow(Window(QString::fromLatin1(name)), "Redraw");
    }
    // The PIA window reads its own block.
    if (open("frmRegPIA"))
        CallWindow(Window(QStringLiteral("frmRegPIA")), "mnuRefresh");
}

void frmMain::ReadRegisterBlock()
{
    if (TargetMode == SimulatorMode) {
        std::copy_n(TargetMemory.begin() + RegisterBlockAddress, RegisterBlockSize, RegisterBlock.begin());
        SeenBytes.Seen(RegisterBlockAddress, RegisterBlock);
        return;
    }
    std::int32_t address = RegisterBlockAddress;
    std::vector<std::uint8_t> block;
    InBytes(address, block, RegisterBlockSize);
    if (BoardConnected && block.size() == RegisterBlock.size()) {
        std::copy(block.begin(), block.end(), RegisterBlock.begin());
        SeenBytes.Seen(RegisterBlockAddress, RegisterBlock);
    }
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
        Menu("mnuRunRun")->setEnabled(TargetMode == BoardMode);
        Button(RunButton)->setEnabled(TargetMode == BoardMode);
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
    if (BoardRunning || AnimateActive || PlayActive)
        return;
    // Every window that turns this timer on has a mnuRefresh.
    CallWindow(ActiveWindow(), "mnuRefresh");
}

void frmMain::mnuDebugResetCounter_Click()
{
    ClockCount = 0;
    ClockCountUpdate();
}

void frmMain::mnuDebugGetResVec_Click()
{
    InResetVector(CpuRegisters.PC);
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
