#include <QtTest>

#include "code/SymbolTable.h"
#include "core/Conversions.h"

class ConversionsTest : public QObject {
    Q_OBJECT
private slots:
    void parseNumberAcceptsEachNotation_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("wide");
        QTest::addColumn<int>("value");
        QTest::newRow("decimal") << "200" << false << 200;
        QTest::newRow("decimal wide max") << "65535" << true << 65535;
        QTest::newRow("leading zeros") << "00012" << false << 12;
        QTest::newRow("hex lower case") << "$fF" << false << 255;
        QTest::newRow("hex wide") << "$FFFF" << true << 0xFFFF;
        QTest::newRow("binary narrow max") << "%11111111" << false << 255;
        QTest::newRow("binary long with zeros") << "%0000000000000001" << false << 1;
        QTest::newRow("octal narrow max") << "@377" << false << 255;
        QTest::newRow("octal six digits") << "@177777" << true << 65535;
        QTest::newRow("zero") << "0" << false << 0;
    }
    void parseNumberAcceptsEachNotation()
    {
        QFETCH(QString, text);
        QFETCH(bool, wide);
        QFETCH(int, value);
        QCOMPARE(ParseNumber(text, wide), value);
    }

    void parseNumberRefusesWhatIsNotANumberOrTooBig_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("wide");
        QTest::newRow("empty") << "" << true;
        QTest::newRow("lone dollar") << "$" << true;
        QTest::newRow("lone percent") << "%" << true;
        QTest::newRow("lone at") << "@" << true;
        QTest::newRow("hex six characters") << "$10000" << true;
        QTest::newRow("hex over narrow") << "$100" << false;
        QTest::newRow("decimal over wide by value") << "65536" << true;
        QTest::newRow("decimal over wide by length") << "100000" << true;
        QTest::newRow("decimal zeros too long") << "000001" << true;
        QTest::newRow("decimal over narrow") << "256" << false;
        QTest::newRow("binary over narrow") << "%100000000" << false;
        QTest::newRow("binary past 32 bits") << "%1" + QString(40, '0') << true;
        QTest::newRow("binary digit 2") << "%102" << true;
        QTest::newRow("octal digit 8") << "@8" << true;
        QTest::newRow("octal digit 8 narrow") << "@8" << false;
        QTest::newRow("octal eight characters") << "@0000001" << true;
        QTest::newRow("leading blank") << " 12" << true;
        QTest::newRow("trailing blank") << "12 " << true;
        QTest::newRow("letter first") << "A0" << true;
        QTest::newRow("hex with G") << "$1G" << true;
        QTest::newRow("minus") << "-1" << true;
    }
    void parseNumberRefusesWhatIsNotANumberOrTooBig()
    {
        QFETCH(QString, text);
        QFETCH(bool, wide);
        QCOMPARE(ParseNumber(text, wide), -1);
    }

    void hexToLongSkipsWhatIsNotAnUpperCaseDigit()
    {
        QCOMPARE(HexToLong("1G2"), 0x12);
        QCOMPARE(HexToLong(""), 0);
        QCOMPARE(HexToLong("ff"), 0);   // lower case is not a digit here
        QCOMPARE(HexToLong("S1 13 0A"), 0x1130A);
        QCOMPARE(HexToLong("FFFF"), 0xFFFF);
    }

    void hexPaddedPadsButNeverCuts()
    {
        QCOMPARE(HexPadded(0xA, 2), QString("0A"));
        QCOMPARE(HexPadded(0x1234, 2), QString("1234"));
        QCOMPARE(HexPadded(0, 4), QString("0000"));
        QCOMPARE(HexPadded(0xBEEF, 0), QString("BEEF"));
    }

    void formatValueWritesEachNotation()
    {
        QCOMPARE(FormatValue(5, "%", false), QString("%00000101"));
        QCOMPARE(FormatValue(0, "%", false), QString("%00000000"));
        QCOMPARE(FormatValue(5, "%", true), QString("%0000000000000101"));
        QCOMPARE(FormatValue(0x1FF, "%", false), QString("%111111111"));   // wider values keep all digits
        QCOMPARE(FormatValue(5, "$", true), QString("$0005"));
        QCOMPARE(FormatValue(0xAB, "$", false), QString("$AB"));
        QCOMPARE(FormatValue(0x1234, "$", false), QString("$1234"));
        QCOMPARE(FormatValue(65535, " ", true), QString("65535"));
        QCOMPARE(FormatValue(7, " ", false), QString("7"));
        QCOMPARE(FormatValue(7, "@", false), QString());
        QCOMPARE(FormatValue(7, "", false), QString());
    }

    void formattedValuesParseBack()
    {
        for (int value : {0, 1, 127, 128, 255}) {
            for (const char* prefix : {" ", "$", "%"}) {
                const QString text = FormatValue(value, prefix, false).trimmed();
                QCOMPARE(ParseNumber(text, false), value);
            }
        }
        QCOMPARE(ParseNumber(FormatValue(65535, "%", true), true), 65535);
    }

    void expandTabsStopsEveryNineColumns()
    {
        QCOMPARE(ExpandTabs("\t"), QString(9, ' '));
        QCOMPARE(ExpandTabs("ab\tc"), QString("ab") + QString(7, ' ') + "c");
        QCOMPARE(ExpandTabs("12345678\tx"), QString("12345678 x"));
        QCOMPARE(ExpandTabs("123456789\tx"), QString("123456789") + QString(9, ' ') + "x");
        QCOMPARE(ExpandTabs("\t\t").size(), 18);
        QCOMPARE(ExpandTabs("no tabs"), QString("no tabs"));
    }

    void checksumLeavesByteZeroOut()
    {
        const QByteArray frame = QByteArray::fromHex("52E0000105");
        QCOMPARE(int(ChecksumOf(frame, 4)), 0xE6);
        QCOMPARE(int(ChecksumOf(frame, 0)), 0);
        // A frame's last byte makes the sum over index 1 to the end zero.
        QByteArray withSum = frame.left(4);
        withSum.append(char((256 - ChecksumOf(withSum, 3)) % 256));
        QCOMPARE(int(ChecksumOf(withSum, 4)), 0);
        QCOMPARE(int(ChecksumOf(QByteArray(300, char(0xFF)), 257)), (257 * 0xFF) % 256);
    }

    void symbolValueFindsTheFirstUpperCaseName()
    {
        SymbolTable = {{0x100, 0, {}, "START", ""}, {0x200, 0, {}, "loop", ""}, {0x300, 0, {}, "START", ""}};
        SymbolCount = 3;
        QString name = "start";
        QCOMPARE(SymbolValue(name), 0x100);
        QCOMPARE(name, QString("START"));
        QString lower = "loop";
        QCOMPARE(SymbolValue(lower), -1);   // only names stored in upper case are found
        QString missing = "END";
        QCOMPARE(SymbolValue(missing), -1);
        SymbolCount = 0;
        QString none = "START";
        QCOMPARE(SymbolValue(none), -1);
        SymbolTable.clear();
    }

    void splitFileNameUsesTheLastPoint()
    {
        QString base, ext;
        SplitFileName("prog.asm", base, ext);
        QCOMPARE(base, QString("prog"));
        QCOMPARE(ext, QString("asm"));
        SplitFileName("noext", base, ext);
        QCOMPARE(base, QString("noext"));
        QCOMPARE(ext, QString());
        SplitFileName("/home/a.b/file", base, ext);   // a point in a folder counts too
        QCOMPARE(base, QString("/home/a"));
        QCOMPARE(ext, QString("b/file"));
        SplitFileName("x.tar.gz", base, ext);
        QCOMPARE(base, QString("x.tar"));
        QCOMPARE(ext, QString("gz"));
    }
};

QTEST_APPLESS_MAIN(ConversionsTest)
#include "Conversions_test.moc"
