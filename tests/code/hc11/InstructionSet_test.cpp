#include <QtTest>

#include "code/hc11/InstructionSet.h"

using namespace hc11;

class InstructionSetTest : public QObject {
    Q_OBJECT
private slots:
    void pagesHoldTheirRowCounts()
    {
        int perPage[256] = {};
        for (const Instruction& row : AllInstructions())
            ++perPage[row.page];
        QCOMPARE(perPage[0x00], 232);
        QCOMPARE(perPage[0x18], 64);
        QCOMPARE(perPage[0x1A], 7);
        QCOMPARE(perPage[0xCD], 4);

        int illegal = 0, prefixes = 0;
        for (int b = 0; b < 256; ++b) {
            if (IsPrefix(b))
                ++prefixes;
            else if (!FindInstruction(0, b))
                ++illegal;
        }
        QCOMPARE(illegal, 21);
        QCOMPARE(prefixes, 3);
    }

    void everyMnemonicIsUsedAndLengthsFollowTheMode()
    {
        bool used[MnemonicCount] = {};
        for (const Instruction& row : AllInstructions()) {
            used[static_cast<int>(row.mnemonic)] = true;
            QCOMPARE(int(row.length), (row.page ? 2 : 1) + OperandBytes(row.mode));
            QCOMPARE(FindInstruction(row.page, row.opcode), &row);
        }
        for (int m = 0; m < MnemonicCount; ++m)
            QVERIFY2(used[m], MnemonicName(Mnemonic(m)).data());
    }

    void spotRowsOfTheTable()
    {
        // A store has no immediate form; $00 is illegal; $8F and $CF are inherent.
        QVERIFY(!FindInstruction(0, 0x87));
        QVERIFY(!FindInstruction(0, 0xC7));
        QVERIFY(!FindInstruction(0, 0x00));
        QCOMPARE(FindInstruction(0, 0x8F)->mnemonic, Mnemonic::XGDX);
        QCOMPARE(FindInstruction(0, 0xCF)->mnemonic, Mnemonic::STOP);
        QCOMPARE(FindInstruction(0, 0x8D)->mode, Mode::Relative);
        QCOMPARE(FindInstruction(0x18, 0xAC)->mnemonic, Mnemonic::CPY);
        QCOMPARE(FindInstruction(0x18, 0xAC)->mode, Mode::IndexedY);
        QCOMPARE(FindInstruction(0x1A, 0xAC)->mode, Mode::IndexedX);
        QCOMPARE(FindInstruction(0xCD, 0xAC)->mnemonic, Mnemonic::CPX);
        QVERIFY(!FindInstruction(0x18, 0x12));
        QCOMPARE(DecodeOpcode(0x18, 0x1E)->length, std::uint8_t(5));
        // Cycle counts the status bar's clock depends on.
        QCOMPARE(FindInstruction(0, 0x3E)->cycles, std::uint8_t(0));   // WAI
        QCOMPARE(FindInstruction(0, 0x02)->cycles, std::uint8_t(41));  // IDIV
        QCOMPARE(FindInstruction(0, 0x3F)->cycles, std::uint8_t(14));  // SWI
        QCOMPARE(FindInstruction(0x18, 0x1E)->cycles, std::uint8_t(8));
        QCOMPARE(FindInstruction(0, 0xCF)->cycles, std::uint8_t(2));   // STOP
    }
};

QTEST_APPLESS_MAIN(InstructionSetTest)
#include "InstructionSet_test.moc"
