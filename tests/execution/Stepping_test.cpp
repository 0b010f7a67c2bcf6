// Step Into, Over and Out and the free run without the disassembly window:
// in simulator mode on TargetMemory, and on the board through a scripted
// monitor, which can stay silent, answer late or give the CPU away.
#include <QtTest>

#include "core/TargetState.h"
#include "execution/Breakpoints.h"
#include "platform/SettingsStore.h"
#include "platform/TickCount.h"
#include "support/DoEventsAction.h"
#include "support/MainFormFixture.h"
#include "support/ScriptedMonitor.h"
#include "target/MonitorFrames.h"

#include <initializer_list>

namespace {
template <typename Memory>
void Poke(Memory& memory, std::int32_t address, std::initializer_list<int> bytes)
{
    for (int b : bytes)
        memory[address++ & 0xFFFF] = static_cast<std::uint8_t>(b);
}

frmMain& StartSimulator(MainFormFixture& f)
{
    SaveSetting("Settings", "SimEnabled", "True");
    frmMain& form = f.Start();
    CpuRegisters.PC = 0x2000;
    return form;
}

frmMain& StartBoard(MainFormFixture& f)
{
    frmMain& form = f.Start();
    f.line.TakeWritten();
    CpuRegisters.PC = 0x2000;
    return form;
}

QByteArray Code(const QByteArray& stepFrame)
{
    return stepFrame.mid(10, 4);
}


// A clock that moves on by step ms at every reading: time-outs pass at once.
struct RacingClock {
    std::uint32_t now = 0;
    explicit RacingClock(std::uint32_t step)
    {
        SetTickCountSource([this, step] { return now += step; });
    }
    ~RacingClock() { SetTickCountSource({}); }
};
}  // namespace

class SteppingTest : public QObject {
    Q_OBJECT
private slots:
    // ---- Simulator ----------------------------------------------------------

    void branchesMoveOnlyThePc()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        Poke(TargetMemory, 0x2000, {0x20, 0xFE,          // BRA  *
                                    0x27, 0xFC,          // BEQ  $2000
                                    0x26, 0xFA});        // BNE  $2000
        CpuRegisters.A = 0x33;
        for (int i = 1; i <= 3; ++i) {
            form.mnuRunStepInto_Click();
            QCOMPARE(CpuRegisters.PC, 0x2000);
            QCOMPARE(ClockCount, 3 * i);
        }
        CpuRegisters.PC = 0x2002;
        CpuRegisters.CCR = 0x04;
        CpuRegisters.FlagZ = true;
        form.mnuRunStepInto_Click();   // BEQ taken backwards
        QCOMPARE(CpuRegisters.PC, 0x2000);
        CpuRegisters.PC = 0x2004;
        form.mnuRunStepInto_Click();   // BNE not taken: runs on the simulator and changes nothing
        QCOMPARE(CpuRegisters.PC, 0x2006);
        QCOMPARE(CpuRegisters.A, 0x33);
        QCOMPARE(CpuRegisters.CCR, 0x04);
    }

    void stepOverAndOutRunToATemporaryStop()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        Poke(TargetMemory, 0x2000, {0x8E, 0x01, 0xFF,    // LDS  #$01FF
                                    0xBD, 0x20, 0x10,    // JSR  $2010
                                    0x01});              // NOP
        Poke(TargetMemory, 0x2010, {0x4C, 0x4C, 0x4C,    // INCA x3
                                    0x39});              // RTS
        form.mnuRunStepInto_Click();
        AddBreakpoint(0x3000);   // a user's entry elsewhere stays
        form.mnuRunStepOver_Click();
        QCOMPARE(CpuRegisters.PC, 0x2006);
        QCOMPARE(CpuRegisters.A, 3);
        QCOMPARE(CpuRegisters.SP, 0x01FF);
        QCOMPARE(BreakpointCount, std::int16_t(1));
        QCOMPARE(BreakpointTable[0], 0x3000);
        // Every instruction of the routine is counted: LDS 3, JSR 6, INCA 2 x 3, RTS 5.
        QCOMPARE(ClockCount, 20);
        QVERIFY(RunStopped && !PlayActive);

        // A user's breakpoint inside the routine stops the step there; Step Out then leaves it.
        CpuRegisters.PC = 0x2003;
        AddBreakpoint(0x2011);
        form.mnuRunStepOver_Click();
        QCOMPARE(CpuRegisters.PC, 0x2011);
        QCOMPARE(BreakpointCount, std::int16_t(2));
        form.mnuRunStepOut_Click();
        QCOMPARE(CpuRegisters.PC, 0x2006);
        QCOMPARE(CpuRegisters.A, 6);
        QCOMPARE(CpuRegisters.SP, 0x01FF);

        // With a full table Step Over and Step Out do nothing at all.
        while (BreakpointCount < MaxBreakpoints)
            AddBreakpoint(0x4000 + BreakpointCount);
        CpuRegisters.PC = 0x2003;
        const std::int32_t clock = ClockCount;
        form.mnuRunStepOver_Click();
        form.mnuRunStepOut_Click();
        QCOMPARE(CpuRegisters.PC, 0x2003);
        QCOMPARE(ClockCount, clock);
        QCOMPARE(BreakpointCount, std::int16_t(MaxBreakpoints));
    }

    // ---- Board ----------------------------------------------------------------

    void theBoardGetsOnlyStraightLineCode()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        Poke(board.memory, 0x2000, {0x20, 0xFE,          // BRA  *
                                    0x26, 0xFC,          // BNE  $2000, not taken
                                    0x8D, 0x10});        // BSR  $2016
        ProgramBase = 0x2000;
        form.InProgram();
        f.line.TakeWritten();
        form.mnuRunStepInto_Click();
        form.mnuRunStepInto_Click();
        QCOMPARE(CpuRegisters.PC, 0x2000);
        QCOMPARE(ClockCount, 6);
        QCOMPARE(f.line.TakeWritten(), QByteArray());   // nothing reached the board

        CpuRegisters.PC = 0x2002;
        CpuRegisters.FlagZ = true;
        CpuRegisters.SP = 0x0100;
        board.nextStepRegisters = {{0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x01, 0x00, 0x09}};
        form.mnuRunStepInto_Click();
        QCOMPARE(board.steps.size(), 1);
        QCOMPARE(Code(board.steps[0]), QByteArray("\x26\xFC\x01\x01", 4));
        QCOMPARE(CpuRegisters.PC, 0x2004);
        QCOMPARE(CpuRegisters.A, 0x11);
        QCOMPARE(CpuRegisters.IX, 0x3344);
        QCOMPARE(CpuRegisters.CCR, 0x09);
        QVERIFY(CpuRegisters.FlagC && CpuRegisters.FlagN && !CpuRegisters.FlagZ);

        form.mnuRunStepInto_Click();   // BSR: only writes of the stack and the save area
        QCOMPARE(board.steps.size(), 1);
        QCOMPARE(CpuRegisters.PC, 0x2016);
        QCOMPARE(CpuRegisters.SP, 0x00FE);
        QCOMPARE(board.memory[0x00FF], 0x20);
        QCOMPARE(board.memory[0x0100], 0x06);
        QCOMPARE(board.memory[6] * 256 + board.memory[7], 0x00FE);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void stepOverOnTheBoardCallsTheComputedAddressFrozen()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        Poke(board.memory, 0x2000, {0xAD, 0x10});   // JSR $10,X
        CpuRegisters.IX = 0x3000;
        bool frozenInTheWait = false;
        // The last event pass is inside the wait for the reply.
        DoEventsAction look([&] {
            frozenInTheWait = form.Menu("mnuRunPause")->isEnabled() && !form.Menu("mnuViewRegCPU")->isEnabled();
        });
        f.line.SetReplyDelay(5);
        form.mnuRunStepOver_Click();
        QVERIFY(frozenInTheWait);
        QCOMPARE(Code(board.steps.last()), QByteArray("\xBD\x30\x10\x01", 4));
        QCOMPARE(CpuRegisters.PC, 0x2002);
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        QVERIFY(form.Menu("mnuViewRegCPU")->isEnabled());
        QCOMPARE(ClockCount, 0);   // what ran on the board is not counted
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void pauseLeavesTheWaitAndTheBoardRunsUntilItsReset()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        Poke(board.memory, 0x2000, {0xBD, 0x30, 0x00});   // JSR $3000, which never returns
        Poke(board.memory, 0xFFFE, {0xE0, 0x00});
        board.answerSteps = false;
        {
            DoEventsAction pause([&] {
                if (form.Menu("mnuRunPause")->isEnabled())
                    form.Menu("mnuRunPause")->trigger();
            });
            form.mnuRunStepOver_Click();
        }
        QVERIFY(f.boxes.boxes.isEmpty());
        QVERIFY(BoardRunning);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Running ..."));
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        QVERIFY(!form.Menu("mnuViewRegCPU")->isEnabled());   // still frozen

        f.line.Arrive("\r\nMonitor BBB");
        QTRY_VERIFY(!BoardRunning);
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QVERIFY(form.Menu("mnuViewRegCPU")->isEnabled());
    }

    void aPlainStepThatTimesOutHasMovedThePc()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        Poke(board.memory, 0x2000, {0x86, 0x42});   // LDAA #$42
        board.answerSteps = false;
        CpuRegisters.A = 7;
        RacingClock clock(50);
        form.mnuRunStepInto_Click();
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Orvane - Communication Error"));
        QCOMPARE(CpuRegisters.PC, 0x2002);
        QCOMPARE(CpuRegisters.A, 7);
        QVERIFY(!BoardConnected);
        QCOMPARE(form.MSComm.RThreshold(), 6);
    }

    // ---- Free run -------------------------------------------------------------

    void runTakesTheAckAloneAndPassesTheRestToTheTerminal()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        QByteArray shown;
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.SerialTerminalDisplay = [&shown](const QByteArray& bytes) { shown += bytes; };
        StatusSuffix = " (Reset)";
        CpuRegisters.PC = 0x2345;
        board.executeAnswer = QByteArray("\x06Hi", 3);
        form.mnuRunRun_Click();
        QCOMPARE(board.executes.size(), 1);
        QCOMPARE(board.executes[0].mid(10, 3), QByteArray("\x7E\x23\x45", 3));
        QVERIFY(BoardRunning);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Running ..."));
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        QVERIFY(!form.Menu("mnuRunPlay")->isEnabled());
        QCOMPARE(form.MSComm.RThreshold(), 6);
        form.tmrComm_Timer();
        form.tmrComm_Timer();
        QCOMPARE(shown, QByteArray("Hi"));
        QCOMPARE(QString(StatusSuffix), QString());
    }

    void runThatIsNotAcknowledgedReportsWhy()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = StartBoard(f);
        board.executeAnswer = QByteArray("\x15", 1);
        form.RunHC11();
        board.executeAnswer.clear();
        form.RunHC11();
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[0].text, QString("Invalid Data from M68HC11 Board !"));
        QCOMPARE(f.boxes.boxes[1].text, QString("No Response from M68HC11 Board !"));
        QVERIFY(!BoardRunning && !BoardConnected);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Responding !"));

        // CTS low: FindBoard's message, and no frame goes out.
        f.line.SetCTS(false);
        f.line.TakeWritten();
        form.RunHC11();
        QCOMPARE(f.boxes.boxes.last().text, QString("M68HC11 Board Not Connected !"));
        QCOMPARE(f.line.TakeWritten(), QByteArray());
    }

    void runInSimulatorModeIsAnError()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        form.RunHC11();
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("M68HC11 Simulator error !"));
        QCOMPARE(f.boxes.boxes[0].caption, QString("Procedure called: RunHC11"));
        QVERIFY(!BoardRunning);
    }
};

QTEST_MAIN(SteppingTest)
#include "Stepping_test.moc"
