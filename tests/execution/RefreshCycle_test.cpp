#include <QtTest>

#include "core/TargetState.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"

class RefreshCycleTest : public QObject {
    Q_OBJECT
private slots:
    void refreshVisitsTheOpenWindowsInOrderUntilTheBoardIsLost()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm", "frmRegCPU", "frmWatch", "frmRegPIA", "frmMemory", "frmRegAD",
                                "frmRegPorts", "frmRegTimer"});
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        BoardConnected = true;
        form.LoadWindow("frmRegPIA");
        TargetMemory[0x1000] = 0x5A;
        TargetMemory[0x103F] = 0xA5;
        FakeToolWindow::Log().clear();
        form.RefreshRun();   // the PIA window alone reads no register block
        QCOMPARE(RegisterBlock[0], 0);
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegPIA.mnuRefresh"}));

        // Opened out of order: the refresh has its own.
        for (const char* window : {"frmRegTimer", "frmWatch", "frmRegAD", "frmMemory", "frmRegCPU", "frmDisAsm",
                                   "frmRegPorts"})
            QVERIFY(form.LoadWindow(window));
        FakeToolWindow::Log().clear();
        form.Refresh();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuRefresh", "frmDisAsm.mnuGoToPCAddress",
                                                     "frmRegCPU.mnuRefresh", "frmWatch.mnuRefresh",
                                                     "frmRegAD.Redraw", "frmRegPorts.Redraw",
                                                     "frmRegTimer.Redraw", "frmRegPIA.mnuRefresh"}));
        QCOMPARE(RegisterBlock[0], 0x5A);
        QCOMPARE(RegisterBlock[63], 0xA5);

        // The window that finds the board gone ends the round.
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

    void theViewEntryIsTheListOfOpenWindows()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmStack"});
        frmMain& form = f.Start();
        QAction* entry = form.Menu("mnuViewStack");
        entry->trigger();
        QVERIFY(entry->isChecked() && form.Window("frmStack"));
        entry->trigger();
        QVERIFY(!entry->isChecked() && !form.Window("frmStack"));

        // A real window that fails its first read never lands: its entry stays off.
        BoardConnected = true;
        form.Menu("mnuViewRegCPU")->trigger();
        QVERIFY(!form.Menu("mnuViewRegCPU")->isChecked());
        QVERIFY(!form.IsOpen("frmRegCPU"));
    }
};

QTEST_MAIN(RefreshCycleTest)
#include "RefreshCycle_test.moc"
