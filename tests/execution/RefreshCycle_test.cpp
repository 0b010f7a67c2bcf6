// The refresh of the open windows, the auto-refresh tick, the Debug menu's
// forwarding, and the tool windows' View entries as the list of open windows.
#include <QtTest>

#include "core/TargetState.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
const QStringList RegisterBlockWindows = {"frmRegAD",    "frmRegOther", "frmRegPA",   "frmRegPorts",
                                          "frmRegSCI",   "frmRegSPI",   "frmRegTimer"};
}

class RefreshCycleTest : public QObject {
    Q_OBJECT
private slots:
    void refreshRunVisitsTheOpenWindowsInOrder()
    {
        MainFormFixture f;
        PluggedWindows plugged(QStringList{"frmDisAsm", "frmRegCPU", "frmStack", "frmWatch", "frmRegPIA",
                                           "frmMemory"} + RegisterBlockWindows);
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        BoardConnected = true;
        // Opened out of order: the refresh has its own.
        for (const char* window : {"frmRegTimer", "frmRegPIA", "frmWatch", "frmRegAD", "frmMemory", "frmRegCPU",
                                      "frmDisAsm", "frmRegPorts"})
            QVERIFY(form.LoadWindow(window));
        TargetMemory[0x1000] = 0x5A;
        TargetMemory[0x103F] = 0xA5;
        FakeToolWindow::Log().clear();

        form.Refresh();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuRefresh", "frmDisAsm.mnuGoToPCAddress",
                                                     "frmRegCPU.mnuRefresh", "frmWatch.mnuRefresh",
                                                     "frmRegAD.Redraw", "frmRegPorts.Redraw",
                                                     "frmRegTimer.Redraw", "frmRegPIA.mnuRefresh"}));
        QCOMPARE(RegisterBlock[0], 0x5A);
        QCOMPARE(RegisterBlock[63], 0xA5);
    }

    void onlyThePiaWindowReadsNoRegisterBlock()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmRegPIA"});
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        BoardConnected = true;
        form.LoadWindow("frmRegPIA");
        TargetMemory[0x1004] = 0x77;
        FakeToolWindow::Log().clear();
        form.RefreshRun();
        QCOMPARE(RegisterBlock[4], 0);
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegPIA.mnuRefresh"}));
    }

    void aDeadBoardEndsTheRoundAtTheWindowThatFoundIt()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmRegCPU", "frmStack", "frmRegPIA", "frmDisAsm"});
        frmMain& form = f.Start();
        BoardConnected = true;
        for (const char* window : {"frmRegCPU", "frmStack", "frmRegPIA", "frmDisAsm"})
            form.LoadWindow(window);
        FakeToolWindow::OnCall() = [](const QString& call) {
            if (call == "frmRegCPU.mnuRefresh")
                BoardConnected = false;
        };
        FakeToolWindow::Log().clear();
        form.RefreshRun();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegCPU.mnuRefresh"}));

        // Refresh with the board already gone redraws the code page only.
        FakeToolWindow::Log().clear();
        form.Refresh();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuRefresh", "frmDisAsm.mnuGoToPCAddress"}));
    }

    void theTickRefreshesTheActiveWindowOnlyWhileNothingRuns()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmRegTimer", "frmWatch"});
        frmMain& form = f.Start();
        form.LoadWindow("frmWatch");
        QWidget* timer = form.LoadWindow("frmRegTimer");
        form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(timer->parentWidget()));
        FakeToolWindow::Log().clear();
        form.tmrRefresh_Timer();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegTimer.mnuRefresh"}));
        for (bool* running : {&BoardRunning, &PlayActive, &AnimateActive}) {
            *running = true;
            form.tmrRefresh_Timer();
            *running = false;
        }
        QCOMPARE(FakeToolWindow::Log().size(), 1);
        QVERIFY(!form.tmrRefresh.isActive());
        QCOMPARE(form.tmrRefresh.interval(), 100);
    }

    void debugCommandsForwardToTheDisassemblyWindow()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm"});
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        TargetMemory[0xFFFE] = 0xE0;
        TargetMemory[0xFFFF] = 0x10;
        // The window is created by the first command that reaches it.
        form.Menu("mnuDebugRefresh")->trigger();
        QVERIFY(form.IsOpen("frmDisAsm"));
        for (const char* name : {"mnuDebugSetNewPC", "mnuDebugGoToPCAddress", "mnuDebugGoToAddress",
                                 "mnuDebugToggleBreakpoint", "mnuDebugClearAllBreakpoints", "mnuDebugGetResVec",
                                 "mnuDebugCodeOn"}) {
            form.Menu(name)->setEnabled(true);
            form.Menu(name)->trigger();
        }
        QCOMPARE(FakeToolWindow::Log(),
                 QStringList({"frmDisAsm.mnuRefresh", "frmDisAsm.mnuSetNewPC", "frmDisAsm.mnuGoToPCAddress",
                              "frmDisAsm.mnuGoToAddress", "frmDisAsm.mnuToggleBreakpoint",
                              "frmDisAsm.mnuClearAllBreakpoints", "frmDisAsm.mnuGoToPCAddress",
                              "frmDisAsm.PageRedraw"}));
        QCOMPARE(CpuRegisters.PC, 0xE010);
        QVERIFY2(!form.Menu("mnuDebugCodeOn")->isChecked(), "flipped from its default");
    }

    void popupEntriesReachTheirWindows()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmStack", "frmMemory", "frmRegSCI"});
        frmMain& form = f.Start();
        form.LoadWindow("frmStack");
        form.LoadWindow("frmMemory");
        QWidget* sci = form.LoadWindow("frmRegSCI");
        form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(sci->parentWidget()));
        FakeToolWindow::Log().clear();
        for (const char* name : {"mnuPopupStackGoToSPAddress", "mnuPopupMemoryAddress", "mnuPopupViewHex",
                                 "mnuPopupViewAutoRefresh"})
            form.Menu(name)->trigger();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmStack.mnuGoToSPAddress", "frmMemory.mnuMemoryAddress",
                                                     "frmRegSCI.mnuViewHex", "frmRegSCI.mnuAutoRefresh"}));
    }

    void theViewEntryIsTheListOfOpenWindows()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmStack"});
        frmMain& form = f.Start();
        QAction* entry = form.Menu("mnuViewStack");
        entry->trigger();
        QVERIFY(entry->isChecked());
        QWidget* stack = form.Window("frmStack");
        QVERIFY(stack);
        QCOMPARE(stack->objectName(), QString("frmStack"));

        entry->trigger();
        QVERIFY(!entry->isChecked());
        QVERIFY(!form.Window("frmStack"));

        // Closed by its own close box: the check goes with it.
        entry->trigger();
        form.Window("frmStack")->parentWidget()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!entry->isChecked());
        QVERIFY(!form.IsOpen("frmStack"));
    }

    void aWindowThatHasNotLandedCountsAsClosed()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        BoardConnected = true;
        form.Menu("mnuViewRegCPU")->trigger();
        QVERIFY(!form.Menu("mnuViewRegCPU")->isChecked());
        QVERIFY(!form.IsOpen("frmRegCPU"));
        form.Menu("mnuDebugRefresh")->trigger();
        QVERIFY(!form.IsOpen("frmDisAsm"));
        form.Refresh();   // nothing open, nothing called, no crash
        form.FreezeDisplay();
        form.ThawDisplay();
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(RefreshCycleTest)
#include "RefreshCycle_test.moc"
