// The plain rules of the register rows: cell texts by the row's width, the
// flag letters, what the value dialog starts from, the bytes a value
// becomes, and a row's value in a block copy.
#include <QtTest>

#include "core/Conversions.h"
#include "views/RegisterRows.h"

#include <array>

namespace {
const RegisterRow Byte{.name = "PORTA", .address = 0x1000};
const RegisterRow Word{.name = "TOC1", .address = 0x1016, .isWord = true};
const RegisterRow Flags{.name = "CCR", .address = 0x0008, .format = '%', .flagLetters = true};
}  // namespace

class RegisterRowsTest : public QObject {
    Q_OBJECT
private slots:
    void cellsFollowTheRowsWidthAndParseBack()
    {
        // Binary keeps all digits of the row's width, also for 0; decimal is never padded.
        QCOMPARE(CellText(Byte, 0, '%'), QString("%00000000"));
        QCOMPARE(CellText(Word, 0, '%'), QString("%0000000000000000"));
        QCOMPARE(CellText(Word, 0x0A, '$'), QString("$000A"));
        QCOMPARE(CellText(Word, 4660, ' '), QString("4660"));
        for (char format : {' ', '$', '%'})
            QCOMPARE(ParseNumber(EntryTextOf(Word, 0xBEEF, CellText(Word, 0xBEEF, format)), true), 0xBEEF);
    }

    void flagLettersStandForSetBitsWhateverTheFormat()
    {
        QCOMPARE(FlagText(0xD1), QString("%SX0I000C"));
        QCOMPARE(FlagText(0x00), QString("%00000000"));
        QCOMPARE(FlagText(0xFF), QString("%SXHINZVC"));
        QCOMPARE(FlagText(0x2A), QString("%00H0N0V0"));
        QCOMPARE(CellText(Flags, 0xD1, '$'), QString("%SX0I000C"));
        // The dialog knows no letters: it starts from plain binary, which it reads back.
        const QString start = EntryTextOf(Flags, 0xD1, FlagText(0xD1));
        QCOMPARE(start, QString("%11010001"));
        QCOMPARE(ParseNumber(start, false), 0xD1);
    }

    void valuesBecomeBytesHighFirst()
    {
        QCOMPARE(WriteBytesOf(Byte, 0xA5), (std::vector<std::uint8_t>{0xA5}));
        QCOMPARE(WriteBytesOf(Word, 0x1234), (std::vector<std::uint8_t>{0x12, 0x34}));
        QCOMPARE(WriteBytesOf(Word, 0xFF00), (std::vector<std::uint8_t>{0xFF, 0x00}));
        QCOMPARE(WriteBytesOf(Word, 65535), (std::vector<std::uint8_t>{0xFF, 0xFF}));
    }

    void aRowReadsItsBytesFromTheBlockCopy()
    {
        std::array<std::uint8_t, 64> block{};
        block[0x00] = 0x5A;
        block[0x16] = 0xBE;
        block[0x17] = 0xEF;
        block[0x3F] = 0x0D;
        QCOMPARE(BlockValue(Byte, block, 0x1000), 0x5A);
        QCOMPARE(BlockValue(Word, block, 0x1000), 0xBEEF);
        const RegisterRow last{.name = "CONFIG", .address = 0x103F, .format = '%', .readOnly = true};
        QCOMPARE(BlockValue(last, block, 0x1000), 0x0D);
    }
};

QTEST_APPLESS_MAIN(RegisterRowsTest)
#include "RegisterRows_test.moc"
