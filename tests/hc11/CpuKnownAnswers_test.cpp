// Known answers for the data instructions, with the flag cases where emulators
// usually go wrong: H and V of additions, borrows, NEG of $80, DAA after
// carries, division by zero, shifts at the edges, 16-bit address wrap and
// the bit instructions with masks 0 and $FF.

#include "support/CpuHarness.h"

using namespace hc11;

namespace {
constexpr std::uint8_t C = ccr::C, V = ccr::V, H = ccr::H;
}

class CpuKnownAnswersTest : public QObject {
    Q_OBJECT
private slots:
    void additionsAndSubtractions()
    {
        RunCpuCases({
            {{0x8B, 0x08}, 0x0800, 0, 0, 0, 0x1000, 0, 0, "H"},          // ADDA: carry out of bit 3
            {{0x8B, 0x01}, 0x7F00, 0, 0, 0, 0x8000, 0, 0, "HNV"},        // into the sign
            {{0x8B, 0x80}, 0x8000, 0, 0, 0, 0x0000, 0, 0, "ZVC"},
            {{0x8B, 0x01}, 0xFF00, 0, 0, 0, 0x0000, 0, 0, "HZC"},        // no V: signs differ
            {{0x89, 0x00}, 0x0F00, 0, 0, C, 0x1000, 0, 0, "H"},          // ADCA: the carry makes H
            {{0x89, 0xFF}, 0xFF00, 0, 0, C, 0xFF00, 0, 0, "HNC"},
            {{0xC3, 0x00, 0x01}, 0xFFFF, 0, 0, H, 0x0000, 0, 0, "HZC"},  // ADDD keeps H
            {{0x80, 0x01}, 0x0000, 0, 0, H, 0xFF00, 0, 0, "HNC"},        // SUBA leaves H alone
            {{0x80, 0x01}, 0x8000, 0, 0, H, 0x7F00, 0, 0, "HV"},
            {{0x80, 0xFF}, 0x7F00, 0, 0, 0, 0x8000, 0, 0, "NVC"},
            {{0x82, 0x00}, 0x8000, 0, 0, C, 0x7F00, 0, 0, "V"},          // SBCA: borrow in
            {{0x82, 0xFF}, 0x0000, 0, 0, C, 0x0000, 0, 0, "ZC"},         // 0 - $FF - 1
            {{0x81, 0x20}, 0x1000, 0, 0, 0, 0x1000, 0, 0, "NC"},         // CMPA keeps A
            {{0x83, 0x00, 0x01}, 0x8000, 0, 0, 0, 0x7FFF, 0, 0, "V"},    // SUBD
            {{0x1A, 0x83, 0x12, 0x34}, 0x1234, 0, 0, C, 0x1234, 0, 0, "Z"},     // CPD
            {{0x18, 0x8C, 0x00, 0x01}, 0, 0, 0x8000, 0, 0, 0, 0x8000, "V"},     // CPY
            {{0x40}, 0x0000, 0, 0, C, 0x0000, 0, 0, "Z"},                // NEGA 0: no carry
            {{0x40}, 0x8000, 0, 0, 0, 0x8000, 0, 0, "NVC"},              // NEGA $80 overflows
            {{0x50}, 0x00FF, 0, 0, H, 0x0001, 0, 0, "HC"},               // NEGB keeps H
            {{0x4C}, 0x7F00, 0, 0, C, 0x8000, 0, 0, "NVC"},              // INCA keeps C
            {{0x09}, 0, 0x0001, 0, C, 0, 0x0000, 0, "ZC"},               // DEX: Z only
            {{0x18, 0x09}, 0, 0, 0x8000, 0, 0, 0, 0x7FFF, ""},          // DEY: one down, no V
            {{0x18, 0x08}, 0, 0, 0xFFFF, 0, 0, 0, 0x0000, "Z"},         // INY wraps
            {{0x08}, 0, 0x00FF, 0, 0, 0, 0x0100, 0, ""},                 // INX carries into the high byte
            {{0x3A}, 0x00FF, 0xFFFF, 0, C, 0x00FF, 0x00FE, 0, "C"},      // ABX wraps, no flags
        });
    }

    void decimalAdjustAfterAdditions()
    {
        // ADDA, or ADCA with a carry in, then DAA.
        const struct { int a, m; bool carryIn; int result; bool carry; } cases[] = {
            {0x19, 0x28, false, 0x47, false},   // H from the low digits
            {0x15, 0x27, false, 0x42, false},   // low digit above 9
            {0x50, 0x50, false, 0x00, true},    // high digit above 9
            {0x99, 0x99, false, 0x98, true},    // C and H both from the addition
            {0x45, 0x54, true, 0x00, true},
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

    void multiplyDivideLogicAndShifts()
    {
        const std::uint8_t nzv = ccr::N | ccr::Z | V;
        RunCpuCases({
            {{0x3D}, 0xFFFF, 0, 0, nzv | C, 0xFE01, 0, 0, "NZV"},        // MUL: C is bit 7, $01
            {{0x3D}, 0x0C0C, 0, 0, 0, 0x0090, 0, 0, "C"},                // $90
            {{0x3D}, 0x00FF, 0, 0, C, 0x0000, 0, 0, ""},                 // no Z from MUL
            {{0x02}, 0x1234, 0x0010, 0, 0, 0x0004, 0x0123, 0, ""},       // IDIV
            {{0x02}, 0x1234, 0x0000, 0, V, 0x1234, 0xFFFF, 0, "C"},      // by zero
            {{0x03}, 0x4000, 0x8000, 0, 0, 0x0000, 0x8000, 0, ""},       // FDIV: 0.5
            {{0x03}, 0x0001, 0x0003, 0, 0, 0x0001, 0x5555, 0, ""},
            {{0x03}, 0x8000, 0x8000, 0, 0, 0x8000, 0xFFFF, 0, "V"},      // IX = D overflows
            {{0x03}, 0x1234, 0x0000, 0, ccr::Z, 0x1234, 0xFFFF, 0, "VC"},   // by zero
            {{0x84, 0x0F}, 0xF000, 0, 0, V | C, 0x0000, 0, 0, "ZC"},     // ANDA clears V, keeps C
            {{0x43}, 0x0000, 0, 0, V, 0xFF00, 0, 0, "NC"},               // COMA sets C
            {{0x4D}, 0x8000, 0, 0, V | C, 0x8000, 0, 0, "N"},            // TSTA clears C
            // Shifts and rotates: V is N xor C.
            {{0x47}, 0x8000, 0, 0, 0, 0xC000, 0, 0, "NV"},               // ASRA keeps the sign
            {{0x47}, 0x0100, 0, 0, 0, 0x0000, 0, 0, "ZVC"},
            {{0x57}, 0x00FF, 0, 0, 0, 0x00FF, 0, 0, "NC"},               // ASRB: N and C, no V
            {{0x49}, 0x8000, 0, 0, 0, 0x0000, 0, 0, "ZVC"},              // ROLA: C out
            {{0x49}, 0x0000, 0, 0, C, 0x0100, 0, 0, ""},                 // ROLA: C in
            {{0x46}, 0x0100, 0, 0, 0, 0x0000, 0, 0, "ZVC"},              // RORA
            {{0x46}, 0x0000, 0, 0, C, 0x8000, 0, 0, "NV"},
            {{0x05}, 0x8001, 0, 0, 0, 0x0002, 0, 0, "VC"},               // LSLD
            {{0x04}, 0x0001, 0, 0, ccr::N, 0x0000, 0, 0, "ZVC"},         // LSRD
        });
    }

    void memoryFormsMatchTheAccumulatorForms()
    {
        // Each read-modify-write row on memory ($6x, $7x, $18 $6x) does what its twin on A does.
        int rows = 0;
        for (const Instruction& row : AllInstructions()) {
            const Instruction* twin = FindInstruction(0, 0x40 | (row.opcode & 0x0F));
            if ((row.opcode & 0xE0) != 0x60 || !twin)
                continue;
            ++rows;
            for (int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
                CpuHarness reg, mem;
                reg.cpu.regs.a = std::uint8_t(value);
                reg.cpu.regs.ccr = mem.cpu.regs.ccr = value & 1 ? C : 0;
                reg.Run({twin->opcode});
                mem.cpu.regs.ix = mem.cpu.regs.iy = 0xFF20;   // $F0 from $FF20 wraps to $0010
                mem.memory.bytes[0x0010] = std::uint8_t(value);
                const int operand = row.mode == Mode::Extended ? 0x00 : 0xF0;
                row.page ? mem.Run({row.page, row.opcode, operand}) : mem.Run({row.opcode, operand, 0x10});
                const std::uint8_t expected = row.mnemonic == Mnemonic::TST ? std::uint8_t(value) : reg.cpu.regs.a;
                QVERIFY2(mem.memory.bytes[0x0010] == expected && mem.cpu.regs.ccr == reg.cpu.regs.ccr,
                         MnemonicName(row.mnemonic).data() + QByteArray::number(value));
            }
        }
        QCOMPARE(rows, 33);   // 11 operations in three modes each
    }

    // Indexed addresses that wrap are the memory forms' test's.
    void wordsWrapAtTheTopOfMemory()
    {
        CpuHarness h;
        h.cpu.regs.ix = 0xABCD;
        h.Run({0xFF, 0xFF, 0xFF});                // STX $FFFF: a word across the top
        QCOMPARE(int(h.memory.bytes[0xFFFF]), 0xAB);
        QCOMPARE(int(h.memory.bytes[0x0000]), 0xCD);
        h.Run({0xFC, 0xFF, 0xFF});                // LDD $FFFF
        QCOMPARE(int(h.cpu.regs.D()), 0xABCD);
    }

    void bitSetAndClearTouchOnlyTheirFlags()
    {
        CpuHarness h;
        h.memory.bytes[0x20] = 0x10;
        h.cpu.regs.ccr = V | C;
        h.cpu.regs.ix = 0x0010;
        QCOMPARE(h.Run({0x14, 0x20, 0x81}), 6);                 // BSET $20 #$81
        QCOMPARE(int(h.memory.bytes[0x20]), 0x91);
        QCOMPARE(FlagLetters(h.cpu.regs.ccr), QString("NC"));
        QCOMPARE(h.Run({0x1D, 0x10, 0xFF}), 7);                 // BCLR $10,X #$FF
        QCOMPARE(int(h.memory.bytes[0x20]), 0x00);
        QCOMPARE(FlagLetters(h.cpu.regs.ccr), QString("ZC"));
    }

    void bitBranchesWithMasksZeroAndAllOnes()
    {
        const struct { int value, mask; bool brsetTaken, brclrTaken; } cases[] = {
            {0x00, 0x00, true, true},     // mask 0: both branch
            {0xFF, 0xFF, true, false},
            {0x00, 0xFF, false, true},
            {0x7F, 0xFF, false, false},
            {0x30, 0xC0, false, true},    // the mask byte, not the offset, is tested
        };
        // BRSET and BRCLR (one above) direct, indexed by X and by Y.
        for (const auto& c : cases) {
            for (const std::vector<int>& form : {std::vector<int>{0x12}, {0x1E}, {0x18, 0x1E}}) {
                for (int clear = 0; clear < 2; ++clear) {
                    CpuHarness h;
                    h.memory.bytes[0x30] = std::uint8_t(c.value);
                    h.cpu.regs.ix = h.cpu.regs.iy = 0x0020;
                    h.cpu.regs.ccr = 0x0F;
                    const int opcode = form.back() + clear, operand = form[0] == 0x12 ? 0x30 : 0x10;
                    form.size() == 2 ? h.Run({0x18, opcode, operand, c.mask, 0xF0}) : h.Run({opcode, operand, c.mask, 0xF0});
                    const bool taken = clear ? c.brclrTaken : c.brsetTaken;
                    const int next = CpuHarness::Origin + int(form.size()) + 3 - (taken ? 0x10 : 0);
                    QVERIFY2(h.cpu.regs.pc == next && h.cpu.regs.ccr == 0x0F,
                             qPrintable(QString("opcode %1 value %2 mask %3").arg(opcode, 0, 16).arg(c.value).arg(c.mask)));
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(CpuKnownAnswersTest)
#include "CpuKnownAnswers_test.moc"
