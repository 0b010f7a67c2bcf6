#include "engine/state/TargetState.h"
#include "platform/widgets/PopupMenu.h"
#include "engine/source/EditorRecords.h"
#include "support/ui/FakeToolWindow.h"
#include "support/ui/MainFormFixture.h"

#include <QMenu>

namespace {
const QStringList RunEntries = {"mnuRunRun", "mnuRunPlay", "mnuRunAnimate", "mnuRunStepInto",
                                "mnuRunStepOver", "mnuRunStepOut", "mnuRunRunTo"};
const QStringList DebugEntries = {"mnuDebugCodeOn", "mnuDebugIncludeSym", "mnuDebugToggleBreakpoint",
                                  "mnuDebugSetNewPC", "mnuDebugGetResVec", "mnuDebugGoToPCAddress",
                                  "mnuDebugGoToAddress"};
// What a run takes away and its end gives back (on the board).
const QStringList RunFrozen = {"mnuDebugAddWatch", "mnuFileDownload", "mnuRunRun", "mnuRunPlay", "mnuRunAnimate",
                               "mnuViewMemory", "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewStack", "mnuViewWatch",
                               "mnuViewDisassembler"};

// The entries and toolbar positions whose enabled state is not `on`.
QString Wrong(frmMain& form, bool on, const QStringList& names, const QList<int>& buttons = {})
{
    QStringList wrong;
    for (const QString& name : names)
        if (form.Menu(name)->isEnabled() != on)
            wrong << name;
    for (int button : buttons)
        if (form.Button(button)->isEnabled() != on)
            wrong << QString::number(button);
    return wrong.join(' ');
}
#define EXPECT_ON(...) QCOMPARE(Wrong(form, true, __VA_ARGS__), QString())
#define EXPECT_OFF(...) QCOMPARE(Wrong(form, false, __VA_ARGS__), QString())

// A target ready for stepping, with the disassembly window open and its rules applied.
QWidget* OpenDisAsmOnReadyTarget(frmMain& form)
{
    BoardConnected = RunStopped = true;
    QWidget* disAsm = form.LoadWindow("frmDisAsm");
    form.DisAsmMenus();
    return disAsm;
}
}  // namespace

class EnableRulesTest : public QObject {
    Q_OBJECT
private slots:
    void init() { EditorActive = false, EditorCount = 0; }

    void disAsmMenusFollowTheTargetAndTheWindow()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        OpenDisAsmOnReadyTarget(form);
        EXPECT_ON(RunEntries + DebugEntries, {23, 24, 25, 28, 29, 30, 31, 33});
        EXPECT_OFF({"mnuDebugClearAllBreakpoints"});
        // A run in progress: only stepping waits.
        RunStopped = false;
        form.DisAsmMenus();
        EXPECT_OFF(RunEntries);
        EXPECT_ON({"mnuDebugGoToPCAddress"});
        // A board gone: everything off, Pause too.
        RunStopped = true;
        form.FreezeDisplay();
        BoardConnected = false;
        form.DisAsmMenus();
        EXPECT_OFF(RunEntries + DebugEntries + QStringList{"mnuRunPause"}, {26, 33});

        // An editor active: Debug entries off, Run entries stay; unloading takes them.
        BoardConnected = true;
        BreakpointCount = 1;
        form.DisAsmMenus();
        form.DisAsmDeactivated();
        EXPECT_OFF(DebugEntries + QStringList{"mnuDebugClearAllBreakpoints"}, {33});
        EXPECT_ON(RunEntries);
        form.DisAsmUnloaded();
        EXPECT_OFF(RunEntries + QStringList{"mnuRunPause"}, {23, 24, 25, 26, 28, 29, 30, 31});
        BreakpointCount = 0;

        // The flat simulator never turns Run on, not even at the end of a run.
        TargetMode = SimulatorMode;
        OpenDisAsmOnReadyTarget(form);
        EXPECT_OFF({"mnuRunRun"}, {23});
        EXPECT_ON({"mnuRunPlay"});
        form.FreezeDisplay();
        form.ThawDisplay();
        EXPECT_OFF({"mnuRunRun"}, {23});
        EXPECT_ON({"mnuRunAnimate", "mnuViewIOunit"});
    }

    void freezeAndThawAroundARun()
    {
        MainFormFixture f;
        const QStringList names = {"frmDisAsm", "frmRegCPU", "frmStack", "frmWatch", "frmMemory", "frmRegTimer"};
        PluggedWindows plugged(names);
        frmMain& form = f.Start();
        QWidget* disAsm = OpenDisAsmOnReadyTarget(form);
        QList<QWidget*> windows;
        for (const QString& name : names)
            windows << form.LoadWindow(name);
        FakeToolWindow::Log().clear();

        form.FreezeDisplay();
        EXPECT_ON({"mnuRunPause"}, {26});
        EXPECT_OFF(RunFrozen + QStringList{"mnuViewRegPIA", "mnuViewIOunit"}, {21, 23, 24, 25, 34});
        for (QWidget* window : windows)
            QVERIFY2(!window->isEnabled() && window->isVisibleTo(&form), qPrintable(window->objectName()));
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.ClearMarks", "frmStack.ClearMarks"}));

        // The run ends on the board.
        FakeToolWindow::Log().clear();
        form.ThawDisplay();
        EXPECT_OFF({"mnuRunPause", "mnuViewIOunit"}, {26});   // the input-output unit is the simulator's
        EXPECT_ON(RunFrozen);
        for (QWidget* window : windows)
            QVERIFY2(window->isEnabled(), qPrintable(window->objectName()));
        QCOMPARE(form.ActiveWindow(), disAsm);
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuGoToPCAddress"}));

        // A reset report in the middle of Play thaws while the loop still runs.
        RunStopped = false;
        form.FreezeDisplay();
        form.ThawDisplay();
        EXPECT_ON({"mnuRunPause"}, {26});
        EXPECT_OFF({"mnuRunPlay", "mnuRunRun"});
    }

    // The Edit entries follow the editor's state as it changes, as the buttons
    // do: a disabled entry's shortcut does nothing.
    void editEntriesAndButtonsFollowTheEditor()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        const QStringList edit = {"mnuEditUndo", "mnuEditRedo", "mnuEditCut", "mnuEditCopy", "mnuEditPaste",
                                  "mnuEditDelete", "mnuEditSelectAll", "mnuEditFind", "mnuEditFindNext",
                                  "mnuEditReplace", "mnuEditGoToLine"};
        const QStringList file = {"mnuFileClose", "mnuFileSaveAs", "mnuFilePrint", "mnuFileSave"};
        EXPECT_OFF(edit + file, {4, 6, 9, 10, 11, 13, 14, 16, 17});

        EditorActive = true;
        frmMain::EditorCommandState state;
        state.undo = state.clipboardText = true;
        form.EditorActivated(state);
        EXPECT_ON({"mnuEditUndo", "mnuEditPaste", "mnuEditSelectAll", "mnuEditFind", "mnuEditReplace",
                   "mnuEditGoToLine", "mnuFileClose", "mnuFileSaveAs", "mnuFilePrint"},
                  {6, 11, 13, 16});
        EXPECT_OFF({"mnuEditRedo", "mnuEditCut", "mnuEditCopy", "mnuEditDelete", "mnuEditFindNext", "mnuFileSave"},
                   {4, 9, 10, 14, 17});

        // A selection, an emptied clipboard, an undone step, a first search, a change.
        form.SetClipboardButtons(true, false);
        form.SetUndoButtons(false, true);
        form.SetFindNextButton(true);
        form.SetSaveCommands(true);
        EXPECT_ON({"mnuEditCut", "mnuEditCopy", "mnuEditDelete", "mnuEditRedo", "mnuEditFindNext", "mnuFileSave"},
                  {4, 9, 10, 14, 17});
        EXPECT_OFF({"mnuEditPaste", "mnuEditUndo"}, {11, 13});

        EditorActive = false;
        form.EditorDeactivated();
        EXPECT_OFF(edit + file, {4, 6, 9, 10, 11, 13, 14, 16, 17});
        form.SetFindNextButton(true);   // a first search with no editor active
        EXPECT_OFF({"mnuEditFindNext"}, {17});
    }

    void targetModeAndWindowMenuRules()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmStack"});
        frmMain& form = f.Start();
        const QStringList registerBlock = {"mnuViewRegOther", "mnuViewRegPIA", "mnuViewRegPorts", "mnuViewRegPulseAcc",
                                           "mnuViewRegSPI", "mnuViewRegSCI", "mnuViewRegTimer", "mnuViewRegAD"};
        // After Options: the simulator has no peripherals.
        TargetMode = SimulatorMode;
        form.TargetModeMenus();
        EXPECT_OFF(registerBlock);
        EXPECT_ON({"mnuViewIOunit", "mnuViewRegBlock", "mnuViewRegCPU"});
        TargetMode = BoardMode;
        form.TargetModeMenus();
        EXPECT_ON(registerBlock);
        EXPECT_OFF({"mnuViewIOunit"});
        // A thaw without the disassembly window keeps the run commands off.
        form.FreezeDisplay();
        form.ThawDisplay();
        EXPECT_OFF({"mnuRunPlay", "mnuRunRun"}, {24});
        EXPECT_ON({"mnuViewDisassembler"});

        QMenu* menu = form.MenuOf("mnuWindow");
        emit menu->aboutToShow();
        QVERIFY(!form.Menu("mnuWindowCascade")->isEnabled() && form.Menu("mnuWindowArrangeDebugger")->isEnabled());
        EditorCount = 1;
        emit menu->aboutToShow();
        EXPECT_ON({"mnuWindowCascade", "mnuWindowTileHorizontal", "mnuWindowTileVertical"});
        // The open windows are listed once, however often the menu opens.
        form.LoadWindow("frmStack")->setWindowTitle("Stack");
        const qsizetype own = menu->actions().size();
        emit menu->aboutToShow();
        emit menu->aboutToShow();
        QVERIFY(menu->actions().size() == (own + 2) && menu->actions().last()->text() == QString("&1 Stack"));
    }

    void debugPopupSwapsItsEntriesWhileUp()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QStringList shown;
        const PopupMenuHandler previous = SetPopupMenuHandler([&](QMenu* menu) {
            for (QAction* entry : menu->actions())
                if (entry->isVisible())
                    shown << (entry->isSeparator() ? QString("-") : entry->objectName());
        });
        form.ShowDebugPopup(QPoint(10, 10));
        SetPopupMenuHandler(previous);
        QVERIFY(shown.contains("mnuDebugRefresh") && !shown.contains("mnuDebugAddWatch"));
        // The menu bar's Debug menu afterwards.
        QVERIFY(form.Menu("mnuDebugAddWatch")->isVisible() && !form.Menu("mnuDebugRefresh")->isVisible());
    }
};

QTEST_MAIN(EnableRulesTest)
#include "EnableRules_test.moc"
