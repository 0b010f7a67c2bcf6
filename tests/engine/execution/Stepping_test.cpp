// Stepping, the free run and Play in the simulator and on a scripted
// monitor: the debugger on its own link, without a main window.

#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "platform/TickCount.h"
#include "support/CpuHarness.h"
#include "support/DebuggerFixture.h"
#include "support/DoEventsAction.h"
#include "support/ScriptedMonitor.h"

#include <optional>
#include <vector>

class SteppingTest : public QObject {
    Q_OBJECT
private slots:
    void stepOverAndOutStopAtATemporaryEntryOrAUsersBreakpoint()
    {
        DebuggerFixture f(true);
        Debugger& debug = f.debugger;
        CpuRegisters.PC = 0x2000;
        Poke(TargetMemory, 0x2000, {0x8E, 0x01, 0xFF, 0xBD, 0x20, 0x10, 0x01});   // LDS #$01FF; JSR $2010; NOP
        Poke(TargetMemory, 0x2010, {0x4C, 0x4C, 0x4C, 0x39});                     // INCA x3; RTS
        debug.StepInto();
        AddBreakpoint(0x2011);
        debug.StepOver();   // stops at the user's breakpoint inside the routine
        QCOMPARE(CpuRegisters.PC, 0x2011);
        debug.StepOut();
        QCOMPARE(CpuRegisters.PC, 0x2006);
        QCOMPARE(CpuRegisters.A, 3);
        QCOMPARE(CpuRegisters.SP, 0x01FF);
        // The temporary entries are gone, the user's stays; every cycle is
        // counted: LDS 3, JSR 6, INCA 2 x 3, RTS 5.
        QCOMPARE(BreakpointCount, std::int16_t(1));
        QCOMPARE(BreakpointTable[0], 0x2011);
        QCOMPARE(ClockCount, std::int64_t{20});
        QVERIFY(RunStopped && !PlayActive);

        // With a full table Step Over and Step Out do nothing at all.
        while (BreakpointCount < MaxBreakpoints)
            AddBreakpoint(0x4000 + BreakpointCount);
        CpuRegisters.PC = 0x2003;
        debug.StepOver();
        debug.StepOut();
        QCOMPARE(CpuRegisters.PC, 0x2003);
        QCOMPARE(ClockCount, std::int64_t{20});
        QCOMPARE(BreakpointCount, std::int16_t(MaxBreakpoints));
    }

    // Run to Cursor stops at the cursor row and leaves the table as it found
    // it: a breakpoint of the user's on the row stays (and stops the run), a
    // Pause elsewhere leaves no entry behind, a full table without the row
    // runs nothing.
    void runToCursorLeavesTheTableAsItFoundIt()
    {
        std::vector<std::int32_t> full;
        for (int i = 0; i < MaxBreakpoints; ++i)
            full.push_back(0x4000 + i);
        std::vector<std::int32_t> fullWithRow = full;
        fullWithRow.back() = 0x2002;
        const struct {
            const char* what;
            std::optional<std::int32_t> cursor;
            std::vector<std::int32_t> table;
            bool pause;
            bool runs;
            std::int32_t stop;   // PC afterwards; 0: wherever the Pause caught it
        } cases[] = {
            {"plain", 0x2002, {}, false, true, 0x2002},
            {"the user's breakpoint on the row", 0x2002, {0x2002, 0x3000}, false, true, 0x2002},
            {"no cursor row: Play", std::nullopt, {0x2001}, false, true, 0x2001},
            {"full table with the row", 0x2002, fullWithRow, false, true, 0x2002},
            {"full table without the row", 0x2002, full, false, false, 0x2000},
            {"paused before the row", 0x3000, {0x4000}, true, true, 0},
        };
        for (const auto& c : cases) {
            DebuggerFixture f(true);
            Poke(TargetMemory, 0x2000, {0x4C, 0x4C, 0x20, 0xFC});   // INCA; INCA; BRA back
            CpuRegisters.PC = 0x2000;
            for (const std::int32_t address : c.table)
                AddBreakpoint(address);
            DoEventsAction pause([&] {
                if (c.pause && PlayActive && CpuRegisters.A >= 3)
                    f.debugger.Pause();
            });
            QVERIFY2(f.debugger.RunToCursor(c.cursor) == c.runs, c.what);
            if (c.stop)
                QVERIFY2(CpuRegisters.PC == c.stop, c.what);
            QVERIFY2((ClockCount > 0) == c.runs, c.what);
            const std::vector<std::int32_t> after(BreakpointTable.begin(), BreakpointTable.begin() + BreakpointCount);
            QVERIFY2(after == c.table, c.what);
            QVERIFY2(RunStopped && !PlayActive && !f.view.frozen, c.what);
        }
    }

    void theBoardGetsACallToTheComputedAddress()
    {
        DebuggerFixture f(false);
        ScriptedMonitor board(f.line);
        Poke(board.memory, 0x2002, {0xAD, 0x10});   // JSR $10,X
        CpuRegisters.PC = 0x2002;
        CpuRegisters.IX = 0x3000;
        bool frozenInTheWait = false;
        DoEventsAction look([&] {   // the last event pass is inside the wait for the reply
            frozenInTheWait = f.view.pauseOn && f.view.frozen;
        });
        f.line.SetReplyDelay(5);
        f.debugger.StepOver();
        QVERIFY(frozenInTheWait);
        QCOMPARE(board.steps.last().mid(10, 4), QByteArray("\xBD\x30\x10\x01", 4));
        QCOMPARE(CpuRegisters.PC, 0x2004);
        QVERIFY(!f.view.frozen);
        QCOMPARE(ClockCount, std::int64_t{0});   // what ran on the board is not counted
    }

    void pauseLeavesTheWaitAndTheBoardRunsUntilItsReset()
    {
        DebuggerFixture f(false);
        ScriptedMonitor board(f.line);
        CpuRegisters.PC = 0x2000;
        Poke(board.memory, 0x2000, {0xBD, 0x30, 0x00});   // JSR $3000, which never returns
        Poke(board.memory, 0xFFFE, {0xE0, 0x00});
        board.answerSteps = false;
        {
            DoEventsAction pause([&] {
                if (f.view.pauseOn)
                    f.debugger.Pause();
            });
            f.debugger.StepOver();
        }
        QVERIFY(f.reports.failures.isEmpty());
        QVERIFY(BoardRunning);
        QCOMPARE(f.reports.state, LinkState::Running);
        QVERIFY(!f.view.pauseOn && f.view.frozen);

        // The reset report itself is the device windows' echo test's; here the display thaws and refreshes once.
        f.line.Arrive("\r\nMonitor BBB");
        QTRY_VERIFY(!BoardRunning);
        QVERIFY(!f.view.frozen);
        QCOMPARE(f.view.refreshRuns, 1);
    }

    void aRunWantsOneAckAndPassesTheRestToTheTerminal()
    {
        DebuggerFixture f(false);
        ScriptedMonitor board(f.line);
        board.executeAnswer = QByteArray("\x15", 1);
        f.debugger.RunFree();
        QCOMPARE(f.reports.failures.value(0).first, LinkFailure::InvalidData);
        QVERIFY(!BoardRunning && !BoardConnected);

        StatusSuffix = " (Reset)";
        CpuRegisters.PC = 0x2345;
        board.executeAnswer = QByteArray("\x06Hi", 3);
        f.debugger.RunFree();
        QCOMPARE(board.executes.last().mid(10, 3), QByteArray("\x7E\x23\x45", 3));
        QVERIFY(BoardRunning);
        QCOMPARE(f.reports.state, LinkState::Running);
        QVERIFY(!f.view.pauseOn && f.view.frozen);
        QCOMPARE(f.link.MSComm.RThreshold(), TargetLink::ReceiveThreshold);
        // What came behind the ACK waits for the terminal's quiet tick (the connection test's).
        QCOMPARE(f.link.MSComm.Input(), QByteArray("Hi"));
        QCOMPARE(QString(StatusSuffix), QString());
    }

    void playStepsOffItsBreakpointFrozenRedrawingTheCpuWindowAlone()
    {
        DebuggerFixture f(true);
        CpuRegisters.PC = 0x2000;
        Poke(TargetMemory, 0x2000, {0x4C, 0x20, 0xFD});   // INCA; BRA back to it: five cycles a round
        f.view.cpuWindowShown = true;
        AddBreakpoint(0x2000);
        bool frozen = false;
        {
            DoEventsAction look([&] {
                if (PlayActive)
                    frozen = !f.view.timersOn && f.view.pauseOn && f.view.frozen;
            });
            f.debugger.Play();
        }
        QVERIFY(frozen);
        QCOMPARE(CpuRegisters.PC, 0x2000);
        QCOMPARE(CpuRegisters.A, 1);
        QCOMPARE(ClockCount, std::int64_t{5});
        QVERIFY(f.view.clockShown > 0);   // the panel is up to date when the run ends
        QCOMPARE(f.view.refreshes, 0);
        QCOMPARE(f.view.followSteps, 2);
        QVERIFY(RunStopped && !PlayActive && !f.view.pauseOn && !f.view.frozen);
        QVERIFY(f.view.timersOn);   // back as before the run
    }

    // A board that stops answering ends Play with one message, PC past the
    // instruction it was given and the registers as they were. Once it
    // answers again, the next command of any kind steps on from there.
    void aBoardThatStopsAnsweringEndsPlayAndTheNextCommandStepsOn()
    {
        const std::pair<const char*, void (Debugger::*)()> commands[] = {{"Step Into", &Debugger::StepInto},
            {"Step Over", &Debugger::StepOver}, {"Play", &Debugger::Play}, {"Animate", &Debugger::Animate}};
        for (const auto& [name, command] : commands) {
            DebuggerFixture f(false);
            ScriptedMonitor board(f.line);
            CpuRegisters.PC = 0x2000;
            CpuRegisters.A = 7;
            Poke(board.memory, 0x2000, {0x4C, 0x4C, 0x20, 0xFC});   // INCA; INCA; BRA back
            AddBreakpoint(0x2002);   // where Play and Animate stop
            board.answerSteps = false;
            std::uint32_t now = 0;
            const auto clock = SetTickCountSource([&now] { return now += 50; });   // time-outs pass at once
            f.debugger.Play();
            SetTickCountSource(clock);
            QCOMPARE(f.reports.failures.size(), 1);
            QCOMPARE(f.reports.failures[0].first, LinkFailure::NoResponse);
            QCOMPARE(board.steps.size(), 1);
            QCOMPARE(CpuRegisters.PC, 0x2001);
            QCOMPARE(CpuRegisters.A, 7);
            QVERIFY(!BoardConnected);
            QCOMPARE(f.link.MSComm.RThreshold(), TargetLink::ReceiveThreshold);
            QVERIFY(RunStopped && !PlayActive && !f.view.pauseOn && !f.view.frozen);
            QCOMPARE(f.reports.state, LinkState::NotResponding);

            board.answerSteps = true;
            (f.debugger.*command)();
            QVERIFY2(board.steps.size() == 2, name);
            QVERIFY2(CpuRegisters.PC == 0x2002, name);
            QVERIFY2(f.reports.failures.size() == 1 && BoardConnected, name);
            QVERIFY2(f.reports.state == LinkState::Ready, name);   // the panel no longer says Not Responding
        }
    }

    void aResetReportDuringPlayGoesOnFromTheResetVector()
    {
        DebuggerFixture f(false);
        ScriptedMonitor board(f.line);
        CpuRegisters.PC = 0x2000;
        Poke(board.memory, 0x2000, {0x20, 0xFE});   // BRA *: the host's work alone
        Poke(board.memory, 0xE000, {0x20, 0xFE});
        Poke(board.memory, 0xFFFE, {0xE0, 0x00});
        AddBreakpoint(0xE000);
        bool reported = false, pauseOnAfterReport = false;
        {
            DoEventsAction reset([&] {
                if (!reported && ClockCount > 30) {
                    reported = true;
                    f.line.Arrive("\r\nHC11 Monitor BBB");
                }
                if (CpuRegisters.PC == 0xE000)
                    pauseOnAfterReport = f.view.pauseOn;
            });
            f.debugger.Play();
        }
        QVERIFY(f.reports.failures.isEmpty());
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QVERIFY(pauseOnAfterReport);   // the report thawed the display in the middle of the run
        QCOMPARE(f.reports.state, LinkState::Ready);
        QCOMPARE(QString(StatusSuffix), QString(" (Reset)"));
        QVERIFY(!f.view.pauseOn);
        QVERIFY(board.steps.isEmpty());
    }
};

QTEST_MAIN(SteppingTest)
#include "Stepping_test.moc"
