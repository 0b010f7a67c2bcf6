// The debugger on the simulated chip: steps that take interrupts, WAI under
// Step Into, breakpoints inside an interrupt routine, the free run with
// Pause, and the input-output unit on the chip's bus.
// Vector addresses are those of the E-series data sheet's interrupt vector
// table (IRQ $FFF2, output compare 2 $FFE6); timer offsets from its register
// map (TCNT $0E, TOC2 $18, TMSK1 $22, TFLG1 $23).

#include "engine/execution/Breakpoints.h"
#include "engine/execution/StepPlan.h"
#include "engine/state/TargetState.h"
#include "support/ChipHarness.h"
#include "support/DebuggerFixture.h"
#include "support/RecordedIoUnit.h"

#include <string>

namespace {
// Output compare 2 interrupts 1000 E cycles after the set-up; the main
// program spins (or waits, with WAI in place of the BRA's first byte).
const std::string TimerProgram = R"(
        ORG     $2000
START   LDS     #$01FF
        LDX     #$1000
        LDD     $0E,X
        ADDD    #1000
        STD     $18,X
        LDAA    #$40
        STAA    $23,X
        STAA    $22,X
        CLI
LOOP    BRA     LOOP
ISR     LDAA    #$40
        STAA    $23,X
        RTI
        ORG     $FFE6
        FDB     ISR
)";
constexpr std::int32_t Start = 0x2000, Loop = 0x2014, Isr = 0x2016;

struct ChipDebugger : DebuggerFixture {
    // The source assembled into TargetMemory, PC at start, interrupts unmasked as after the monitor.
    explicit ChipDebugger(const std::string& source = {}, std::int32_t start = 0) : DebuggerFixture(true)
    {
        SimulatePeripherals = true;
        CpuRegisters.PC = start;
        if (const QString errors = AssembleInto(TargetMemory, source); !errors.isEmpty())
            qFatal("%s", qPrintable(errors));
    }
    // The return address of the interrupt frame at SP.
    std::int32_t StackedPC() const { return stepping::TargetWord(CpuRegisters.SP + 8); }
    void StepTo(std::int32_t address)
    {
        for (int i = 0; i < 100 && CpuRegisters.PC != address; ++i)
            debugger.StepInto();
    }
};

} // namespace

class ChipDebuggerTest : public QObject {
    Q_OBJECT
private slots:
    // A pending interrupt is taken between two steps as the chip takes it:
    // nine bytes stacked with the interrupted PC, I set, PC from the vector;
    // RTI puts it all back.
    void stepIntoTakesAPendingInterruptBetweenInstructions()
    {
        ChipDebugger f(" ORG $2000\nMAIN NOP\n NOP\n BRA MAIN\n ORG $3000\nISR NOP\n RTI\n ORG $FFF2\n FDB ISR\n", 0x2000);
        CpuRegisters.SP = 0x01FF;
        f.debugger.StepInto();
        QCOMPARE(CpuRegisters.PC, 0x2001);
        f.link.ChipSim.SetIrq(true);
        f.debugger.StepInto();
        QCOMPARE(CpuRegisters.PC, 0x3000);
        QCOMPARE(CpuRegisters.SP, 0x01FF - 9);
        QCOMPARE(f.StackedPC(), 0x2001);
        QVERIFY(CpuRegisters.FlagI);
        f.link.ChipSim.SetIrq(false);
        f.debugger.StepInto();
        f.debugger.StepOver();   // RTI: the chip returns, no run to a stop behind it
        QCOMPARE(tuple(CpuRegisters.PC, CpuRegisters.SP, CpuRegisters.FlagI), tuple(0x2001, 0x01FF, false));
        // Step Out of an interrupt routine stops where it returns to.
        f.link.ChipSim.SetIrq(true);
        f.debugger.StepInto();
        f.link.ChipSim.SetIrq(false);
        f.debugger.StepOut();
        QCOMPARE(tuple(CpuRegisters.PC, CpuRegisters.SP, RunStopped), tuple(0x2001, 0x01FF, true));
        // The save area follows every step, for the CPU window's reads.
        QCOMPARE(TargetMemory[SaveAreaAddress + 6] * 256 + TargetMemory[SaveAreaAddress + 7], 0x01FF);
    }

    // A breakpoint on the interrupt routine stops Play, Run to it and the
    // free run, paced or at full speed, on the routine's first instruction.
    void aBreakpointInAnInterruptRoutineStopsEveryRun()
    {
        const struct {
            const char* what;
            bool freeRun;
            bool fullSpeed;
        } cases[] = {{"Play", false, false}, {"Run", true, false}, {"Run at full speed", true, true}};
        for (const auto& c : cases) {
            ChipDebugger f(TimerProgram, Start);
            AddBreakpoint(Isr);
            f.debugger.FullSpeed = c.fullSpeed;
            if (c.freeRun) {
                f.debugger.RunFree();
                QVERIFY2(f.debugger.ChipRunning() && BoardRunning, c.what);
                QTRY_VERIFY2(!f.debugger.ChipRunning(), c.what);
            } else {
                f.debugger.Play();
            }
            QVERIFY2(CpuRegisters.PC == Isr, c.what);
            QVERIFY2(f.StackedPC() == Loop, c.what);
            QVERIFY2(RunStopped && !BoardRunning && !f.view.pauseOn, c.what);
            // Leaving the breakpoint: the next interrupt stops there again, a timer period later.
            const std::int32_t before = ClockCount;
            f.debugger.Play();
            QVERIFY2(CpuRegisters.PC == Isr && ClockCount - before > 0xFFFF - 1000, c.what);
        }
    }

    // Step Into on WAI runs until the interrupt that ends it and counts the
    // cycles waited; with I set nothing ends it, and the step gives up after
    // its limit with the core still waiting.
    void stepIntoOnWaiRunsUntilTheWakeUp()
    {
        std::string waiting = TimerProgram;
        waiting.replace(waiting.find("LOOP    BRA     LOOP"), 20, "LOOP    WAI\n        BRA     LOOP");
        ChipDebugger f(waiting, Start);
        f.StepTo(Loop);
        QCOMPARE(CpuRegisters.PC, Loop);
        const std::int32_t before = ClockCount;
        f.debugger.StepInto();
        QCOMPARE(CpuRegisters.PC, Loop + 3);   // WAI is one byte, the BRA two: the routine stands behind them
        QCOMPARE(f.StackedPC(), Loop + 1);
        QVERIFY(ClockCount - before > 900);
        QVERIFY(f.view.clockShown > 0);

        ChipDebugger masked(" ORG $2000\n SEI\n WAI\n NOP\n", 0x2000);
        masked.debugger.StepInto();
        const std::int32_t start = ClockCount;
        masked.debugger.StepInto();
        QCOMPARE(CpuRegisters.PC, 0x2002);
        QVERIFY(ClockCount - start >= static_cast<std::int32_t>(ChipSimulator::MaxWaitCycles));
    }

    // Pause ends the free run at once, between two instructions, with every
    // window told where it stopped.
    void pauseStopsTheFreeRunAtOnce()
    {
        for (const bool fullSpeed : {false, true}) {
            ChipDebugger f(TimerProgram, Start);
            f.debugger.FullSpeed = fullSpeed;
            f.debugger.RunFree();
            QVERIFY(f.view.frozen && f.view.pauseOn);
            QCOMPARE(f.reports.state, LinkState::SimulatorRunning);
            QTRY_VERIFY(ClockCount > 2000);
            const int refreshes = f.view.refreshes;
            f.debugger.Pause();
            QVERIFY(!f.debugger.ChipRunning() && RunStopped && !BoardRunning && !f.view.frozen && !f.view.pauseOn);
            QCOMPARE(f.view.refreshes, refreshes + 1);
            QCOMPARE(f.reports.state, LinkState::Simulator);
            QVERIFY(CpuRegisters.PC == Loop || (CpuRegisters.PC >= Isr && CpuRegisters.PC <= Isr + 4));
        }
    }

    // The blinking example steps the LED count once every ten output compare
    // periods of 50,000 E cycles: the count follows the E clock, and each
    // step reaches the unit's window. The chip's memory is TargetMemory; its
    // registers are read through the link, not copied into TargetMemory.
    void blinkCountsWithTheEClock()
    {
        ChipDebugger f;
        RecordedIoUnit unit;
        f.link.IoUnitWindow = &unit;
        f.reports.ioUnitShown = true;
        QVERIFY(AssembleExampleInto(TargetMemory, "blink.asm"));
        CpuRegisters.PC = 0xE000;
        ChipSimulator& sim = f.link.ChipSim;
        sim.LoadRegisters(CpuRegisters);
        const std::uint64_t origin = sim.Chip().Cycles();
        for (const int steps : {0, 1, 3, 7}) {
            // Halfway between two steps, clear of either edge.
            sim.RunUntil(origin + 500'000 * steps + 250'000, {}, true);
            QCOMPARE(int(TargetMemory[IoUnitAddress + 3]), steps);
            QCOMPARE(unit.written.size(), steps + 1);   // the program's CLR, then one a step
        }
        QCOMPARE(int(TargetMemory[0x0010]), 4);   // TICK: 74 interrupts so far
        std::int32_t tmsk1 = 0x1022;
        std::uint8_t value = 0;
        f.link.InByte(tmsk1, value);
        QCOMPARE(value, std::uint8_t(0x40));
        QCOMPARE(TargetMemory[0x1022], std::uint8_t(0));
    }
};

QTEST_MAIN(ChipDebuggerTest)
#include "ChipDebugger_test.moc"
