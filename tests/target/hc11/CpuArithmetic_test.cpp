// Known answers for the arithmetic instructions, with the flag cases where
// emulators usually go wrong: H and V of additions, the borrow of
// subtractions, NEG of $80, DAA after carries, division by zero.
#include <QtTest>

#include "support/CpuHarness.h"

using namespace hc11;

namespace {
constexpr std::uint8_t C = ccr::C, H = ccr::H;
}

class CpuArithmeticTest : public QObject {
    Q_OBJECT
private slots:
    void additionsSetHalfCarryOverflowAndCarry()
    {
        RunCpuCases({
            {{0x8B, 0x08}, 0x0800, 0, 0, 0, 0x1000, 0, 0, "H"},          // ADDA: carry out of bit 3
            {{0x8B, 0x01}, 0x7F00, 0, 0, 0, 0x8000, 0, 0, "HNV"},        // into the sign
            {{0x8B, 0x80}, 0x8000, 0, 0, 0, 0x0000, 0, 0, "ZVC"},
            {{0x8B, 0x01}, 0xFF00, 0, 0, 0, 0x0000, 0, 0, "HZC"},        // no V: signs differ
            {{0x89, 0x00}, 0x0F00, 0, 0, C, 0x1000, 0, 0, "H"},          // ADCA: the carry makes H
            {{0x89, 0xFF}, 0xFF00, 0, 0, C, 0xFF00, 0, 0, "HNC"},
            {{0xCB, 0x50}, 0x0050, 0, 0, 0, 0x00A0, 0, 0, "NV"},         // ADDB
            {{0x1B}, 0x0808, 0, 0, 0, 0x1008, 0, 0, "H"},                // ABA
            {{0xC3, 0x00, 0x01}, 0xFFFF, 0, 0, H, 0x0000, 0, 0, "HZC"},  // ADDD keeps H
            {{0xC3, 0x00, 0x01}, 0x7FFF, 0, 0, 0, 0x8000, 0, 0, "NV"},
        });
    }

    void subtractionsBorrowAndLeaveHalfCarryAlone()
    {
        RunCpuCases({
            {{0x80, 0x01}, 0x0000, 0, 0, H, 0xFF00, 0, 0, "HNC"},        // SUBA
            {{0x80, 0x01}, 0x8000, 0, 0, H, 0x7F00, 0, 0, "HV"},
            {{0x80, 0xFF}, 0x7F00, 0, 0, 0, 0x8000, 0, 0, "NVC"},
            {{0x82, 0x00}, 0x0000, 0, 0, C, 0xFF00, 0, 0, "NC"},         // SBCA: borrow in
            {{0x82, 0x00}, 0x8000, 0, 0, C, 0x7F00, 0, 0, "V"},
            {{0x82, 0xFF}, 0x0000, 0, 0, C, 0x0000, 0, 0, "ZC"},         // 0 - $FF - 1
            {{0x81, 0x20}, 0x1000, 0, 0, 0, 0x1000, 0, 0, "NC"},         // CMPA keeps A
            {{0xC1, 0x80}, 0x0001, 0, 0, 0, 0x0001, 0, 0, "NVC"},        // CMPB 1 - $80
            {{0x10}, 0x0305, 0, 0, 0, 0xFE05, 0, 0, "NC"},               // SBA
            {{0x11}, 0x0303, 0, 0, 0, 0x0303, 0, 0, "Z"},                // CBA
            {{0x83, 0x00, 0x01}, 0x8000, 0, 0, 0, 0x7FFF, 0, 0, "V"},    // SUBD
            {{0x83, 0x00, 0x01}, 0x0000, 0, 0, 0, 0xFFFF, 0, 0, "NC"},
            {{0x1A, 0x83, 0x12, 0x34}, 0x1234, 0, 0, C, 0x1234, 0, 0, "Z"},     // CPD
            {{0x8C, 0x00, 0x02}, 0, 0x0001, 0, 0, 0, 0x0001, 0, "NC"},          // CPX
            {{0x18, 0x8C, 0x00, 0x01}, 0, 0, 0x8000, 0, 0, 0, 0x8000, "V"},     // CPY
        });
    }

    void negateIncrementAndDecrementAtTheEdges()
    {
        RunCpuCases({
            {{0x40}, 0x0000, 0, 0, C, 0x0000, 0, 0, "Z"},                // NEGA 0: no carry
            {{0x40}, 0x8000, 0, 0, 0, 0x8000, 0, 0, "NVC"},              // NEGA $80 overflows
            {{0x40}, 0x0100, 0, 0, 0, 0xFF00, 0, 0, "NC"},
            {{0x50}, 0x00FF, 0, 0, H, 0x0001, 0, 0, "HC"},               // NEGB keeps H
            {{0x4C}, 0x7F00, 0, 0, C, 0x8000, 0, 0, "NVC"},              // INCA keeps C
            {{0x4C}, 0xFF00, 0, 0, 0, 0x0000, 0, 0, "Z"},
            {{0x4A}, 0x8000, 0, 0, 0, 0x7F00, 0, 0, "V"},                // DECA
            {{0x5A}, 0x0000, 0, 0, 0, 0x00FF, 0, 0, "N"},                // DECB
            {{0x09}, 0, 0x0001, 0, C, 0, 0x0000, 0, "ZC"},               // DEX: Z only
            {{0x18, 0x08}, 0, 0, 0xFFFF, 0, 0, 0, 0x0000, "Z"},          // INY wraps
        });
    }

    void decimalAdjustAfterAdditions()
    {
        // {A, addend, carry in, BCD result, carry out}: ADDA or ADCA, then DAA.
        const struct { int a, m; bool carryIn; int result; bool carry; } cases[] = {
            {0x19, 0x28, false, 0x47, false},   // H from the low digits
            {0x15, 0x27, false, 0x42, false},   // low digit above 9
            {0x08, 0x01, false, 0x09, false},   // nothing to adjust
            {0x99, 0x01, false, 0x00, true},
            {0x50, 0x50, false, 0x00, true},    // high digit above 9
            {0x99, 0x99, false, 0x98, true},    // C and H both from the addition
            {0x45, 0x54, true, 0x00, true},     // ADCA with a carry in
            {0x90, 0x90, true, 0x81, true},
        };
        for (const auto& c : cases) {
            CpuHarness h;
            h.cpu.regs.a = std::uint8_t(c.a);
            h.cpu.regs.ccr = c.carryIn ? C : 0;
            h.Run({c.carryIn ? 0x89 : 0x8B, c.m});
            h.Run({0x19});
            QCOMPARE(int(h.cpu.regs.a), c.result);
            QCOMPARE(FlagLetters(h.cpu.regs.ccr & (ccr::N | ccr::Z | C)),
                     QString(c.result >= 0x80 ? "N" : c.result ? "" : "Z") + (c.carry ? "C" : ""));
        }
    }

    void multiplyAndDivide()
    {
        const std::uint8_t nzv = ccr::N | ccr::Z | ccr::V;
        RunCpuCases({
            {{0x3D}, 0xFFFF, 0, 0, nzv | C, 0xFE01, 0, 0, "NZV"},        // MUL: C is bit 7, $01
            {{0x3D}, 0x0C0C, 0, 0, 0, 0x0090, 0, 0, "C"},                // $90
            {{0x3D}, 0x00FF, 0, 0, C, 0x0000, 0, 0, ""},                 // no Z from MUL
            {{0x02}, 0x1234, 0x0010, 0, 0, 0x0004, 0x0123, 0, ""},       // IDIV
            {{0x02}, 0x0005, 0x0007, 0, C, 0x0005, 0x0000, 0, "Z"},
            {{0x02}, 0x1234, 0x0000, 0, ccr::V, 0x1234, 0xFFFF, 0, "C"}, // by zero
            {{0x03}, 0x4000, 0x8000, 0, 0, 0x0000, 0x8000, 0, ""},       // FDIV: 0.5
            {{0x03}, 0x0001, 0x0003, 0, 0, 0x0001, 0x5555, 0, ""},
            {{0x03}, 0x0000, 0x0005, 0, C, 0x0000, 0x0000, 0, "Z"},
            {{0x03}, 0x8000, 0x8000, 0, 0, 0x8000, 0xFFFF, 0, "V"},      // IX = D overflows
            {{0x03}, 0x1234, 0x0000, 0, ccr::Z, 0x1234, 0xFFFF, 0, "VC"},   // by zero
        });
    }

    void sixteenBitShiftsAndRegisterArithmetic()
    {
        RunCpuCases({
            {{0x05}, 0x8001, 0, 0, 0, 0x0002, 0, 0, "VC"},               // LSLD
            {{0x05}, 0x4000, 0, 0, 0, 0x8000, 0, 0, "NV"},
            {{0x04}, 0x0001, 0, 0, ccr::N, 0x0000, 0, 0, "ZVC"},         // LSRD
            {{0x3A}, 0x00FF, 0xFFFF, 0, C, 0x00FF, 0x00FE, 0, "C"},      // ABX wraps, no flags
            {{0x18, 0x3A}, 0x0080, 0, 0x1000, 0, 0x0080, 0, 0x1080, ""}, // ABY: B unsigned
            {{0x8F}, 0x1234, 0xABCD, 0, 0, 0xABCD, 0x1234, 0, ""},       // XGDX
            {{0x18, 0x8F}, 0x1234, 0, 0x5678, 0, 0x5678, 0, 0x1234, ""}, // XGDY
        });
    }
};

QTEST_APPLESS_MAIN(CpuArithmeticTest)
#include "CpuArithmetic_test.moc"
