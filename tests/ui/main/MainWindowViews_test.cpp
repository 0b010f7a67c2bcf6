// The main window as the engine's views: the terminal by its View entry, the tool windows as the refresh's.

#include "engine/state/TargetState.h"
#include "support/ui/FakeToolWindow.h"
#include "support/ui/MainFormFixture.h"

class MainWindowViewsTest : public QObject {
    Q_OBJECT
private slots:
    void theTerminalAndTheToolWindowsAreTheViews()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm", "frmRegCPU", "frmWatch", "frmRegPIA", "frmMemory", "frmRegAD",
                                "frmRegPorts", "frmRegTimer"});
        frmMain& form = f.Start();
        // The terminal gets output only while its entry is checked.
        QList<QByteArray> shown;
        form.SerialTerminalDisplay = [&shown](const QByteArray& bytes) { shown << bytes; };
        form.PassToTerminal("lost");
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.PassToTerminal("seen");
        QCOMPARE(shown, QList<QByteArray>{"seen"});

        TargetMode = SimulatorMode, BoardConnected = true;
        // Opened out of order: the refresh has its own; the memory window has none.
        for (const char* window : {"frmRegTimer", "frmWatch", "frmRegAD", "frmMemory", "frmRegCPU", "frmDisAsm",
                                   "frmRegPorts", "frmRegPIA"})
            QVERIFY(form.LoadWindow(window));
        FakeToolWindow::Log().clear();
        form.Refresh();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuRefresh", "frmDisAsm.mnuGoToPCAddress",
                                                     "frmRegCPU.mnuRefresh", "frmWatch.mnuRefresh",
                                                     "frmRegAD.Redraw", "frmRegPorts.Redraw",
                                                     "frmRegTimer.Redraw", "frmRegPIA.mnuRefresh"}));
    }
};

QTEST_MAIN(MainWindowViewsTest)
#include "MainWindowViews_test.moc"
