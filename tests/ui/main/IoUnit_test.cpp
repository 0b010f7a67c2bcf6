#include "engine/state/TargetState.h"
#include "engine/link/IoUnit.h"

using namespace iounit;

class IoUnitTest : public QObject {
    Q_OBJECT
private slots:
    void conversions()
    {
        const QHash<QString, std::function<QString(const QString&)>> functions = {
            {"signed", [](const QString& v) { return fromInt(v, "signed"); }}, {"hex", fromHex}, {"binary", fromBinary},
            {"unsigned", [](const QString& v) { return fromInt(v, "unsigned"); }}, {"toHex", toHex}, {"toBCD", toBCD},
            {"toSigned", [](const QString& v) { return toInt(v, "signed"); }}, {"zeroes", removeLeadingZeroes},
            {"toUnsigned", [](const QString& v) { return toInt(v, "unsigned"); }}};
        const char* const rows[][3] = {   // function, value, result
            {"signed", "127", "01111111"}, {"signed", "128", "error"}, {"signed", "-128", "10000000"},
            {"signed", "-1", "11111111"}, {"signed", "-0", "error"}, {"signed", " 12x", "00001100"},
            {"signed", "x12", "error"}, {"signed", "", "00000000"},
            {"unsigned", "255", "11111111"}, {"unsigned", "256", "error"}, {"unsigned", "-1", "error"},
            {"unsigned", "0000255", "11111111"}, {"unsigned", "-1234", "error"}, {"unsigned", "12345", "error"},
            {"hex", "ff", "11111111"}, {"hex", " 0a ", "00001010"}, {"hex", "100", "error"},
            {"hex", "G", "00000000"}, {"hex", "", "00000000"},
            {"binary", "102", "error"}, {"binary", "101", "00000101"}, {"binary", "000011111111", "11111111"},
            {"binary", "111111111", "error"}, {"binary", "", "00000000"},
            {"toSigned", "11111111", "-1"}, {"toSigned", "00000101", " 5"}, {"toSigned", "10000000", "-128"},
            {"toUnsigned", "11111111", " 255"}, {"toHex", "11111111", "FF"}, {"toHex", "00001111", "0F"},
            {"toBCD", "01000010", "42"}, {"toBCD", "00011010", "error"}, {"toBCD", "10100001", "error"},
            {"zeroes", "000", "0"}, {"zeroes", "0010", "10"},
        };
        for (const auto& [function, value, result] : rows)
            QVERIFY2(functions[function](value) == result, qPrintable(QString("%1(%2)").arg(function, value)));
    }

    void enterInEachFormat()
    {
        const struct { const char *format, *typed; int byte; const char* shown; } rows[] = {
            // shown: TextIn after a change back to the same format
            {"Signed", "-2", 0xFE, "-2"}, {"Unsigned", "200", 200, " 200"}, {"Hex", "c", 0x0C, "0C"},
            {"Binary", "11", 3, "00000011"}, {"Hex", "", 0, ""}};
        for (const auto& row : rows) {
            TargetMemory[0x6000] = 0, TargetMemory[0x6001] = 0x55;
            IoUnit unit;
            unit.SetInFormat(row.format);
            unit.TextIn = row.typed;
            QVERIFY(unit.Enter() && unit.InFresh && TargetMemory[0x6000] == 1 && int(TargetMemory[0x6001]) == row.byte);
            unit.SetInFormat(row.format);
            QCOMPARE(unit.TextIn, QString(row.shown));
        }
        // A wrong value changes nothing but the field.
        TargetMemory[0x6000] = 0, TargetMemory[0x6001] = 0x55;
        IoUnit unit;
        unit.TextIn = "300";
        QVERIFY(!unit.Enter() && unit.TextIn.isEmpty() && unit.TextInBinary == "00000000" && !unit.InFresh);
        QCOMPARE(tuple(TargetMemory[0x6000], TargetMemory[0x6001]), tuple(0, 0x55));
    }

    void outputFormatsReadAndLeds()
    {
        IoUnit unit;
        QStringList shown;   // formats follow without new data
        unit.setOutDataRegister(0xFF);
        shown << unit.TextOut;
        unit.SetOutFormat("Hex");
        shown << unit.TextOut;
        unit.setOutDataRegister(5);
        shown << unit.TextOut;
        unit.SetOutFormat("Signed");
        shown << unit.TextOut;
        unit.SetOutFormat("BCD");
        unit.setOutDataRegister(0x1A);
        shown << unit.TextOut << unit.TextOutBinary;
        QCOMPARE(shown, (QStringList{"-1", "FF", "05", " 5", "error", "00011010"}));

        // Read clears the flag and keeps the data.
        TargetMemory[0x6002] = 1;
        unit.setOutDataRegister(0x81);
        unit.setOutFresh(1);
        unit.Read();
        QCOMPARE(tuple(unit.OutFresh, TargetMemory[0x6002], unit.TextOutBinary), tuple(false, 0, "10000001"));

        // The LEDs show the bits only with power.
        const auto leds = [&unit] {
            QString lit;
            for (int i = 0; i < 8; ++i)
                lit += unit.LedLit(i) ? '1' : '0';
            return lit;
        };
        QCOMPARE(leds(), QString("00000000"));
        unit.LedPower = true;
        QCOMPARE(leds(), QString("10000001"));
        unit.setOutDataRegister(0x40);
        QCOMPARE(leds(), QString("01000000"));
    }
};

QTEST_MAIN(IoUnitTest)
#include "IoUnit_test.moc"
