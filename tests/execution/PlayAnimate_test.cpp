// The Play and Animate loops without the disassembly window: breakpoints and
// the first step, Pause, what each loop redraws, the timers around a run, a
// board that stops answering, and a reset report in the middle of Play.
#include <QtTest>

#include "core/TargetState.h"
#include "execution/Breakpoints.h"
#include "platform/SettingsStore.h"
#include "platform/TickCount.h"
#include "support/DoEventsAction.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"
#include "support/ScriptedMonitor.h"

namespace {
// INCA; BRA back to it (five cycles a round) at $2000, where PC stands.
frmMain& StartOnTheLoop(MainFormFixture& f, std::array<std::uint8_t, 65536>& memory, bool simulator)
{
    if (simulator)
        SaveSetting("Settings", "SimEnabled", "True");
    frmMain& form = f.Start();
    memory[0x2000] = 0x4C;
    memory[0x2001] = 0x20;
    memory[0x2002] = 0xFD;
    CpuRegisters.PC = 0x2000;
    return form;
}

int Count(const QString& call)
{
    return static_cast<int>(FakeToolWindow::Log().count(call));
}
}  // namespace

class PlayAnimateTest : public QObject {
    Q_OBJECT
private slots:
    void animateRedrawsEverythingAndPlayStepsOffItsBreakpointFrozen()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmRegCPU", "frmStack"});
        frmMain& form = StartOnTheLoop(f, TargetMemory, true);
        form.LoadWindow("frmRegCPU");
        form.LoadWindow("frmStack");
        // The wait of each step passes on a racing clock; Pause in the third event pass.
        std::uint32_t now = 0;
        const auto clock = SetTickCountSource([&now] { return now += 20; });
        int passes = 0;
        {
            DoEventsAction pause([&] {
                if (++passes == 3)
                    form.mnuRunPause_Click();
            });
            FakeToolWindow::Log().clear();
            form.mnuRunAnimate_Click();
        }
        SetTickCountSource(clock);
        // Pause takes effect at the end of the step that is waiting: three steps.
        QCOMPARE(ClockCount, 2 + 3 + 2);
        QCOMPARE(Count("frmStack.mnuRefresh"), 3);
        QCOMPARE(Count("frmRegCPU.mnuRefresh"), 3);
        QVERIFY(!AnimateActive && RunStopped);

        // Play from the breakpoint PC stands on: one round, the CPU window alone redrawn.
        CpuRegisters.PC = 0x2000;
        AddBreakpoint(0x2000);
        form.tmrRefresh.start();
        FakeToolWindow::Log().clear();
        bool frozen = false;
        {
            DoEventsAction look([&] {
                if (PlayActive)
                    frozen = !form.tmrRefresh.isActive() && !form.tmrComm.isActive() &&
                             form.Menu("mnuRunPause")->isEnabled() && !form.Menu("mnuRunPlay")->isEnabled();
            });
            form.mnuRunPlay_Click();
        }
        QVERIFY(frozen);
        QCOMPARE(CpuRegisters.PC, 0x2000);
        QCOMPARE(CpuRegisters.A, 3);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000012"));
        QCOMPARE(Count("frmStack.mnuRefresh"), 0);
        QCOMPARE(Count("frmRegCPU.mnuRefresh"), 2);
        QVERIFY(RunStopped && !PlayActive && !form.Menu("mnuRunPause")->isEnabled());
        // The timers come back as they were before the run.
        QVERIFY(form.tmrRefresh.isActive() && form.tmrComm.isActive());
    }

    void aBoardThatStopsAnsweringEndsPlayWithOneMessage()
    {
        MainFormFixture f;
        ScriptedMonitor board(f);
        frmMain& form = StartOnTheLoop(f, board.memory, false);
        board.answerSteps = false;
        CpuRegisters.A = 7;
        std::uint32_t now = 0;
        const auto clock = SetTickCountSource([&now] { return now += 50; });   // time-outs pass at once
        form.mnuRunPlay_Click();
        SetTickCountSource(clock);
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        QCOMPARE(board.steps.size(), 1);
        // The step has moved PC past the INCA; the registers stay as they were.
        QCOMPARE(CpuRegisters.PC, 0x2001);
        QCOMPARE(CpuRegisters.A, 7);
        QVERIFY(!BoardConnected);
        QCOMPARE(form.MSComm.RThreshold(), 6);
        QVERIFY(RunStopped && !PlayActive);
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        QVERIFY(!form.Menu("mnuRunPlay")->isEnabled());   // off without the disassembly window
    }

    void aResetReportDuringPlayGoesOnFromTheResetVector()
    {
        MainFormFixture f;
        ScriptedMonitor board(f);
        frmMain& form = f.Start();
        for (std::int32_t at : {0x2000, 0xE000}) {   // BRA *: the host's work alone
            board.memory[at] = 0x20;
            board.memory[at + 1] = 0xFE;
        }
        board.memory[0xFFFE] = 0xE0;
        CpuRegisters.PC = 0x2000;
        AddBreakpoint(0xE000);
        bool reported = false, pauseOnAfterReport = false;
        {
            DoEventsAction reset([&] {
                if (!reported && ClockCount > 30) {
                    reported = true;
                    f.line.Arrive("\r\nHC11 Monitor BBB");
                }
                if (CpuRegisters.PC == 0xE000)
                    pauseOnAfterReport = form.Menu("mnuRunPause")->isEnabled();
            });
            form.mnuRunPlay_Click();
        }
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QVERIFY(pauseOnAfterReport);   // the report thawed the display in the middle of the run
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        QVERIFY(board.steps.isEmpty());
    }
};

QTEST_MAIN(PlayAnimateTest)
#include "PlayAnimate_test.moc"
