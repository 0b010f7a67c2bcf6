#include <QtTest>

#include "core/TargetState.h"
#include "workspace/IoUnit.h"

using namespace iounit;

class IoUnitTest : public QObject {
    Q_OBJECT
private slots:
    void conversions_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("result");
        const auto row = [](const char* f, const char* v, const char* r) {
            QTest::addRow("%s(%s)", f, v) << QString(f) << QString(v) << QString(r);
        };
        row("signed", "127", "01111111");
        row("signed", "128", "error");
        row("signed", "-128", "10000000");
        row("signed", "-1", "11111111");
        row("signed", "-0", "error");
        row("signed", " 12x", "00001100");
        row("signed", "x12", "error");
        row("signed", "", "00000000");
        row("unsigned", "255", "11111111");
        row("unsigned", "256", "error");
        row("unsigned", "-1", "error");
        row("unsigned", "0000255", "11111111");
        row("unsigned", "-1234", "error");
        row("unsigned", "12345", "error");
        row("hex", "ff", "11111111");
        row("hex", " 0a ", "00001010");
        row("hex", "100", "error");
        row("hex", "G", "00000000");
        row("hex", "", "00000000");
        row("binary", "102", "error");
        row("binary", "101", "00000101");
        row("binary", "000011111111", "11111111");
        row("binary", "111111111", "error");
        row("binary", "", "00000000");
        row("toSigned", "11111111", "-1");
        row("toSigned", "00000101", " 5");
        row("toSigned", "10000000", "-128");
        row("toUnsigned", "11111111", " 255");
        row("toHex", "11111111", "FF");
        row("toHex", "00001111", "0F");
        row("toBCD", "01000010", "42");
        row("toBCD", "00011010", "error");
        row("toBCD", "10100001", "error");
        row("zeroes", "000", "0");
        row("zeroes", "0010", "10");
    }
    void conversions()
    {
        QFETCH(QString, function);
        QFETCH(QString, value);
        QFETCH(QString, result);
        const QHash<QString, std::function<QString(const QString&)>> functions = {
            {"signed", [](const QString& v) { return fromInt(v, "signed"); }},
            {"unsigned", [](const QString& v) { return fromInt(v, "unsigned"); }},
            {"hex", fromHex},
            {"binary", fromBinary},
            {"toSigned", [](const QString& v) { return toInt(v, "signed"); }},
            {"toUnsigned", [](const QString& v) { return toInt(v, "unsigned"); }},
            {"toHex", toHex},
            {"toBCD", toBCD},
            {"zeroes", removeLeadingZeroes},
        };
        QCOMPARE(functions[function](value), result);
    }

    void enterInEachFormat_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("byte");
        QTest::addColumn<QString>("shown");   // TextIn after a change back to the same format
        QTest::newRow("signed") << "Signed" << "-2" << 0xFE << "-2";
        QTest::newRow("unsigned") << "Unsigned" << "200" << 200 << " 200";
        QTest::newRow("hex") << "Hex" << "c" << 0x0C << "0C";
        QTest::newRow("binary") << "Binary" << "11" << 3 << "00000011";
        QTest::newRow("empty") << "Hex" << "" << 0 << "";
    }
    void enterInEachFormat()
    {
        QFETCH(QString, format);
        QFETCH(QString, typed);
        QFETCH(int, byte);
        QFETCH(QString, shown);
        TargetMemory[0x6000] = 0;
        TargetMemory[0x6001] = 0x55;
        IoUnit unit;
        unit.SetInFormat(format);
        unit.TextIn = typed;
        QVERIFY(unit.Enter());
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(1));
        QCOMPARE(int(TargetMemory[0x6001]), byte);
        QVERIFY(unit.InFresh);
        unit.SetInFormat(format);
        QCOMPARE(unit.TextIn, shown);
    }

    void wrongValueChangesNothingButTheField()
    {
        TargetMemory[0x6000] = 0;
        TargetMemory[0x6001] = 0x55;
        IoUnit unit;
        unit.TextIn = "300";
        QVERIFY(!unit.Enter());
        QCOMPARE(unit.TextIn, QString());
        QCOMPARE(unit.TextInBinary, QString("00000000"));
        QVERIFY(!unit.InFresh);
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(0));
        QCOMPARE(TargetMemory[0x6001], std::uint8_t(0x55));
    }

    void outFormatsFollowWithoutNewData()
    {
        IoUnit unit;
        unit.setOutDataRegister(0xFF);
        QCOMPARE(unit.TextOut, QString("-1"));
        unit.SetOutFormat("Hex");
        QCOMPARE(unit.TextOut, QString("FF"));
        unit.setOutDataRegister(5);
        QCOMPARE(unit.TextOut, QString("05"));
        unit.SetOutFormat("Signed");
        QCOMPARE(unit.TextOut, QString(" 5"));
        unit.SetOutFormat("BCD");
        unit.setOutDataRegister(0x1A);
        QCOMPARE(unit.TextOut, QString("error"));
        QCOMPARE(unit.TextOutBinary, QString("00011010"));
    }

    void readClearsTheFlagAndKeepsTheData()
    {
        TargetMemory[0x6002] = 1;
        IoUnit unit;
        unit.setOutDataRegister(0x81);
        unit.setOutFresh(1);
        unit.Read();
        QVERIFY(!unit.OutFresh);
        QCOMPARE(TargetMemory[0x6002], std::uint8_t(0));
        QCOMPARE(unit.TextOutBinary, QString("10000001"));
    }

    void ledsShowTheBitsOnlyWithPower()
    {
        IoUnit unit;
        unit.setOutDataRegister(0x81);
        for (int i = 0; i < 8; ++i)
            QVERIFY(!unit.LedLit(i));
        unit.LedPower = true;
        QString lit;
        for (int i = 0; i < 8; ++i)
            lit += unit.LedLit(i) ? '1' : '0';
        QCOMPARE(lit, QString("10000001"));
        unit.setOutDataRegister(0x40);
        QVERIFY(unit.LedLit(1) && !unit.LedLit(0) && !unit.LedLit(7));
    }
};

QTEST_MAIN(IoUnitTest)
#include "IoUnit_test.moc"
