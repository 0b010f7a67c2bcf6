#include <QtTest>

#include <initializer_list>

#include "code/Asm.h"
#include "core/TargetState.h"

namespace {
struct Decoded {
    std::int32_t address;
    std::int16_t length;
    std::string text;
};

// Puts bytes into the program copy (NOPs around them) at an address and decodes them there.
Decoded Decode(const QList<int>& bytes, std::int32_t at = 0x1000, std::int32_t base = 0x1000)
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
}  // namespace

class DisassemblerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ResetTargetState(); }

    void sweepOfEveryPage()
    {
        int illegal = 0, prefixes = 0, rows = 0, behind[3] = {};
        const int prefix[3] = {0x18, 0x1A, 0xCD};
        for (int b = 0; b < 256; ++b) {
            for (int p = 0; p < 3; ++p) {
                const Decoded paged = Decode({prefix[p], b, 0, 0, 0});
                QVERIFY(paged.length >= 2 && paged.length <= 5);
                if (paged.text == "???")
                    QCOMPARE(paged.length, std::int16_t(2));   // operands of a bad pair are not skipped
                else
                    ++behind[p];
            }
            if (b == 0x18 || b == 0x1A || b == 0xCD) {
                ++prefixes;
                continue;
            }
            const Decoded d = Decode({b, 0, 0, 0, 0});
            QVERIFY(d.length >= 1 && d.length <= 4);
            if (d.text == "???")
                QCOMPARE(d.length, std::int16_t(1));
            (d.text == "???" ? illegal : rows)++;
        }
        QCOMPARE(illegal, 21);
        QCOMPARE(prefixes, 3);
        QCOMPARE(rows, 232);
        QCOMPARE(behind[0], 64);
        QCOMPARE(behind[1], 7);
        QCOMPARE(behind[2], 4);
    }

    void workedRows()
    {
        const std::tuple<QList<int>, int, const char*> cases[] = {
            {{0x86, 0x05}, 2, "LDAA  #$05"},          {{0x96, 0x0F}, 2, "LDAA  $0F"},
            {{0xB6, 0x00, 0x05}, 3, "LDAA  $0005"},   {{0xCC, 0x00, 0x05}, 3, "LDD   #$0005"},
            {{0xA6, 0x12}, 2, "LDAA  $12,X"},         {{0x20, 0x80}, 2, "BRA   $0F82"},
            {{0x12, 0x10, 0x80, 0xFC}, 4, "BRSET $10 $80 $1000"},
            {{0x18, 0x1E, 0x10, 0x80, 0xFB}, 5, "BRSET $10,Y $80 $1000"},
            {{0x1C, 0x12, 0x34}, 3, "BSET  $12,X $34"}, {{0x15, 0xFF, 0x01}, 3, "BCLR  $FF $01"},
            {{0x18, 0x12}, 2, "???"},                 {{0x87}, 1, "???"},   // a store has no immediate form
            {{0x1A, 0xAC, 0x05}, 3, "CPY   $05,X"},   {{0xCD, 0xAC, 0x05}, 3, "CPX   $05,Y"}};
        for (const auto& [bytes, length, text] : cases) {
            const Decoded d = Decode(bytes);
            QCOMPARE(d.text, std::string(text));
            QCOMPARE(int(d.length), length);
            QCOMPARE(d.address, 0x1000);
        }
    }

    void wrapsAroundMemory()
    {
        // A forward branch at the top of memory lands at the bottom.
        QCOMPARE(Decode({0x20, 0x10}, 0xFFFE, 0xFFFE).text, std::string("BRA   $0010"));
        // A page that wraps: the address below the base comes back with 65536 added.
        const Decoded d = Decode({0x20, 0x10}, 0x0010, 0xFFE0);
        QCOMPARE(d.text, std::string("BRA   $0022"));
        QCOMPARE(d.address, 0x0010 + 65536);
        // A backward branch below $0000 wraps to the top.
        QCOMPARE(Decode({0x20, 0xF0}, 0x0000, 0x0000).text, std::string("BRA   $FFF2"));
        QCOMPARE(Decode({0x13, 0x00, 0x01, 0xF0}, 0x0002, 0x0000).text, std::string("BRCLR $00 $01 $FFF6"));
    }

    void clockCycles()
    {
        // The prefix and its opcode sit on either side of the wrap.
        const std::pair<QList<int>, int> cases[] = {{{0x41}, 0},  {{0x18, 0x00}, 0}, {{0x3E}, 0},        // WAI
                                                    {{0x02}, 41}, {{0x3F}, 14},      {{0x27, 0x00}, 3},
                                                    {{0x18, 0x1E}, 8}, {{0x18, 0xEE}, 6}, {{0xCF}, 2}};
        for (const auto& [bytes, cycles] : cases) {
            Decode(bytes, 0xFFFF, 0xFFFF);
            std::int32_t address = 0xFFFF;
            QCOMPARE(int(ClockCycles(address)), cycles);
        }
    }
};

QTEST_APPLESS_MAIN(DisassemblerTest)
#include "Disassembler_test.moc"
