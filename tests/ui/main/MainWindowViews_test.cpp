// The main window as the engine's views: the link's failures as message boxes
// in their own words, its state on panel 1, the terminal by its View entry, and
// the tool windows as the refresh round's views.
#include <QtTest>

#include "engine/state/TargetState.h"
#include "support/ui/FakeToolWindow.h"
#include "support/ui/MainFormFixture.h"

class MainWindowViewsTest : public QObject {
    Q_OBJECT
private slots:
    void linkFailuresAreToldInTheirOwnWords()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        const QString comm = "Orvane - Communication Error";
        using F = LinkFailure;
        const struct { LinkFailure failure; QString text, caption; } rows[] = {
            {F::NoResponse, "No Response from M68HC11 Board !", comm},
            {F::InvalidData, "Invalid Data from M68HC11 Board !", comm},
            {F::PortError, "Permission denied !", comm},
            {F::NotConnected, "M68HC11 Board Not Connected !", comm},
            {F::PortNotOpen, "Communication port is not open !", comm},
            {F::EraseFailed, "Erasing Flash failed!", "Orvane Integrated Development Tools"},
            {F::EraseInvalidData, "Invalid data from board !", comm},
            {F::SimulatorRun, "M68HC11 Simulator error !", "Procedure called: RunHC11"},
        };
        for (const auto& [failure, text, caption] : rows) {
            form.LinkFailed(failure, "Permission denied");
            const MsgBoxRecorder::Box box = f.boxes.boxes.takeLast();
            QCOMPARE(box.text, text);
            QCOMPARE(box.caption, caption);
            QCOMPARE(box.style, int(MbOkOnly | MbExclamation));
        }
        // The states that no start or run of the other tests shows.
        form.LinkStateChanged(LinkState::NotResponding);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Responding !"));
        form.LinkStateChanged(LinkState::Running);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Running ..."));
    }

    void theTerminalGetsOutputOnlyWhileItsEntryIsChecked()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QList<QByteArray> shown;
        form.SerialTerminalDisplay = [&shown](const QByteArray& bytes) { shown << bytes; };
        form.PassToTerminal("lost");
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.PassToTerminal("seen");
        QCOMPARE(shown, QList<QByteArray>{"seen"});
    }

    void theToolWindowsAreTheRefreshViews()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmDisAsm", "frmRegCPU", "frmWatch", "frmRegPIA", "frmMemory", "frmRegAD",
                                "frmRegPorts", "frmRegTimer"});
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        BoardConnected = true;
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
