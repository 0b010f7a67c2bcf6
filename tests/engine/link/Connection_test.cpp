// The board line's receive side: what is and is not the monitor's reset report
// (the report itself ends a run against hc11board in the device windows' echo test), user
// output for the serial terminal, and FindBoard's checks of the port.

#include "engine/state/TargetState.h"
#include "support/DebuggerFixture.h"

class ConnectionTest : public QObject {
    Q_OBJECT
private slots:
    void userOutputReachesTheTerminalButNoReport()
    {
        DebuggerFixture f(false);
        // Short output waits below the threshold; a quiet tick passes it on only during a run.
        f.line.Arrive("ok\r");
        f.debugger.PassQuietOutput();
        f.debugger.PassQuietOutput();
        QTest::qWait(10);
        QVERIFY(f.view.terminal.isEmpty() && f.link.MSComm.InBufferCount() == 3);
        BoardRunning = true;
        f.debugger.PassQuietOutput();   // notes 3 bytes
        QVERIFY(f.view.terminal.isEmpty());
        f.debugger.PassQuietOutput();   // nothing new for a whole tick: pass them on
        QCOMPARE(tuple(f.view.terminal, f.debugger.TerminalPassCount), tuple("ok\r", 0));
        // Blocks not ending in the three letters are plain data: two Bs and another byte, a report cut in two.
        QByteArray passed = f.view.terminal;
        for (const QByteArray block : {"abcBBx", "hello!B", "BxxxxX"}) {
            f.line.Arrive(block);
            passed += block;
            QTRY_COMPARE(f.view.terminal, passed);
        }
        QVERIFY(BoardRunning && !*StatusSuffix && f.view.refreshRuns == 0);
    }

    void anyEventClearsTheClockCount()
    {
        DebuggerFixture f(false);
        f.link.BoardStatus();
        QCOMPARE(f.reports.state, LinkState::Ready);
        ClockCount = 500;
        f.line.SetCTS(false);
        QTRY_COMPARE(f.reports.state, LinkState::NotConnected);
        QCOMPARE(tuple(ClockCount, f.view.clockShown), tuple(0, 0));   // shown again only at the next update
    }

    void findBoardReportsAPortErrorOnlyInBoardMode()
    {
        DebuggerFixture f(false);
        f.line.FailOpen("Permission denied");
        f.link.OpenPort(1);   // as at start: the state says it, no failure is reported
        QCOMPARE(f.reports.state, LinkState::PortError);
        TargetMode = SimulatorMode;   // the port and CTS are left alone
        BoardConnected = false;
        const int reads = f.line.CtsReads();
        f.link.BoardStatus();
        f.link.FindBoard();
        QCOMPARE(tuple(f.line.CtsReads(), f.reports.state), tuple(reads, LinkState::Simulator));
        QVERIFY(BoardConnected && f.reports.failures.isEmpty());

        TargetMode = BoardMode;
        f.link.FindBoard();
        QCOMPARE(tuple(BoardConnected, f.reports.state), tuple(false, LinkState::PortError));
        QCOMPARE(f.reports.failures, (QList{std::pair(LinkFailure::PortError, QString("Permission denied"))}));
        // Once the port is free, the next operation finds the board.
        f.line.FailOpen({});
        f.link.FindBoard();
        QVERIFY(BoardConnected && f.reports.failures.size() == 1);
    }
};

QTEST_MAIN(ConnectionTest)
#include "Connection_test.moc"
