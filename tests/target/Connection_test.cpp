#include <QtTest>

#include "core/TargetState.h"
#include "platform/SettingsStore.h"
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
    // ---- The monitor's reset report ----------------------------------------
    void resetReportEndingABlockIsRecognised()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        BoardRunning = true;
        BoardConnected = false;
        ClockCount = 77;
        // The monitor answers the read of the reset vector that follows its report.
        f.line.SetResponder([](const QByteArray&) { return QByteArray::fromHex("06E00020"); });
        f.line.Arrive("BBBBBB");
        QTRY_VERIFY(!BoardRunning);
        QVERIFY(BoardConnected);
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QCOMPARE(f.line.TakeWritten(), QByteArray::fromHex("52FFFE0201"));
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QCOMPARE(terminal.blocks, QList<QByteArray>{"BBB"});   // the first three are user output
        QCOMPARE(ClockCount, 0);
    }

    void resetReportReadsThePcFromTheResetVector()
    {
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain& form = f.Start();
        TargetMemory[0xFFFE] = 0xE0;
        TargetMemory[0xFFFF] = 0x10;
        CpuRegisters.PC = 0x1234;
        form.MSComm.SetRThreshold(6);
        f.line.Arrive("xyzBBB");
        QTRY_COMPARE(CpuRegisters.PC, 0xE010);
    }

    void blockEndingInTwoBsAndAnotherByteIsPlainData()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        BoardRunning = true;
        f.line.Arrive("abcBBx");
        QTRY_COMPARE(terminal.blocks.size(), 1);
        QCOMPARE(terminal.blocks[0], QByteArray("abcBBx"));
        QVERIFY(BoardRunning);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void reportCutAcrossTwoBlocksIsNotRecognised()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        BoardRunning = true;
        f.line.Arrive("hello!B");
        QTRY_COMPARE(terminal.blocks.size(), 1);
        f.line.Arrive("BxxxxX");
        QTRY_COMPARE(terminal.blocks.size(), 2);
        QVERIFY(BoardRunning);
        // Only a second block that itself ends in the three letters counts.
        f.line.Arrive("BBBBBB");
        QTRY_VERIFY(!BoardRunning);
        QCOMPARE(terminal.blocks.last(), QByteArray("BBB"));
    }

    void userOutputIsDroppedWhileTheTerminalIsClosed()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        int shown = 0;
        form.SerialTerminalDisplay = [&shown](const QByteArray&) { ++shown; };
        BoardRunning = true;
        f.line.Arrive("0123456789");
        QTRY_COMPARE(form.MSComm.InBufferCount(), 0);   // read all the same
        QCOMPARE(shown, 0);
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

    // ---- Stragglers of user output ------------------------------------------
    void quietTickPassesShortOutputToTheTerminal()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        form.tmrComm.stop();   // the test drives the ticks
        BoardRunning = true;
        f.line.Arrive("ok\r");
        form.tmrComm_Timer();   // notes 3 bytes
        QVERIFY(terminal.blocks.isEmpty());
        form.tmrComm_Timer();   // nothing new for a whole tick: pass them on
        QCOMPARE(terminal.blocks, QList<QByteArray>{"ok\r"});
        QCOMPARE(form.TerminalPassCount, std::int16_t(0));
    }

    void idleBoardLeavesShortInputAlone()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        TerminalTap terminal(form);
        form.tmrComm.stop();
        f.line.Arrive("abc");   // below the threshold, no run
        form.tmrComm_Timer();
        form.tmrComm_Timer();
        QTest::qWait(10);
        QVERIFY(terminal.blocks.isEmpty());
        QCOMPARE(form.MSComm.InBufferCount(), 3);
        QCOMPARE(form.TerminalPassCount, std::int16_t(0));
    }

    // ---- Panel 1 and FindBoard ------------------------------------------------
    void boardStatusShowsEachState()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        BoardRunning = true;
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Running ..."));
        BoardRunning = false;
        BoardConnected = false;
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Responding !"));
        BoardConnected = true;
        StatusSuffix = " (Reset)";
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        f.line.SetCTS(false);
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Connected !"));
    }

    void simulatorStatusNeverLooksAtCts()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.Menu("mnuRunRun")->setEnabled(true);
        TargetMode = SimulatorMode;
        const int reads = f.line.CtsReads();
        form.BoardStatus();
        QCOMPARE(f.line.CtsReads(), reads);
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(!form.Menu("mnuRunRun")->isEnabled());
    }

    void findBoardInSimulatorModeLeavesThePortAlone()
    {
        MainFormFixture f;
        f.line.FailOpen("busy");
        frmMain& form = f.Start();
        TargetMode = SimulatorMode;
        BoardConnected = false;
        form.FindBoard();
        QVERIFY(BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void findBoardReopensAndReportsAPortError()
    {
        MainFormFixture f;
        f.line.FailOpen("Permission denied");
        frmMain& form = f.Start();
        BoardConnected = true;
        form.SetPanelText(1, "x");
        form.FindBoard();
        QVERIFY(!BoardConnected);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Communication Port Error !"));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("Permission denied !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Communication Error"));
        QCOMPARE(f.boxes.boxes[0].style, MbOkOnly | MbExclamation);

        // Once the port is free, the next operation finds the board.
        f.line.FailOpen({});
        form.FindBoard();
        QVERIFY(BoardConnected);
        QCOMPARE(form.MSComm.RThreshold(), 0);   // no receive event during the exchange
        QCOMPARE(f.boxes.boxes.size(), 1);
    }

    void findBoardWithoutCtsWarnsEveryTime()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        f.line.SetCTS(false);
        form.FindBoard();
        form.FindBoard();
        QVERIFY(!BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[0].text, QString("M68HC11 Board Not Connected !"));
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Connected !"));
        QCOMPARE(form.MSComm.RThreshold(), 6);
    }
};

QTEST_MAIN(ConnectionTest)
#include "Connection_test.moc"
