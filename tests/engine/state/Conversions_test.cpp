#include "engine/state/Conversions.h"

class ConversionsTest : public QObject {
    Q_OBJECT
private slots:
    void parseNumberKeepsEachNotationWithinItsLimits()
    {
        // -1: refused.
        const struct { QString text; bool wide; int value; } rows[] = {
            {"65535", true, 65535}, {"00012", false, 12}, {"$fF", false, 255}, {"$FFFF", true, 0xFFFF},
            {"%0000000000000001", false, 1}, {"%11111111", false, 255}, {"@177777", true, 65535},
            {"", true, -1}, {"$", true, -1}, {"%", true, -1}, {"@", true, -1}, {"$10000", true, -1},
            {"$100", false, -1}, {"65536", true, -1}, {"000001", true, -1}, {"256", false, -1},
            {"%100000000", false, -1}, {"%1" + QString(40, '0'), true, -1}, {"%102", true, -1},
            {"@8", true, -1}, {"@0000001", true, -1}, {" 12", true, -1}, {"A0", true, -1}, {"-1", true, -1},
        };
        for (const auto& row : rows)
            QVERIFY2(ParseNumber(row.text, row.wide) == row.value, qPrintable(row.text));
    }

    void formatHexTabsAndChecksum()
    {
        QCOMPARE(FormatValue(0x1FF, "%", false), QString("%111111111"));   // wider values keep all digits
        QCOMPARE(FormatValue(7, "@", false), QString());                    // no octal cells
        QCOMPARE(HexToLong("1G2"), 0x12);   // what is not an upper-case digit is skipped
        QCOMPARE(HexToLong("S1 13 0A"), 0x1130A);
        QCOMPARE(HexPadded(0xA, 2) + HexPadded(0x1234, 2), QString("0A1234"));   // pads, never cuts
        // Tab stops every nine columns.
        QCOMPARE(ExpandTabs("12345678\tx") + ExpandTabs("123456789\tx"), "12345678 x123456789" + QString(9, ' ') + "x");
        QCOMPARE(int(ChecksumOf(QByteArray(300, char(0xFF)), 257)), (257 * 0xFF) % 256);
    }

    void splitFileNameUsesTheLastPoint()
    {
        const QString rows[][3] = {{"noext", "noext", ""}, {"/home/a.b/file", "/home/a", "b/file"}};
        for (const auto& row : rows) {
            QString base, ext;
            SplitFileName(row[0], base, ext);
            QVERIFY2(base == row[1] && ext == row[2], qPrintable(row[0]));
        }
    }
};

QTEST_APPLESS_MAIN(ConversionsTest)
#include "Conversions_test.moc"
