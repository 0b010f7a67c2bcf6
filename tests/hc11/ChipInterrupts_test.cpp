// Interrupts on the whole chip: the fixed priorities and HPRIO's promotion
// (Reference Manual, Table 5-4 Interrupt and Reset Vector Assignments and the
// PSEL table of HPRIO), the I and X masks, IRQ by level or edge (OPTION's
// IRQE), WAI's 14 + n cycles and its wake-up, STOP and its recovery delay,
// the illegal opcode trap and the clock monitor's reset.
#include "hc11/chip/Interrupts.h"
#include "support/ChipHarness.h"
#include "support/CpuHarness.h"

using namespace hc11::chip;
namespace ccr = hc11::ccr;

namespace {

unsigned Handler(unsigned vector)
{
    return 0xF000 + (vector - 0xFFC0) * 2;
}

// The source loaded, then every vector but reset pointing to its own two-byte
// BRA-to-itself handler, so where the CPU ends tells which it took.
struct HandlingChip : ChipHarness {
    explicit HandlingChip(const std::string& source) : ChipHarness(source)
    {
        for (unsigned vector = 0xFFC0; vector < 0xFFFE; vector += 2) {
            Poke(chip.Ram(), std::uint16_t(vector), {int(Handler(vector) >> 8), int(Handler(vector) & 0xFF)});
            Poke(chip.Ram(), std::uint16_t(Handler(vector)), {0x20, 0xFE});   // BRA *
        }
    }
};

} // namespace

class ChipInterruptsTest : public QObject {
    Q_OBJECT
private slots:
    void pendingSourcesResolveByFixedPriorityAndPsel()
    {
        const std::uint32_t all = (1u << SourceCount) - 1;
        // PSEL3:PSEL0 to the promoted source's vector; 5 is reserved and leaves IRQ on top.
        const std::uint16_t promoted[16] = {0xFFDE, 0xFFDC, 0xFFDA, 0xFFD8, 0xFFD6, 0xFFF2, 0xFFF2, 0xFFF0,
                                            0xFFEE, 0xFFEC, 0xFFEA, 0xFFE8, 0xFFE6, 0xFFE4, 0xFFE2, 0xFFE0};
        for (std::uint8_t psel = 0; psel < 16; ++psel)
            QCOMPARE(HighestPriorityVector(all, psel), promoted[psel]);
        const struct { std::uint32_t pending; std::uint8_t psel; std::uint16_t vector; } cases[] = {
            {0, 0, 0},
            {Bit(Source::Sci) | Bit(Source::Tof), 5, 0xFFDE},    // TOF above the SCI
            {Bit(Source::Sci) | Bit(Source::Tof), 4, 0xFFD6},    // unless the SCI is promoted
            {Bit(Source::Ic1) | Bit(Source::Rti), 5, 0xFFF0},    // RTI just below IRQ
            {Bit(Source::Ic1) | Bit(Source::Rti), 8, 0xFFEE},
            {Bit(Source::Oc4) | Bit(Source::Ic4Oc5), 5, 0xFFE2},
            {Bit(Source::Spi) | Bit(Source::PaInput), 0, 0xFFDA}, // promoted but not pending: the fixed order
        };
        for (const auto& c : cases)
            QCOMPARE(HighestPriorityVector(c.pending, c.psel), c.vector);
    }

    void simultaneousTimerRequestsFollowHprio()
    {
        // TOF and RTIF both pending under the I mask, then CLI: the handlers log
        // their letters in the order served.
        const struct { const char* hprioWrite; const char* order; } cases[] = {
            {"", "RT"},
            {" LDAA #$20\n STAA $3C,X", "TR"},               // PSEL 0: TOF promoted
            {" CLI\n LDAA #$20\n STAA $3C,X\n SEI", "RT"},   // I clear: HPRIO keeps its PSEL
        };
        for (const auto& c : cases) {
            ChipHarness h(std::string(" ORG $E000\n LDS #$01FF\n LDX #$1000\n LDY #$0040\n STY $30\n"
                                      " LDAA #$C0\n STAA $24,X\n") + c.hprioWrite +
                          "\nL BRCLR $25,X $80 L\n CLI\nW BRA W\n"
                          "RTIH LDAB #$40\n LDAA #'R\n BRA LOG\n"
                          "TOFH LDAB #$80\n LDAA #'T\n"
                          "LOG STAB $25,X\n LDY $30\n STAA 0,Y\n INY\n STY $30\n RTI\n"
                          " ORG $FFF0\n FDB RTIH\n ORG $FFDE\n FDB TOFH\n");
            h.Run(70000);
            QCOMPARE(QString(QChar(h.chip.Ram()[0x40])) + QChar(h.chip.Ram()[0x41]), QString(c.order));
        }
    }

    void masksAndTheIrqLineChooseWhatIsServed()
    {
        // The pins are set at cycle 0 and, for a pulse, released at 100; the
        // condition codes are loaded at 200 and the CPU runs on.
        const struct { std::uint8_t ccr; bool edge; bool xirq; bool irq; bool pulse; unsigned vector; } cases[] = {
            {0, false, true, true, false, 0xFFF4},                // XIRQ before IRQ
            {ccr::X, false, true, true, false, 0xFFF2},           // X masks XIRQ only
            {ccr::X | ccr::I, false, true, true, false, 0},       // both masked
            {ccr::X, false, false, true, true, 0},                // a level gone is no request
            {ccr::X, true, false, true, true, 0xFFF2},            // an edge stays latched
            {ccr::X, true, false, false, false, 0},
        };
        for (const auto& c : cases) {
            HandlingChip h(" ORG $E000\n LDS #$01FF\nW BRA W\n");
            if (c.edge)
                h.SetReg(reg::OPTION, 0x30);                      // IRQE, DLY
            InputPins pins;
            pins.xirqAsserted = c.xirq;
            pins.irqAsserted = c.irq;
            h.chip.SetInputs(pins);
            if (c.pulse) {
                h.chip.RunUntil(100);
                h.chip.SetInputs(InputPins{});
            }
            h.chip.RunUntil(200);
            h.chip.Core().regs.ccr = c.ccr;
            h.Run(100);
            QCOMPARE(unsigned(h.chip.Core().regs.pc), c.vector ? Handler(c.vector) : 0xE003u);
        }
    }

    void waitStacksThenWakesOnAnEnabledSource()
    {
        // OC2 at TCNT $1000 ends the wait; TOF, flagged but not enabled, does
        // not. WAI: 12 cycles to stack, the wait, 2 to fetch the vector.
        ChipHarness h(" ORG $E000\n LDS #$01FF\n LDX #$1000\n LDD #$1000\n STD $18,X\n"
                      " LDAA #$40\n STAA $22,X\n CLI\nW WAI\nAFTER BRA AFTER\n"
                      "OC2 BRA OC2\n ORG $FFE6\n FDB OC2\n");
        QVERIFY(h.RunTo(0xE010));                                    // at WAI
        const std::uint64_t waiAt = h.chip.Cycles();
        h.chip.Step();
        QCOMPARE(h.chip.Cycles(), waiAt + 12);
        QCOMPARE(h.chip.Core().State(), hc11::RunState::Waiting);
        QVERIFY(h.RunTo(0xE013));                                    // the handler
        QCOMPARE(h.chip.Cycles(), std::uint64_t(0x1000 + 2));
        QCOMPARE(h.Word(0x01FE), 0xE011);                            // the return to behind WAI
    }

    void stopFreezesTheClocksUntilAnInterruptOrXirq()
    {
        const std::string program = " ORG $E000\n LDS #$01FF\n TAP\n NOP\n STOP\n NOP\nW BRA W\n";
        const struct { std::uint8_t a; bool irq; std::uint64_t delay; unsigned pc; } cases[] = {
            {ccr::S | ccr::X, false, 0, 0xE007},          // S set: STOP is a NOP
            {0, true, 4064 + 14, Handler(0xFFF2)},        // IRQ, after DLY's oscillator delay
            {ccr::X | ccr::I, false, 4064 + 2, 0xE007},   // XIRQ under X: on behind STOP
        };
        for (const auto& c : cases) {
            HandlingChip h(program);
            h.chip.Core().regs.a = c.a;
            h.Run(1000);
            const std::uint16_t tcnt = h.Reg16(reg::TCNT);
            if (c.a & ccr::S) {
                QCOMPARE(unsigned(h.chip.Core().regs.pc), c.pc);
                continue;
            }
            QCOMPARE(h.chip.Core().State(), hc11::RunState::Stopped);
            h.Run(50000);
            QCOMPARE(h.Reg16(reg::TCNT), tcnt);   // frozen
            InputPins pins;
            pins.irqAsserted = c.irq;
            pins.xirqAsserted = !c.irq;
            h.chip.SetInputs(pins);
            const std::uint64_t woke = h.chip.Cycles();
            h.chip.Step();
            QCOMPARE(h.chip.Cycles() - woke, c.delay);
            QCOMPARE(unsigned(h.chip.Core().regs.pc), c.pc);
        }
    }

    void clockMonitorResetsAStop()
    {
        HandlingChip h(" ORG $E000\n LDS #$01FF\n LDX #$1000\n BSET $39,X $08\n CLRA\n TAP\n STOP\nW BRA W\n");
        h.Run(100);
        QCOMPARE(h.chip.LastReset(), ResetCause::ClockMonitor);
        QCOMPARE(unsigned(h.chip.Core().regs.pc), Handler(0xFFFC));
        QCOMPARE(int(h.Reg(reg::OPTION)), 0x10);                    // registers back to reset
    }

    void illegalOpcodesTrapWithTheirOwnAddressStacked()
    {
        const std::initializer_list<int> sequences[] = {{0x41}, {0x18, 0x01}, {0x1A, 0x00}, {0xCD, 0x08}};
        for (const auto& bytes : sequences) {
            HandlingChip h(" ORG $E000\n LDS #$01FF\n");
            Poke(h.chip.Ram(), 0xE003, bytes);
            h.chip.Step();
            QCOMPARE(h.chip.Step(), 14);
            QCOMPARE(unsigned(h.chip.Core().regs.pc), Handler(0xFFF8));
            QCOMPARE(h.Word(0x01FE), 0xE003);
            QVERIFY(h.chip.Core().regs.ccr & ccr::I);
        }
    }
};

QTEST_APPLESS_MAIN(ChipInterruptsTest)
#include "ChipInterrupts_test.moc"
