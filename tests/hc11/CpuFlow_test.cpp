// Control flow and machine state: branch conditions, calls and returns, the
// stack, SWI and RTI with their frame, the X bit, WAI and interrupts (STOP is
// the whole chip's, with its oscillator delay).

#include "support/CpuHarness.h"

using namespace hc11;

class CpuFlowTest : public QObject {
    Q_OBJECT
private slots:
    void branchesAfterACompareMeanWhatTheirNamesSay()
    {
        const int values[] = {0x00, 0x01, 0x7F, 0x80, 0x81, 0xFF};
        for (int a : values) {
            for (int m : values) {
                const int sa = std::int8_t(a), sm = std::int8_t(m);
                const bool overflow = sa - sm < -128 || sa - sm > 127;
                const struct { int opcode; bool taken; } branches[] = {
                    {0x20, true}, {0x21, false},
                    {0x22, a > m}, {0x23, a <= m}, {0x24, a >= m}, {0x25, a < m},
                    {0x26, a != m}, {0x27, a == m}, {0x28, !overflow}, {0x29, overflow},
                    {0x2A, !((a - m) & 0x80)}, {0x2B, bool((a - m) & 0x80)},
                    {0x2C, sa >= sm}, {0x2D, sa < sm}, {0x2E, sa > sm}, {0x2F, sa <= sm},
                };
                for (const auto& b : branches) {
                    CpuHarness h;
                    h.cpu.regs.a = std::uint8_t(a);
                    h.Run({0x81, m});                          // CMPA #m
                    QCOMPARE(h.Run({b.opcode, 0x20}), 3);      // taken or not: 3 cycles
                    QVERIFY2(h.cpu.regs.pc == CpuHarness::Origin + 2 + (b.taken ? 0x20 : 0),
                             qPrintable(QString("branch %1 after %2 - %3").arg(b.opcode, 0, 16).arg(a).arg(m)));
                }
            }
        }
    }

    void callsPushTheReturnAddressAndBranchesWrap()
    {
        CpuHarness h;
        h.Run({0x20, 0x10}, 0xFFFE);              // BRA forward past $FFFF
        QCOMPARE(int(h.cpu.regs.pc), 0x0010);
        h.Run({0x20, 0x80}, 0x0002);              // BRA back below $0000
        QCOMPARE(int(h.cpu.regs.pc), 0xFF84);
        h.cpu.regs.sp = 0x00FF;
        QCOMPARE(h.Run({0xBD, 0x20, 0x00}), 6);   // JSR $2000
        QCOMPARE(int(h.cpu.regs.pc), 0x2000);
        QCOMPARE(int(h.cpu.regs.sp), 0x00FD);
        QCOMPARE(int(h.Word(0x00FE)), 0x1003);    // high byte at the lower address
        QCOMPARE(h.Run({0x39}, 0x2000), 5);       // RTS
        QVERIFY(h.cpu.regs.pc == 0x1003 && h.cpu.regs.sp == 0x00FF);
    }

    void stackWrapsBelowZeroAndTransfersAdjustByOne()
    {
        CpuHarness h;
        h.cpu.regs = {0xAA, 0, 0x1234, 0x5678, 0x0001, 0, ccr::S | ccr::X | ccr::I};
        h.Run({0x36});                            // PSHA, PSHX, then PSHY wraps below $0000
        h.Run({0x3C});
        h.Run({0x18, 0x3C});
        QCOMPARE(int(h.cpu.regs.sp), 0xFFFC);
        QCOMPARE(int(h.memory.bytes[0x0001]), 0xAA);
        QCOMPARE(int(h.Word(0xFFFF)), 0x1234);
        QCOMPARE(int(h.Word(0xFFFD)), 0x5678);
        h.Run({0x38});                            // PULX takes what PSHY left, PULB
        h.Run({0x33});
        QVERIFY(h.cpu.regs.ix == 0x5678 && h.cpu.regs.b == 0x12 && h.cpu.regs.sp == 0xFFFF);
        h.Run({0x30});                            // TSX: IX = SP + 1
        QCOMPARE(int(h.cpu.regs.ix), 0x0000);
        h.cpu.regs.iy = 0x0000;
        h.Run({0x18, 0x35});                      // TYS: SP = IY - 1
        QCOMPARE(int(h.cpu.regs.sp), 0xFFFF);
        QCOMPARE(int(h.cpu.regs.ccr), ccr::S | ccr::X | ccr::I);   // no flags touched
    }

    void swiStacksTheFrameAndRtiReturnsThroughIt()
    {
        CpuHarness h;
        h.Poke(SwiVector, {0xE0, 0x00});
        Registers& r = h.cpu.regs;
        r = {0x11, 0x22, 0x3344, 0x5566, 0x01FF, 0, ccr::S | ccr::N | ccr::C};
        QCOMPARE(h.Run({0x3F}), 14);
        QVERIFY(r.pc == 0xE000 && r.sp == 0x01F6 && r.ccr == (ccr::S | ccr::I | ccr::N | ccr::C));
        // From SP + 1 up: CCR, B, A, IX, IY, return address.
        const int frame[] = {0x89, 0x22, 0x11, 0x33, 0x44, 0x55, 0x66, 0x10, 0x01};
        for (int i = 0; i < 9; ++i)
            QCOMPARE(int(h.memory.bytes[0x01F7 + i]), frame[i]);
        r = {0, 0, 0, 0, r.sp, 0, ccr::X};
        QCOMPARE(h.Run({0x3B}, 0xE000), 12);      // RTI
        QVERIFY(r.pc == 0x1001 && r.sp == 0x01FF && r.a == 0x11 && r.b == 0x22 && r.ix == 0x3344 && r.iy == 0x5566);
        QCOMPARE(int(r.ccr), 0x89);               // X cleared by the frame: allowed
    }

    void onlyResetAndXirqSetTheXBit()
    {
        CpuHarness h;
        Registers& r = h.cpu.regs;
        const struct { int ccrBefore, a, ccrAfter; } taps[] = {
            {0x00, 0xFF, 0xBF},                   // TAP cannot set X
            {0x00, 0x00, 0x00},
            {0xFF, 0x00, 0x00},                   // but can clear it
        };
        for (const auto& t : taps) {
            r.ccr = std::uint8_t(t.ccrBefore);
            r.a = std::uint8_t(t.a);
            h.Run({0x06});
            QCOMPARE(int(r.ccr), t.ccrAfter);
        }
        r.sp = 0x00F0;
        h.Poke(0x00F1, {0xFF});                   // RTI frame with every bit set
        h.Run({0x3B});
        QCOMPARE(int(r.ccr), 0xBF);
        h.Poke(ResetVector, {0x80, 0x00});
        h.cpu.Reset();
        QVERIFY(r.pc == 0x8000 && (r.ccr & (ccr::S | ccr::X | ccr::I)) == (ccr::S | ccr::X | ccr::I));
    }

    void waitAndInterruptsByPriority()
    {
        CpuHarness h;
        Registers& r = h.cpu.regs;
        h.Poke(IrqVector, {0xD0, 0x00});
        h.Poke(XirqVector, {0xC0, 0x00});
        r.sp = 0x0100;
        r.ccr = ccr::I;
        QCOMPARE(h.Run({0x3E}), 0);               // WAI stacks its frame and waits
        QCOMPARE(h.cpu.State(), RunState::Waiting);
        QCOMPARE(int(h.Word(0x00FF)), 0x1001);
        h.cpu.SetMaskableRequest(IrqVector);      // masked: each step idles one cycle
        QCOMPARE(h.cpu.Step(), 1);
        r.ccr = 0;                                // unmasked: served without a second frame
        QCOMPARE(h.cpu.Step(), 4);
        QVERIFY(h.cpu.State() == RunState::Running && r.pc == 0xD000 && r.sp == 0x00F7 && r.ccr == ccr::I);

        h.cpu.SetXirq(true);                      // XIRQ before the IRQ still pending
        r = {0, 0, 0, 0, 0x0100, 0x1000, 0};
        QCOMPARE(h.cpu.Step(), 14);
        QVERIFY(r.pc == 0xC000 && r.ccr == (ccr::X | ccr::I) && h.Word(0x00FF) == 0x1000);
        h.cpu.SetXirq(false);
        r.ccr = 0;
        h.cpu.Step();
        QVERIFY(r.pc == 0xD000 && r.sp == 0x00EE);
    }
};

QTEST_APPLESS_MAIN(CpuFlowTest)
#include "CpuFlow_test.moc"
