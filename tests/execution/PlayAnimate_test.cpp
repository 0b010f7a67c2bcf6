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

#include <initializer_list>

namespace {
template <typename Memory>
void Poke(Memory& memory, std::int32_t address, std::initializer_list<int> bytes)
{
    for (int b : bytes)
        memory[address++ & 0xFFFF] = static_cast<std::uint8_t>(b);
}

// INCA; BRA back to it: five cycles a round.
constexpr std::initializer_list<int> CountingLoop = {0x4C, 0x20, 0xFD};

frmMain& StartSimulator(MainFormFixture& f)
{
    SaveSetting("Settings", "SimEnabled", "True");
    frmMain& form = f.Start();
    Poke(TargetMemory, 0x2000, CountingLoop);
    CpuRegisters.PC = 0x2000;
    return form;
}


int Count(const QStringList& log, const QString& call)
{
    return static_cast<int>(log.count(call));
}
}  // namespace

class PlayAnimateTest : public QObject {
    Q_OBJECT
private slots:
    void playStepsOffTheBreakpointItStandsOnAndStopsWhenBack()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        form.tmrRefresh.start();
        AddBreakpoint(0x2000);
        form.mnuRunPlay_Click();
        QCOMPARE(CpuRegisters.PC, 0x2000);
        QCOMPARE(CpuRegisters.A, 1);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000005"));
        QVERIFY(RunStopped && !PlayActive && !AnimateActive);
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        // The timers come back as they were before the run.
        QVERIFY(form.tmrRefresh.isActive());
        QVERIFY(form.tmrComm.isActive());
        QCOMPARE(BreakpointCount, std::int16_t(1));
    }

    void playRunsUntilPauseWithTheDisplayFrozen()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        bool frozen = false;
        QTimer::singleShot(30, &form, [&] {
            frozen = PlayActive && !form.tmrRefresh.isActive() && !form.tmrComm.isActive() &&
                     form.Menu("mnuRunPause")->isEnabled() && !form.Menu("mnuRunPlay")->isEnabled();
            form.Menu("mnuRunPause")->trigger();
        });
        form.mnuRunPlay_Click();
        QVERIFY(frozen);
        QVERIFY(RunStopped && !PlayActive);
        QVERIFY(CpuRegisters.PC == 0x2000 || CpuRegisters.PC == 0x2001);
        QVERIFY(ClockCount > 100);
        // The panel shows the count the run ended with.
        QCOMPARE(form.PanelText(4), QString("Clock= %1").arg(ClockCount, 8, 10, QChar('0')));
    }

    void animateRedrawsEverythingAndPlayOnlyTheCpuWindow()
    {
        MainFormFixture f;
        PluggedWindows plugged({"frmRegCPU", "frmStack"});
        frmMain& form = StartSimulator(f);
        form.LoadWindow("frmRegCPU");
        form.LoadWindow("frmStack");

        // The wait of each step passes on a clock that races; Pause in the third event pass.
        std::uint32_t now = 0;
        SetTickCountSource([&now] { return now += 20; });
        int passes = 0;
        {
            DoEventsAction pause([&] {
                if (++passes == 3)
                    form.mnuRunPause_Click();
            });
            FakeToolWindow::Log().clear();
            form.mnuRunAnimate_Click();
        }
        SetTickCountSource({});
        // Pause takes effect at the end of the step that is waiting: three steps.
        QCOMPARE(ClockCount, 2 + 3 + 2);
        QCOMPARE(CpuRegisters.A, 2);
        QCOMPARE(Count(FakeToolWindow::Log(), "frmStack.mnuRefresh"), 3);
        QCOMPARE(Count(FakeToolWindow::Log(), "frmRegCPU.mnuRefresh"), 3);
        QVERIFY(!AnimateActive && RunStopped);
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());

        AddBreakpoint(0x2000);
        FakeToolWindow::Log().clear();
        form.mnuRunPlay_Click();
        QCOMPARE(Count(FakeToolWindow::Log(), "frmStack.mnuRefresh"), 0);
        QCOMPARE(Count(FakeToolWindow::Log(), "frmRegCPU.mnuRefresh"), 1);   // one step: BRA back
    }

    void aBoardThatStopsAnsweringEndsPlayWithOneMessage()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = f.Start();
        Poke(board.memory, 0x2000, CountingLoop);
        CpuRegisters.PC = 0x2000;
        board.answerSteps = false;
        std::uint32_t now = 0;
        SetTickCountSource([&now] { return now += 50; });
        form.mnuRunPlay_Click();
        SetTickCountSource({});
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        QCOMPARE(board.steps.size(), 1);
        QVERIFY(RunStopped && !PlayActive);
        QVERIFY(!form.Menu("mnuRunPause")->isEnabled());
        // Without the disassembly window the run commands stay off.
        QVERIFY(!form.Menu("mnuRunPlay")->isEnabled());
    }

    void aResetReportDuringPlayGoesOnFromTheResetVector()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = f.Start();
        Poke(board.memory, 0x2000, {0x20, 0xFE});   // BRA *: the host's work alone
        Poke(board.memory, 0xE000, {0x20, 0xFE});
        Poke(board.memory, 0xFFFE, {0xE0, 0x00});
        CpuRegisters.PC = 0x2000;
        AddBreakpoint(0xE000);
        bool reported = false;
        bool pauseOnAfterReport = false;
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
