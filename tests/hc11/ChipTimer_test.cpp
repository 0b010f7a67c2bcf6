// The main timer on the whole chip: TCNT and its prescaler, TOF, the RTI
// rates, the output compares' pin actions, input captures, the pulse
// accumulator and the write-1-to-clear flags, each against the MC68HC11E
// technical data's timer chapter. The program waits in WAI with nothing
// enabled, so that every run ends on the exact E cycle asked for.
#include "support/ChipHarness.h"

using namespace hc11::chip;

class ChipTimerTest : public QObject {
    Q_OBJECT
private slots:
    void overflowAndRealTimeFlagsRiseAtTheirPrescaledPeriods()
    {
        // TOF as TCNT wraps, TMSK2 PR1:PR0 selecting E/1, E/4, E/8, E/16 (the
        // timer prescale table); RTIF every E/2^13 divided by 1, 2, 4, 8 by
        // PACTL RTR1:RTR0 (the RTI rates table). TCNT steps on each prescaled tick.
        const struct { unsigned offset; std::uint8_t value, flag; std::uint64_t factor, period; } rows[] = {
            {reg::TMSK2, 0, 0x80, 1, 65536},     {reg::TMSK2, 1, 0x80, 4, 4 * 65536},
            {reg::TMSK2, 2, 0x80, 8, 8 * 65536}, {reg::TMSK2, 3, 0x80, 16, 16 * 65536},
            {reg::PACTL, 0, 0x40, 1, 8192},      {reg::PACTL, 1, 0x40, 1, 16384},
            {reg::PACTL, 2, 0x40, 1, 32768},     {reg::PACTL, 3, 0x40, 1, 65536},
        };
        for (const auto& row : rows) {
            WaitingChip h;
            h.SetReg(row.offset, row.value);
            for (std::uint64_t end = row.period; end <= 2 * row.period; end += row.period) {
                h.chip.RunUntil(end - 1);
                QCOMPARE(h.Reg16(reg::TCNT), std::uint16_t((end - 1) / row.factor));
                QCOMPARE(h.Reg(reg::TFLG2) & row.flag, 0);
                h.chip.RunUntil(end);
                QCOMPARE(h.Reg16(reg::TCNT), std::uint16_t(end / row.factor));
                QCOMPARE(h.Reg(reg::TFLG2) & row.flag, row.flag);
                h.SetReg(reg::TFLG2, row.flag);
            }
        }
    }

    void timerFlagsClearOnlyWhereOnesAreWritten()
    {
        // TFLG2 after TOF and RTIF are both set; a bit instruction writes the
        // whole register back, so BSET clears every flag it read as set.
        const struct { const char* clear; std::uint8_t left; } cases[] = {
            {" LDAA #$00\n STAA $25,X", 0xC0}, {" LDAA #$80\n STAA $25,X", 0x40},
            {" LDAA #$40\n STAA $25,X", 0x80}, {" LDAA #$3F\n STAA $25,X", 0xC0},
            {" BSET $25,X $80", 0x00},         {" BCLR $25,X $7F", 0x40},
        };
        for (const auto& c : cases) {
            ChipHarness h(std::string(" ORG $E000\n LDS #$01FF\n LDX #$1000\nL BRCLR $25,X $80 L\n") + c.clear +
                          "\nW WAI\n BRA W\n");
            h.Run(70000);
            QCOMPARE(int(h.Reg(reg::TFLG2)), int(c.left));
        }
    }

    void outputCompareActsOnItsPinAtTheMatch()
    {
        // TCTL1 OM2:OL2 on PA6: disconnected, toggle, clear, set.
        const struct { std::uint8_t action; bool from; bool after; } cases[] = {
            {0, false, false}, {0, true, true}, {1, false, true}, {1, true, false},
            {2, true, false},  {2, false, false}, {3, false, true}, {3, true, true},
        };
        for (const auto& c : cases) {
            WaitingChip h;
            h.SetReg(reg::PORTA, c.from ? 0x40 : 0x00);
            h.SetReg(reg::TCTL1, std::uint8_t(c.action << 6));
            h.SetReg16(reg::TOC2, 0x0100);
            h.chip.RunUntil(0x00FF);
            QCOMPARE(bool(h.Reg(reg::PORTA) & 0x40), c.from);
            QCOMPARE(h.Reg(reg::TFLG1) & 0x40, 0);
            h.chip.RunUntil(0x0100);
            QCOMPARE(bool(h.Reg(reg::PORTA) & 0x40), c.after);
            QCOMPARE(h.Reg(reg::TFLG1) & 0x40, 0x40);   // OC2F whatever the action
            h.SetReg(reg::PORTA, c.after ? 0x00 : 0x40);  // a write reaches the pin only when disconnected
            QCOMPARE(bool(h.Reg(reg::PORTA) & 0x40), c.action == 0 ? !c.after : c.after);
        }
        // OC3-OC5 each with its register, flag and pin (TCTL1's set action, 11); TI4O5 is OC5 while I4/O5 is clear.
        for (const auto& [toc, flagAndPin, set] :
             {tuple{reg::TOC3, 0x20, 0x30}, tuple{reg::TOC4, 0x10, 0x0C}, tuple{reg::TI4O5, 0x08, 0x03}}) {
            WaitingChip h;
            h.SetReg(reg::PACTL, 0x08);   // DDRA3: PA3 an output
            h.SetReg(reg::TCTL1, std::uint8_t(set));
            h.SetReg16(toc, 0x0100);
            h.chip.RunUntil(0x0100);
            QCOMPARE(tuple(h.Reg(reg::TFLG1) & 0x78, h.Reg(reg::PORTA) & 0x78), tuple(flagAndPin, flagAndPin));
        }
    }

    void oc1DrivesItsMaskedPinsAndWinsOverAnotherCompare()
    {
        WaitingChip h;
        h.SetReg(reg::PACTL, 0x08);                 // DDRA3: PA3 an output
        h.SetReg(reg::OC1M, 0x48);                  // OC1 drives PA6 and PA3
        h.SetReg(reg::OC1D, 0x08);                  // to 0 and 1
        h.SetReg(reg::TCTL1, 0xC0);                 // OC2 sets PA6
        h.SetReg16(reg::TOC1, 0x0200);
        h.SetReg16(reg::TOC2, 0x0200);
        h.chip.RunUntil(0x0200);
        QCOMPARE(h.Reg(reg::PORTA) & 0x48, 0x08);   // the same match: OC1's level on PA6
        QCOMPARE(h.Reg(reg::TFLG1) & 0xC0, 0xC0);
        h.SetReg16(reg::TOC2, 0x0300);
        h.chip.RunUntil(0x0300);
        QCOMPARE(h.Reg(reg::PORTA) & 0x48, 0x48);   // OC2 alone sets it
        h.SetReg(reg::TFLG1, 0xFF);
        h.SetReg(reg::TCTL1, 0x40);                 // OC2 toggles
        h.SetReg(reg::CFORC, 0x40);                 // forced: the action without the flag
        QCOMPARE(h.Reg(reg::PORTA) & 0x40, 0x00);
        QCOMPARE(int(h.Reg(reg::TFLG1)), 0);
        QCOMPARE(int(h.Reg(reg::CFORC)), 0);
    }

    void inputCaptureLatchesTheCounterOnTheSelectedEdges()
    {
        // TCTL2 EDG1B:EDG1A on PA2 (IC1): off, rising, falling, either.
        // PA2 falls at cycle 1000 and rises at 3000.
        const struct { std::uint8_t edges; bool flagAt1000; std::uint16_t captured; } cases[] = {
            {0, false, 0xFFFF}, {1, false, 3000}, {2, true, 1000}, {3, true, 3000},
        };
        for (const auto& c : cases) {
            WaitingChip h;
            h.SetReg(reg::TCTL2, std::uint8_t(c.edges << 4));
            h.SetPortAPinAt(1000, 0x04, false);
            QCOMPARE(bool(h.Reg(reg::TFLG1) & 0x04), c.flagAt1000);
            h.SetPortAPinAt(3000, 0x04, true);
            QCOMPARE(bool(h.Reg(reg::TFLG1) & 0x04), c.edges != 0);
            QCOMPARE(h.Reg16(reg::TIC1), c.captured);
        }
        WaitingChip h;   // IC4 on PA3 once I4/O5 makes TI4O5 a capture register
        h.SetReg(reg::PACTL, 0x04);
        h.SetReg(reg::TCTL2, 0x80);                 // falling edges
        h.SetPortAPinAt(1234, 0x08, false);
        QCOMPARE(h.Reg16(reg::TI4O5), 1234);
        QCOMPARE(h.Reg(reg::TFLG1) & 0x08, 0x08);
        // IC2 on PA1 and IC3 on PA0, each with its TCTL2 pair (falling: 10), register and flag.
        for (const auto& [pin, falling, tic] : {tuple{0x02, 0x08, reg::TIC2}, tuple{0x01, 0x02, reg::TIC3}}) {
            WaitingChip g;
            g.SetReg(reg::TCTL2, std::uint8_t(falling));
            g.SetPortAPinAt(1500, std::uint8_t(pin), false);
            QCOMPARE(tuple(int(g.Reg16(tic)), g.Reg(reg::TFLG1) & 0x07), tuple(1500, pin));
        }
    }

    void pulseAccumulatorCountsEdgesOrGatedTime()
    {
        WaitingChip h;
        h.SetReg(reg::PACTL, 0x40);                 // PAEN, event mode, falling edges
        h.SetReg(reg::PACNT, 0xFE);
        for (int i = 0; i < 3; ++i) {
            h.SetPortAPinAt(100 + 200 * i, 0x80, false);
            h.SetPortAPinAt(200 + 200 * i, 0x80, true);
        }
        QCOMPARE(int(h.Reg(reg::PACNT)), 0x01);
        QCOMPARE(h.Reg(reg::TFLG2) & 0x30, 0x30);   // PAOVF from $FF to $00, PAIF on each edge

        WaitingChip g;
        g.SetReg(reg::PACTL, 0x60);                 // gated: counts E/64 while PAI is high
        g.SetPortAPinAt(640, 0x80, false);
        QCOMPARE(int(g.Reg(reg::PACNT)), 10);
        QCOMPARE(g.Reg(reg::TFLG2) & 0x10, 0x10);   // PAIF on the gate's trailing edge
        g.chip.RunUntil(6400);
        QCOMPARE(int(g.Reg(reg::PACNT)), 10);
        g.SetPortAPinAt(6400, 0x80, true);
        g.chip.RunUntil(6400 + 64 * 246);
        QCOMPARE(int(g.Reg(reg::PACNT)), 0);
        QCOMPARE(g.Reg(reg::TFLG2) & 0x20, 0x20);   // PAOVF
    }
};

QTEST_APPLESS_MAIN(ChipTimerTest)
#include "ChipTimer_test.moc"
