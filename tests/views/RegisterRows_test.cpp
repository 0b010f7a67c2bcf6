// The plain rules of the register rows: cell texts in every format and width,
// the flag letters, what the value dialog starts from, the bytes a value
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
    void cellsInEveryFormatAndWidth_data()
    {
        QTest::addColumn<bool>("word");
        QTest::addColumn<int>("value");
        QTest::addColumn<char>("format");
        QTest::addColumn<QString>("cell");
        QTest::newRow("byte dec") << false << 10 << ' ' << "10";
        QTest::newRow("byte hex") << false << 10 << '$' << "$0A";
        QTest::newRow("byte bin") << false << 10 << '%' << "%00001010";
        QTest::newRow("byte bin zero keeps 8 digits") << false << 0 << '%' << "%00000000";
        QTest::newRow("word dec unpadded") << true << 4660 << ' ' << "4660";
        QTest::newRow("word dec zero") << true << 0 << ' ' << "0";
        QTest::newRow("word hex") << true << 4660 << '$' << "$1234";
        QTest::newRow("word hex small value padded") << true << 0x0A << '$' << "$000A";
        QTest::newRow("word bin") << true << 4660 << '%' << "%0001001000110100";
        QTest::newRow("word bin zero keeps 16 digits") << true << 0 << '%' << "%0000000000000000";
    }
    void cellsInEveryFormatAndWidth()
    {
        QFETCH(bool, word);
        QFETCH(int, value);
        QFETCH(char, format);
        QFETCH(QString, cell);
        QCOMPARE(CellText(word ? Word : Byte, value, format), cell);
        // What is shown parses back to the same value when the user just presses Enter.
        QCOMPARE(ParseNumber(EntryTextOf(word ? Word : Byte, value, cell), word), value);
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
