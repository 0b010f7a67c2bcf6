#include <QtTest>

#include <initializer_list>

#include "code/Asm.h"
#include "core/TargetState.h"

namespace {

// Puts bytes into the program copy at an address and decodes them there.
struct Decoded {
    std::int32_t address;
    std::int16_t length;
    std::string text;
};

Decoded Decode(std::initializer_list<int> bytes, std::int32_t at = 0x1000, std::int32_t base = 0x1000)
{
    ProgramBuffer.fill(0x01);
    ProgramBase = base;
    std::int32_t index = (at - base) & 0xFFFF;
    for (int b : bytes)
        ProgramBuffer[index++] = static_cast<std::uint8_t>(b);
    Decoded d{at, 0, {}};
    DisAsmLine(d.address, d.length, d.text);
    return d;
}

} // namespace

class DisassemblerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ResetTargetState(); }

    void sweepOfEveryPage()
    {
        int illegal = 0, prefixes = 0, rows = 0, behind[3] = {};
        const int prefix[3] = {0x18, 0x1A, 0xCD};
        for (int b = 0; b < 256; ++b) {
            const Decoded d = Decode({b, 0, 0, 0, 0});
            if (b == 0x18 || b == 0x1A || b == 0xCD) {
                ++prefixes;
                continue;
            }
            QVERIFY(d.length >= 1 && d.length <= 4);
            if (d.text == "???") {
                QCOMPARE(d.length, std::int16_t(1));
                ++illegal;
            } else {
                ++rows;
            }
        }
        for (int p = 0; p < 3; ++p) {
            for (int b = 0; b < 256; ++b) {
                const Decoded d = Decode({prefix[p], b, 0, 0, 0});
                QVERIFY(d.length >= 2 && d.length <= 5);
                if (d.text == "???")
                    QCOMPARE(d.length, std::int16_t(2));   // operands of a bad pair are not skipped
                else
                    ++behind[p];
            }
        }
        QCOMPARE(illegal, 21);
        QCOMPARE(prefixes, 3);
        QCOMPARE(rows, 232);
        QCOMPARE(behind[0], 64);
        QCOMPARE(behind[1], 7);
        QCOMPARE(behind[2], 4);
    }

    void textForm_data()
    {
        QTest::addColumn<QList<int>>("bytes");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("text");
        QTest::newRow("inherent") << QList<int>{0x01} << 1 << "NOP";
        QTest::newRow("imm8") << QList<int>{0x86, 0x05} << 2 << "LDAA  #$05";
        QTest::newRow("direct") << QList<int>{0x96, 0x0F} << 2 << "LDAA  $0F";
        QTest::newRow("extended") << QList<int>{0xB6, 0x00, 0x05} << 3 << "LDAA  $0005";
        QTest::newRow("imm16") << QList<int>{0xCC, 0x00, 0x05} << 3 << "LDD   #$0005";
        QTest::newRow("indexed") << QList<int>{0xA6, 0x12} << 2 << "LDAA  $12,X";
        QTest::newRow("bra self") << QList<int>{0x20, 0xFE} << 2 << "BRA   $1000";
        QTest::newRow("bra back") << QList<int>{0x20, 0x80} << 2 << "BRA   $0F82";
        QTest::newRow("brset") << QList<int>{0x12, 0x10, 0x80, 0xFC} << 4 << "BRSET $10 $80 $1000";
        QTest::newRow("bset x") << QList<int>{0x1C, 0x12, 0x34} << 3 << "BSET  $12,X $34";
        QTest::newRow("brset y") << QList<int>{0x18, 0x1E, 0x10, 0x80, 0xFB} << 5 << "BRSET $10,Y $80 $1000";
        QTest::newRow("bclr direct") << QList<int>{0x15, 0xFF, 0x01} << 3 << "BCLR  $FF $01";
        QTest::newRow("bad pair") << QList<int>{0x18, 0x12} << 2 << "???";
        QTest::newRow("bad 1A") << QList<int>{0x1A, 0x00} << 2 << "???";
        QTest::newRow("illegal 00") << QList<int>{0x00} << 1 << "???";
        QTest::newRow("store imm") << QList<int>{0x87} << 1 << "???";
        QTest::newRow("xgdx") << QList<int>{0x8F} << 1 << "XGDX";
        QTest::newRow("stop") << QList<int>{0xCF} << 1 << "STOP";
        QTest::newRow("bsr") << QList<int>{0x8D, 0x10} << 2 << "BSR   $1012";
        QTest::newRow("jsr dir") << QList<int>{0x9D, 0x12} << 2 << "JSR   $12";
        QTest::newRow("cpy y") << QList<int>{0x18, 0xAC, 0x05} << 3 << "CPY   $05,Y";
        QTest::newRow("cpy x") << QList<int>{0x1A, 0xAC, 0x05} << 3 << "CPY   $05,X";
        QTest::newRow("cpx y") << QList<int>{0xCD, 0xAC, 0x05} << 3 << "CPX   $05,Y";
        QTest::newRow("lsl spelling") << QList<int>{0x48} << 1 << "LSLA";
        QTest::newRow("bcc spelling") << QList<int>{0x24, 0x00} << 2 << "BCC   $1002";
    }

    void textForm()
    {
        QFETCH(QList<int>, bytes);
        QFETCH(int, length);
        QFETCH(QString, text);
        ProgramBuffer.fill(0x01);
        ProgramBase = 0x1000;
        for (int i = 0; i < bytes.size(); ++i)
            ProgramBuffer[i] = static_cast<std::uint8_t>(bytes[i]);
        std::int32_t address = 0x1000;
        std::int16_t len = 0;
        std::string out;
        DisAsmLine(address, len, out);
        QCOMPARE(int(len), length);
        QCOMPARE(QString::fromStdString(out), text);
        QCOMPARE(address, 0x1000);
    }

    void wrapsAroundMemory()
    {
        // A forward branch at the top of memory lands at the bottom.
        Decoded d = Decode({0x20, 0x10}, 0xFFFE, 0xFFFE);
        QCOMPARE(d.text, std::string("BRA   $0010"));
        // A page that wraps: the address below the base comes back with 65536 added.
        d = Decode({0x20, 0x10}, 0x0010, 0xFFE0);
        QCOMPARE(d.text, std::string("BRA   $0022"));
        QCOMPARE(d.address, 65552);
        // A backward branch below $0000 wraps to the top.
        d = Decode({0x20, 0xF0}, 0x0000, 0x0000);
        QCOMPARE(d.text, std::string("BRA   $FFF2"));
        d = Decode({0x13, 0x00, 0x01, 0xF0}, 0x0002, 0x0000);
        QCOMPARE(d.text, std::string("BRCLR $00 $01 $FFF6"));
    }

    void instructionMustFitTheBuffer()
    {
        ProgramBase = 0x1000;
        ProgramBuffer.fill(0x01);
        ProgramBuffer[253] = 0xB6;   // three bytes: 253..255 fit
        QVERIFY(InstructionInBuffer(0x10FD));
        ProgramBuffer[254] = 0xB6;   // needs 254..256
        QVERIFY(!InstructionInBuffer(0x10FE));
        QVERIFY(!InstructionInBuffer(0x1100));
        QVERIFY(!InstructionInBuffer(0x0FFF));   // below the base: far past the buffer
    }

    void clockCycles_data()
    {
        QTest::addColumn<QList<int>>("bytes");
        QTest::addColumn<int>("cycles");
        QTest::newRow("illegal") << QList<int>{0x41} << 0;
        QTest::newRow("bad pair") << QList<int>{0x18, 0x00} << 0;
        QTest::newRow("wai") << QList<int>{0x3E} << 0;
        QTest::newRow("idiv") << QList<int>{0x02} << 41;
        QTest::newRow("swi") << QList<int>{0x3F} << 14;
        QTest::newRow("branch") << QList<int>{0x27, 0x00} << 3;
        QTest::newRow("brset y") << QList<int>{0x18, 0x1E} << 8;
        QTest::newRow("ldy ind y") << QList<int>{0x18, 0xEE} << 6;
        QTest::newRow("stop") << QList<int>{0xCF} << 2;
    }

    void clockCycles()
    {
        QFETCH(QList<int>, bytes);
        QFETCH(int, cycles);
        ProgramBase = 0xFFFF;   // the prefix and its opcode sit on either side of the wrap
        ProgramBuffer.fill(0x01);
        for (int i = 0; i < bytes.size(); ++i)
            ProgramBuffer[i] = static_cast<std::uint8_t>(bytes[i]);
        std::int32_t address = 0xFFFF;
        QCOMPARE(int(ClockCycles(address)), cycles);
    }
};

QTEST_APPLESS_MAIN(DisassemblerTest)
#include "Disassembler_test.moc"
