#include <initializer_list>

#include "engine/code/Asm.h"
#include "engine/code/DisAsmPage.h"
#include "engine/code/SymbolTable.h"
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"

namespace {
struct Decoded {
    std::int32_t address;
    std::int16_t length;
    std::string text;
};

// ProgramBuffer read at base, NOPs but for the given bytes at an offset.
void Buffer(std::int32_t base, const QList<int>& bytes, int offset = 0)
{
    ProgramBase = base;
    ProgramBuffer.fill(0x01);
    for (int b : bytes)
        ProgramBuffer[offset++] = static_cast<std::uint8_t>(b);
}

Decoded Decode(const QList<int>& bytes, std::int32_t at = 0x1000, std::int32_t base = 0x1000)
{
    Buffer(base, bytes, (at - base) & 0xFFFF);
    Decoded d{at, 0, {}};
    DisAsmLine(d.address, d.length, d.text);
    return d;
}

PageRowArray Page(std::int32_t top, bool codeOn = false, bool includeSym = false)
{
    PageRowArray rows;
    DecodePage(top, PageSwitches{codeOn, includeSym, {}}, rows);
    return rows;
}
}  // namespace

class DisassemblerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ResetTargetState(), SymbolTable.clear(), SymbolCount = 0; }

    // Lengths and names are the instruction table's, which the CPU and the
    // assembler's cross-check hold; a code no row covers is "???" of its
    // opcode bytes alone.
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
            QVERIFY2(d.text == text && d.length == length && d.address == 0x1000, d.text.c_str());
        }
    }

    void wrapsAroundMemory()
    {
        // A forward branch at the top of memory lands at the bottom.
        QCOMPARE(Decode({0x20, 0x10}, 0xFFFE, 0xFFFE).text, std::string("BRA   $0010"));
        // A page that wraps: the address below the base comes back with 65536 added.
        const Decoded d = Decode({0x20, 0x10}, 0x0010, 0xFFE0);
        QVERIFY(d.text == "BRA   $0022" && d.address == 0x0010 + 65536);
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

    void aFiveByteInstructionFillsTheCodeColumn()
    {
        Buffer(0x1000, {0x18, 0x1E, 0x10, 0x80, 0xFB});
        CpuRegisters.PC = 0x4000;   // off the page: no row is bold, no mark
        const PageRowArray rows = Page(0x1000, true);
        QVERIFY(rows[0].RowText == " $1000: 18 1E 10 80 FB   BRSET $10,Y $80 $1000" && rows[1].RowAddress == 0x1005);
        for (const PageRow& row : rows)
            QVERIFY(!row.AtPC && !row.Breakpoint);
    }

    void branchMarksOnThePCRowOnly()
    {
        // Code at $1004 = PC, flag Z, the mark: "+" forward, "-" backward, plus-minus onto itself.
        const std::tuple<QList<int>, bool, QString> cases[] = {
            {{0x20, 0xFE}, false, QString(QChar(PlusMinusMark))},
            {{0x27, 0xFA}, false, " "},         // BEQ not taken
            {{0x27, 0xFA}, true, "-"},          // BEQ taken backwards
            {{0x26, 0x10}, false, "+"},         // BNE taken forwards
            {{0x7E, 0x10, 0x00}, false, "-"},   // JMP backwards
            {{0xBD, 0x20, 0x00}, false, " "}};   // calls have no mark
        for (const auto& [code, flagZ, mark] : cases) {
            Buffer(0x1000, code, 4);
            CpuRegisters.FlagZ = flagZ;
            CpuRegisters.PC = 0x11004;   // beyond 16 bits: the page draw takes it modulo 65536
            const PageRowArray rows = Page(0x1000);
            QVERIFY(CpuRegisters.PC == 0x1004 && rows[4].AtPC && rows[4].RowText.mid(8, 2) == (mark + ' '));
            for (int i : {0, 1, 2, 3, 5, 6})
                QVERIFY(!rows[i].AtPC && rows[i].RowText.mid(8, 2) == "  ");
        }
    }

    void sourceLinesReplaceTheTextWhenAddressLengthAndBytesMatch()
    {
        Buffer(0x1000, {0x86, 0x05, 0x01});
        CpuRegisters.PC = 0x1000;
        SymbolTable = {{0x1000, 2, {0x86, 0x05}, "START", "START LDAA #5 ; first"},
                       {0x1000, 0, {}, "ALIAS", "ALIAS EQU *"},
                       {0x1000, 2, {0x86, 0x05}, "", "      LDAA #5 ; the later line wins"},
                       {0x1002, 1, {0x02}, "", "      IDIV"},   // the target holds a NOP there
                       {0x1003, 1, {0x01}, "", "      NOP ; not in use"}};
        SymbolCount = 4;
        const PageRowArray rows = Page(0x1000, true, true);
        QCOMPARE(rows[0].RowText, QString(" $1000: 86 05" + QString(12, ' ') + "      LDAA #5 ; the later line wins"));
        QCOMPARE(rows[1].RowText, QString(" $1002: 01               NOP"));
        QCOMPARE(rows[2].RowText, QString(" $1003: 01               NOP"));   // beyond SymbolCount
        QCOMPARE(Page(0x1000)[0].RowText, QString(" $1000:   LDAA  #$05"));
    }

    void breakpointsAndRowsPastTheBuffer()
    {
        Buffer(0x2000, {});
        ProgramBuffer[255] = 0xB6;   // an extended load whose operand lies behind the buffer
        AddBreakpoint(0x20F0), AddBreakpoint(0x2102);
        CpuRegisters.PC = 0x2102;
        const PageRowArray rows = Page(0x20E0);
        QVERIFY(!rows[15].Breakpoint && rows[16].Breakpoint && rows[30].RowText == QString(" $20FE:   NOP"));
        // $20FF needs two bytes never read: it and the rows behind stay empty and unmarked.
        QVERIFY(rows[31].RowAddress == 0x20FF && rows[31].RowText.isEmpty() && rows[32].RowText.isEmpty());
        QVERIFY(rows[32].RowAddress == 0x2102 && !rows[32].Breakpoint && !rows[32].AtPC);
    }

    void scrollUpTriesFiveBytesBackFirstAndFallsBackToOne()
    {
        const std::pair<QList<int>, int> cases[] = {
            {{0x18, 0x1E, 0x10, 0x80, 0xFB}, 5}, {{0x01, 0x01, 0x01, 0x86, 0x05}, 2},
            {{0x01, 0x01, 0x01, 0x01, 0x01}, 1}, {{0x18, 0x18, 0xCD, 0x41, 0x41}, 1},   // bad data
            {{0x18, 0x1E, 0x10, 0x86, 0x05}, 5}};   // farthest first: wins over the 2-byte fit
        for (const auto& [bytes, back] : cases) {
            for (std::int32_t oldTop : {0x1005, 0x0003}) {   // the second wraps below $0000
                const std::int32_t base = (oldTop - 5) & 0xFFFF;
                Buffer(base, bytes);
                QCOMPARE(ScrollUpTop(base), (oldTop - back) & 0xFFFF);
            }
        }
    }

    void pageUpPutsTheOldTopOnTheLastVisibleRow()
    {
        Buffer(0x1000, {});   // one-byte instructions: the first start hits
        QCOMPARE(PageUpTop(0x1000, 0x10FA, 10), 0x10F1);
        // Three-byte instructions: only the start one byte in lines up with the old top.
        ProgramBuffer.fill(0xB6);
        QVERIFY(PageUpTop(0x1000, 0x10FA, 5) == 0x10EE && Page(0x10EE)[4].RowAddress == 0x10FA);
        // Fewer instructions above than rows: the old top ends higher up.
        Buffer(0x1000, {0xB6, 0x00, 0x00});
        QCOMPARE(PageUpTop(0x1000, 0x1005, 10), 0x1000);
        // No start lines up: start 4, with the count of start 3.
        Buffer(0x1000, {0xFC, 0xCE, 0x86, 0xCC, 0x86});
        QVERIFY(PageUpTop(0x1000, 0x1005, 2) == 0x1004 && PageUpTop(0x1000, 0x1005, 1) == 0x1006);
    }
};

QTEST_APPLESS_MAIN(DisassemblerTest)
#include "Disassembler_test.moc"
