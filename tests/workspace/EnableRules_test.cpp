// The enable rules as the state changes that drive them: runs, the
// disassembly window coming and going, the target mode, editors, watches,
// breakpoints and the menus that set their entries as they open.
#include <QtTest>

#include "core/TargetState.h"
#include "platform/PopupMenu.h"
#include "source/EditorRecords.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

namespace {
const char* const RunEntries[] = {"mnuRunRun", "mnuRunPlay", "mnuRunAnimate", "mnuRunStepInto",
                                  "mnuRunStepOver", "mnuRunStepOut", "mnuRunRunTo"};
const char* const DebugEntries[] = {"mnuDebugCodeOn", "mnuDebugIncludeSym", "mnuDebugToggleBreakpoint",
                                    "mnuDebugSetNewPC", "mnuDebugGetResVec", "mnuDebugGoToPCAddress",
                                    "mnuDebugGoToAddress"};
const char* const EditEntries[] = {"mnuEditUndo", "mnuEditRedo", "mnuEditCut", "mnuEditCopy", "mnuEditPaste",
                                   "mnuEditDelete", "mnuEditSelectAll", "mnuEditFind", "mnuEditFindNext",
                                   "mnuEditReplace", "mnuEditGoToLine"};
const char* const RegisterBlockEntries[] = {"mnuViewRegOther", "mnuViewRegPIA", "mnuViewRegPorts",
                                            "mnuViewRegPulseAcc", "mnuViewRegSPI", "mnuViewRegSCI",
                                            "mnuViewRegTimer", "mnuViewRegAD"};

bool On(frmMain& form, const char* name)
{
    return form.Menu(QString::fromLatin1(name))->isEnabled();
}

// A target ready for stepping, with the disassembly window open and its rules applied.
QWidget* OpenDisAsmOnReadyTarget(frmMain& form)
{
    BoardConnected = true;
    RunStopped = true;
    QWidget* disAsm = form.LoadWindow("frmDisAsm");
    form.DisAsmMenus();
    return disAsm;
}
}  // namespace

class EnableRulesTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        EditorActive = false;
        EditorCount = 0;
    }

    void disAsmMenusFollowTheTarget()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        OpenDisAsmOnReadyTarget(form);
        for (const char* name : RunEntries)
            QVERIFY2(On(form, name), name);
        for (const char* name : DebugEntries)
            QVERIFY2(On(form, name), name);
        for (int button : {23, 24, 25, 28, 29, 30, 31, 33})
            QVERIFY(form.Button(button)->isEnabled());
        QVERIFY(!On(form, "mnuDebugClearAllBreakpoints"));

        // A run in progress: only stepping waits; the debug entries stay.
        RunStopped = false;
        form.DisAsmMenus();
        for (const char* name : RunEntries)
            QVERIFY2(!On(form, name), name);
        QVERIFY(On(form, "mnuDebugGoToPCAddress"));

        // A board gone: everything off, Pause too.
        RunStopped = true;
        form.FreezeDisplay();
        QVERIFY(On(form, "mnuRunPause"));
        BoardConnected = false;
        form.DisAsmMenus();
        for (const char* name : RunEntries)
            QVERIFY2(!On(form, name), name);
        for (const char* name : DebugEntries)
            QVERIFY2(!On(form, name), name);
        QVERIFY(!On(form, "mnuRunPause"));
        QVERIFY(!form.Button(26)->isEnabled());
        QVERIFY(!form.Button(33)->isEnabled());
    }

    void deactivationTakesTheDebugEntriesAndUnloadTheRunEntries()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        OpenDisAsmOnReadyTarget(form);
        BreakpointCount = 1;
        form.DisAsmMenus();
        QVERIFY(On(form, "mnuDebugClearAllBreakpoints"));

        // An editor becomes active: Debug entries off, Run entries stay.
        form.DisAsmDeactivated();
        for (const char* name : DebugEntries)
            QVERIFY2(!On(form, name), name);
        QVERIFY(!On(form, "mnuDebugClearAllBreakpoints"));
        QVERIFY(!form.Button(33)->isEnabled());
        for (const char* name : RunEntries)
            QVERIFY2(On(form, name), name);

        form.DisAsmUnloaded();
        for (const char* name : RunEntries)
            QVERIFY2(!On(form, name), name);
        QVERIFY(!On(form, "mnuRunPause"));
        for (int button : {23, 24, 25, 26, 28, 29, 30, 31})
            QVERIFY(!form.Button(button)->isEnabled());
    }

    void freezeAndThawAroundARun()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm", "frmRegCPU", "frmStack", "frmWatch", "frmMemory", "frmRegTimer"});
        frmMain& form = f.Start();
        QWidget* disAsm = OpenDisAsmOnReadyTarget(form);
        QWidget* cpu = form.LoadWindow("frmRegCPU");
        QWidget* stack = form.LoadWindow("frmStack");
        QWidget* watch = form.LoadWindow("frmWatch");
        QWidget* memory = form.LoadWindow("frmMemory");
        QWidget* timer = form.LoadWindow("frmRegTimer");
        FakeToolWindow::Log().clear();

        form.FreezeDisplay();
        QVERIFY(On(form, "mnuRunPause"));
        QVERIFY(form.Button(26)->isEnabled());
        for (const char* name : {"mnuDebugAddWatch", "mnuFileDownload", "mnuRunRun", "mnuRunPlay", "mnuRunAnimate",
                                 "mnuViewMemory", "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewRegPIA",
                                 "mnuViewStack", "mnuViewWatch", "mnuViewDisassembler", "mnuViewIOunit"})
            QVERIFY2(!On(form, name), name);
        for (int button : {21, 23, 24, 25, 34})
            QVERIFY(!form.Button(button)->isEnabled());
        for (QWidget* window : {disAsm, cpu, stack, watch, memory, timer}) {
            QVERIFY2(!window->isEnabled(), qPrintable(window->objectName()));
            QVERIFY(window->isVisibleTo(&form));
        }
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.ClearMarks", "frmStack.ClearMarks"}));

        // The run ends on the board.
        FakeToolWindow::Log().clear();
        RunStopped = true;
        form.ThawDisplay();
        QVERIFY(!On(form, "mnuRunPause"));
        QVERIFY(!form.Button(26)->isEnabled());
        for (const char* name : {"mnuDebugAddWatch", "mnuFileDownload", "mnuRunRun", "mnuRunPlay", "mnuRunAnimate",
                                 "mnuViewMemory", "mnuViewRegCPU", "mnuViewRegBlock", "mnuViewStack",
                                 "mnuViewWatch", "mnuViewDisassembler"})
            QVERIFY2(On(form, name), name);
        QVERIFY2(!On(form, "mnuViewIOunit"), "the input-output unit exists only in the simulator");
        for (QWidget* window : {disAsm, cpu, stack, watch, memory, timer})
            QVERIFY2(window->isEnabled(), qPrintable(window->objectName()));
        QCOMPARE(form.ActiveWindow(), disAsm);
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuGoToPCAddress"}));
    }

    void thawWithoutTheDisassemblyWindowKeepsTheRunCommandsOff()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        RunStopped = true;
        form.FreezeDisplay();
        form.ThawDisplay();
        QVERIFY(!On(form, "mnuRunPlay"));
        QVERIFY(!On(form, "mnuRunRun"));
        QVERIFY(!form.Button(24)->isEnabled());
        QVERIFY(On(form, "mnuViewDisassembler"));
    }

    void thawInTheMiddleOfPlayLeavesPauseOn()
    {
        // A reset report during Play: the loop still runs.
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        OpenDisAsmOnReadyTarget(form);
        RunStopped = false;
        form.FreezeDisplay();
        form.ThawDisplay();
        QVERIFY(On(form, "mnuRunPause"));
        QVERIFY(form.Button(26)->isEnabled());
        QVERIFY(!On(form, "mnuRunPlay"));
        QVERIFY(!On(form, "mnuRunRun"));
    }

    void theSimulatorNeverTurnsRunOn()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(!On(form, "mnuRunRun"));
        OpenDisAsmOnReadyTarget(form);
        QVERIFY(!On(form, "mnuRunRun"));
        QVERIFY(!form.Button(23)->isEnabled());
        QVERIFY(On(form, "mnuRunPlay"));
        form.FreezeDisplay();
        form.ThawDisplay();
        QVERIFY(!On(form, "mnuRunRun"));
        QVERIFY(!form.Button(23)->isEnabled());
        QVERIFY(On(form, "mnuRunAnimate"));
        QVERIFY(On(form, "mnuViewIOunit"));
    }

    void targetModeAfterOptions()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        form.TargetModeMenus();
        for (const char* name : RegisterBlockEntries)
            QVERIFY2(!On(form, name), name);
        QVERIFY(On(form, "mnuViewIOunit"));
        QVERIFY2(On(form, "mnuViewRegBlock"), "the submenu itself stays");
        QVERIFY(On(form, "mnuViewRegCPU"));

        TargetMode = BoardMode;
        form.TargetModeMenus();
        for (const char* name : RegisterBlockEntries)
            QVERIFY2(On(form, name), name);
        QVERIFY(!On(form, "mnuViewIOunit"));
    }

    void editMenuOpensWithEverythingOffWithoutAnEditor()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        for (const char* name : EditEntries)
            form.Menu(name)->setEnabled(true);   // stale from an editor that has gone
        emit form.MenuOf("mnuEdit")->aboutToShow();
        for (const char* name : EditEntries)
            QVERIFY2(!On(form, name), name);
    }

    void editMenuOpensFromTheActiveEditor()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        auto* editor = new QWidget;
        editor->setProperty("Undo", true);
        editor->setProperty("Redo", false);
        editor->setProperty("SelLength", 0);
        form.mdiArea()->setActiveSubWindow(form.mdiArea()->addSubWindow(editor));
        EditorActive = true;
        QApplication::clipboard()->setText("LDAA #1");

        emit form.MenuOf("mnuEdit")->aboutToShow();
        QVERIFY(On(form, "mnuEditUndo"));
        QVERIFY(!On(form, "mnuEditRedo"));
        for (const char* name : {"mnuEditCut", "mnuEditCopy", "mnuEditDelete"})
            QVERIFY2(!On(form, name), name);
        QVERIFY(On(form, "mnuEditPaste"));
        for (const char* name : {"mnuEditSelectAll", "mnuEditFind", "mnuEditReplace", "mnuEditGoToLine"})
            QVERIFY2(On(form, name), name);
        QVERIFY2(!On(form, "mnuEditFindNext"), "nothing searched yet");

        // A selection, a search in the find list, and an empty clipboard.
        editor->setProperty("SelLength", 3);
        auto* findList = new QComboBox(&form);
        findList->setObjectName("cbWhat");
        findList->addItem("LOOP");
        QApplication::clipboard()->clear();
        emit form.MenuOf("mnuEdit")->aboutToShow();
        for (const char* name : {"mnuEditCut", "mnuEditCopy", "mnuEditDelete", "mnuEditFindNext"})
            QVERIFY2(On(form, name), name);
        QVERIFY(!On(form, "mnuEditPaste"));
    }

    void editorActivationAndDeactivation()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        EditorActive = true;
        frmMain::EditorCommandState state;
        state.textChanged = true;
        state.selection = true;
        state.undo = true;
        state.findHistory = true;
        form.EditorActivated(state);
        for (const char* name : {"mnuFileClose", "mnuFileSaveAs", "mnuFilePrint", "mnuFileSave"})
            QVERIFY2(On(form, name), name);
        for (int button : {4, 6, 9, 10, 13, 16, 17})
            QVERIFY(form.Button(button)->isEnabled());
        QVERIFY(!form.Button(11)->isEnabled());
        QVERIFY(!form.Button(14)->isEnabled());

        // Saved: the record of unsaved changes goes, on the menu and the button alike.
        form.SetSaveCommands(false);
        QVERIFY(!On(form, "mnuFileSave"));
        QVERIFY(!form.Button(4)->isEnabled());

        EditorActive = false;
        form.EditorDeactivated();
        for (const char* name : {"mnuFileClose", "mnuFileSaveAs", "mnuFilePrint", "mnuFileSave"})
            QVERIFY2(!On(form, name), name);
        for (int button : {4, 6, 9, 10, 11, 13, 14, 16, 17})
            QVERIFY(!form.Button(button)->isEnabled());
        // A first search with no editor active leaves Find Next off.
        form.SetFindNextButton(true);
        QVERIFY(!form.Button(17)->isEnabled());
    }

    void watchBreakpointAndWindowMenuRules()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.SetEditWatchCommand(true);
        QVERIFY(On(form, "mnuDebugEditWatch"));
        form.SetEditWatchCommand(false);
        QVERIFY(!On(form, "mnuDebugEditWatch"));

        BreakpointCount = 1;
        form.BreakpointCountChanged();
        QVERIFY(On(form, "mnuDebugClearAllBreakpoints"));
        BreakpointCount = 0;
        form.BreakpointCountChanged();
        QVERIFY(!On(form, "mnuDebugClearAllBreakpoints"));

        emit form.MenuOf("mnuWindow")->aboutToShow();
        QVERIFY(!On(form, "mnuWindowCascade"));
        QVERIFY(On(form, "mnuWindowArrangeDebugger"));
        EditorCount = 1;
        emit form.MenuOf("mnuWindow")->aboutToShow();
        for (const char* name : {"mnuWindowCascade", "mnuWindowTileHorizontal", "mnuWindowTileVertical"})
            QVERIFY2(On(form, name), name);
    }

    void windowMenuListsTheOpenWindows()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmStack"});
        frmMain& form = f.Start();
        form.LoadWindow("frmStack")->setWindowTitle("Stack");
        QMenu* menu = form.MenuOf("mnuWindow");
        const qsizetype own = menu->actions().size();
        emit menu->aboutToShow();
        emit menu->aboutToShow();   // opened twice: listed once
        QCOMPARE(menu->actions().size(), own + 2);
        QCOMPARE(menu->actions().last()->text(), QString("&1 Stack"));
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

        QCOMPARE(shown.first(), QString("mnuDebugCodeOn"));
        QVERIFY(!shown.contains("mnuDebugAddWatch"));
        QVERIFY(!shown.contains("mnuDebugEditWatch"));
        QCOMPARE(shown.mid(shown.size() - 3), QStringList({"-", "mnuDebugResetCounter", "mnuDebugRefresh"}));

        // The menu bar's Debug menu afterwards: watches back, no Refresh Window.
        for (const char* name : {"mnuDebugAddWatch", "mnuDebugEditWatch", "mnuDebugBar1"})
            QVERIFY2(form.Menu(name)->isVisible(), name);
        for (const char* name : {"mnuDebugBar6", "mnuDebugRefresh"})
            QVERIFY2(!form.Menu(name)->isVisible(), name);
        QVERIFY2(!form.Menu("mnuDebugEditWatch")->isEnabled(), "hiding and showing kept its state");
    }
};

QTEST_MAIN(EnableRulesTest)
#include "EnableRules_test.moc"
