// Logic, shifts and rotates at their edges, the read-modify-write forms on
// memory, 16-bit address wrap, and the bit instructions.
#include <QtTest>

#include "support/CpuHarness.h"

using namespace hc11;

namespace {
constexpr std::uint8_t C = ccr::C, V = ccr::V;
}

class CpuLogicShiftTest : public QObject {
    Q_OBJECT
private slots:
    void logicClearsOverflowAndKeepsCarry()
    {
        RunCpuCases({
            {{0x84, 0x0F}, 0xF000, 0, 0, V | C, 0x0000, 0, 0, "ZC"},     // ANDA
            {{0x8A, 0x80}, 0x0100, 0, 0, V, 0x8100, 0, 0, "N"},          // ORAA
            {{0xC8, 0xFF}, 0x00FF, 0, 0, 0, 0x0000, 0, 0, "Z"},          // EORB
            {{0x85, 0x80}, 0x8000, 0, 0, V, 0x8000, 0, 0, "N"},          // BITA keeps A
            {{0x86, 0x00}, 0x5566, 0, 0, V | C, 0x0066, 0, 0, "ZC"},     // LDAA
            {{0x16}, 0x8000, 0, 0, V, 0x8080, 0, 0, "N"},                // TAB
            {{0x43}, 0x0000, 0, 0, V, 0xFF00, 0, 0, "NC"},               // COMA sets C
            {{0x4F}, 0xFF00, 0, 0, 0x0F, 0x0000, 0, 0, "Z"},             // CLRA
            {{0x4D}, 0x8000, 0, 0, V | C, 0x8000, 0, 0, "N"},            // TSTA clears C
        });
    }

    void shiftsAndRotatesAtTheEdges()
    {
        // V is N xor C after every shift and rotate.
        RunCpuCases({
            {{0x47}, 0x8000, 0, 0, 0, 0xC000, 0, 0, "NV"},               // ASRA keeps the sign
            {{0x47}, 0x0100, 0, 0, 0, 0x0000, 0, 0, "ZVC"},
            {{0x57}, 0x00FF, 0, 0, 0, 0x00FF, 0, 0, "NC"},               // ASRB: N and C, no V
            {{0x44}, 0x0100, 0, 0, 0, 0x0000, 0, 0, "ZVC"},              // LSRA
            {{0x48}, 0x4000, 0, 0, 0, 0x8000, 0, 0, "NV"},               // LSLA
            {{0x48}, 0x8000, 0, 0, 0, 0x0000, 0, 0, "ZVC"},
            {{0x49}, 0x8000, 0, 0, 0, 0x0000, 0, 0, "ZVC"},              // ROLA: C out
            {{0x49}, 0x0000, 0, 0, C, 0x0100, 0, 0, ""},                 // ROLA: C in
            {{0x59}, 0x007F, 0, 0, C, 0x00FF, 0, 0, "NV"},               // ROLB
            {{0x46}, 0x0100, 0, 0, 0, 0x0000, 0, 0, "ZVC"},              // RORA
            {{0x46}, 0x0000, 0, 0, C, 0x8000, 0, 0, "NV"},
            {{0x56}, 0x00FF, 0, 0, C, 0x00FF, 0, 0, "NC"},               // RORB
        });
    }

    void memoryFormsMatchTheAccumulatorForms()
    {
        // Every read-modify-write row on memory must do what its accumulator
        // twin (NEG and NEGA...) does, at the address its mode names.
        const int values[] = {0x00, 0x01, 0x40, 0x7F, 0x80, 0xC1, 0xFF};
        int rows = 0;
        for (const Instruction& row : AllInstructions()) {
            // $6x, $7x and $18 $6x operate on memory like $4x on A; JMP has no twin.
            const Instruction* twin = FindInstruction(0, 0x40 | (row.opcode & 0x0F));
            if ((row.opcode & 0xE0) != 0x60 || !twin)
                continue;
            ++rows;
            for (int value : values) {
                for (std::uint8_t carry : {std::uint8_t(0), C}) {
                    CpuHarness reg;
                    reg.cpu.regs.a = std::uint8_t(value);
                    reg.cpu.regs.ccr = carry;
                    reg.Run({twin->opcode});
                    // Operand $F0 from IX or IY $FF20 wraps to $0010; extended is $0010 itself.
                    CpuHarness mem;
                    mem.cpu.regs.ix = mem.cpu.regs.iy = 0xFF20;
                    mem.cpu.regs.ccr = carry;
                    mem.memory.bytes[0x0010] = std::uint8_t(value);
                    const int operand = row.mode == Mode::Extended ? 0x00 : 0xF0;
                    row.page ? mem.Run({row.page, row.opcode, operand}) : mem.Run({row.opcode, operand, 0x10});
                    const QByteArray what = MnemonicName(row.mnemonic).data() + QByteArray::number(value);
                    const std::uint8_t expected = row.mnemonic == Mnemonic::TST ? std::uint8_t(value) : reg.cpu.regs.a;
                    QVERIFY2(mem.memory.bytes[0x0010] == expected, what);
                    QVERIFY2(mem.cpu.regs.ccr == reg.cpu.regs.ccr, what);
                }
            }
        }
        QCOMPARE(rows, 33);   // 11 operations in three modes each
    }

    void effectiveAddressesWrapAtSixteenBits()
    {
        CpuHarness h;
        h.memory.bytes[0x007F] = 0x42;
        h.cpu.regs.ix = 0xFF80;
        h.Run({0xA6, 0xFF});                      // LDAA $FF,X reads $007F
        QCOMPARE(int(h.cpu.regs.a), 0x42);

        h.cpu.regs.iy = 0xFFF8;
        h.Run({0x18, 0xA7, 0x10});                // STAA $10,Y writes $0008
        QCOMPARE(int(h.memory.bytes[0x0008]), 0x42);

        h.Poke(0xFFFF, {0x12, 0x34});             // a word across the top of memory
        h.Run({0xFC, 0xFF, 0xFF});                // LDD $FFFF
        QCOMPARE(int(h.cpu.regs.D()), 0x1234);
        h.cpu.regs.ix = 0xABCD;
        h.Run({0xFF, 0xFF, 0xFF});                // STX $FFFF
        QCOMPARE(int(h.memory.bytes[0xFFFF]), 0xAB);
        QCOMPARE(int(h.memory.bytes[0x0000]), 0xCD);

        h.memory.bytes[0x0001] = 0x77;
        h.cpu.regs.iy = 0xFFFF;
        h.Run({0xCD, 0xEE, 0x01});                // LDX 1,Y reads $0000 and $0001
        QCOMPARE(int(h.cpu.regs.ix), 0xCD77);
    }

    void bitSetAndClearOnDirectAndIndexedOperands()
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
        h.memory.bytes[0x20] = 0xA5;
        QCOMPARE(h.Run({0x18, 0x1C, 0x20, 0x00}), 8);           // BSET $20,Y #0 (IY 0): flags only
        QCOMPARE(int(h.memory.bytes[0x20]), 0xA5);
        QCOMPARE(FlagLetters(h.cpu.regs.ccr), QString("NC"));
        QCOMPARE(int(h.cpu.regs.pc), CpuHarness::Origin + 4);
    }

    void bitBranchesWithMasksZeroAndAllOnes()
    {
        const struct { int value, mask; bool brsetTaken, brclrTaken; } cases[] = {
            {0x00, 0x00, true, true},     // mask 0: both branch
            {0xFF, 0x00, true, true},
            {0xFF, 0xFF, true, false},
            {0x00, 0xFF, false, true},
            {0x7F, 0xFF, false, false},
            {0x55, 0x14, true, false},
            {0x55, 0x02, false, true},
        };
        // Direct, indexed X and indexed Y forms of BRSET; BRCLR is one above.
        const std::vector<int> forms[] = {{0x12}, {0x1E}, {0x18, 0x1E}};
        for (const auto& c : cases) {
            for (const auto& form : forms) {
                for (int clear = 0; clear < 2; ++clear) {
                    CpuHarness h;
                    h.memory.bytes[0x30] = std::uint8_t(c.value);
                    h.cpu.regs.ix = h.cpu.regs.iy = 0x0020;
                    h.cpu.regs.ccr = 0x0F;
                    const int operand = form.size() == 1 && form[0] == 0x12 ? 0x30 : 0x10;
                    const int opcode = form.back() + clear;
                    const int length = int(form.size()) + 3;
                    if (form.size() == 2)
                        h.Run({0x18, opcode, operand, c.mask, 0xF0});
                    else
                        h.Run({opcode, operand, c.mask, 0xF0});
                    const bool taken = clear ? c.brclrTaken : c.brsetTaken;
                    const int next = CpuHarness::Origin + length + (taken ? -0x10 : 0);
                    QVERIFY2(h.cpu.regs.pc == next && h.cpu.regs.ccr == 0x0F,
                             qPrintable(QString("opcode %1 value %2 mask %3").arg(opcode, 0, 16).arg(c.value).arg(c.mask)));
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(CpuLogicShiftTest)
#include "CpuLogicShift_test.moc"
