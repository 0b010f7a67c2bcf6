// The board line's receive side: what is and is not the monitor's reset report
// (the report itself ends a run against hc11board in the board link test), user
// output for the serial terminal, and FindBoard's checks of the port.
#include <QtTest>

#include "engine/state/TargetState.h"
#include "support/MainFormFixture.h"

namespace {
// Captures what reaches the serial terminal while its window counts as open.
struct TerminalTap {
    QList<QByteArray> blocks;
    explicit TerminalTap(frmMain& form)
    {
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.SerialTerminalDisplay = [this](const QByteArray& bytes) { blocks << bytes; };
    }
};
}  // namespace

class ConnectionTest : public QObject {
    Q_OBJECT
private slots:
    void userOutputReachesTheTerminalButNoReport()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        form.tmrComm.stop();   // the test drives the quiet ticks
        // Short output waits below the threshold; a quiet tick passes it on only during a run.
        f.line.Arrive("ok\r");
        form.tmrComm_Timer();
        form.tmrComm_Timer();
        QTest::qWait(10);
        QVERIFY(terminal.blocks.isEmpty());
        QCOMPARE(form.MSComm.InBufferCount(), 3);
        BoardRunning = true;
        form.tmrComm_Timer();   // notes 3 bytes
        QVERIFY(terminal.blocks.isEmpty());
        form.tmrComm_Timer();   // nothing new for a whole tick: pass them on
        QCOMPARE(terminal.blocks, QList<QByteArray>{"ok\r"});
        QCOMPARE(form.TerminalPassCount, std::int16_t(0));
        // Blocks not ending in the three letters are plain data: two Bs and
        // another byte, a report cut across two blocks.
        for (const QByteArray block : {"abcBBx", "hello!B", "BxxxxX"}) {
            f.line.Arrive(block);
            QTRY_VERIFY(terminal.blocks.last() == block);
        }
        QVERIFY(BoardRunning);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void anyEventClearsTheClockCount()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        ClockCount = 500;
        form.ClockCountUpdate();
        f.line.SetCTS(false);
        QTRY_COMPARE(form.PanelText(1), QString("HC11 Board: Not Connected !"));
        QCOMPARE(ClockCount, 0);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000500"));   // rewritten only at the next update
    }

    void findBoardReportsAPortErrorOnlyInBoardMode()
    {
        MainFormFixture f;
        f.line.FailOpen("Permission denied");
        frmMain& form = f.Start();
        form.Menu("mnuRunRun")->setEnabled(true);
        TargetMode = SimulatorMode;   // the port and CTS are left alone
        BoardConnected = false;
        const int reads = f.line.CtsReads();
        form.BoardStatus();
        form.FindBoard();
        QCOMPARE(f.line.CtsReads(), reads);
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(!form.Menu("mnuRunRun")->isEnabled());
        QVERIFY(BoardConnected && f.boxes.boxes.isEmpty());

        TargetMode = BoardMode;
        form.FindBoard();
        QVERIFY(!BoardConnected);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Communication Port Error !"));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Permission denied !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Communication Error"));
        // Once the port is free, the next operation finds the board.
        f.line.FailOpen({});
        form.FindBoard();
        QVERIFY(BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), 1);
    }
};

QTEST_MAIN(ConnectionTest)
#include "Connection_test.moc"
