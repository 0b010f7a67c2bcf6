#include <QtTest>

#include "code/DisAsmPage.h"
#include "code/SymbolTable.h"
#include "core/TargetState.h"
#include "execution/Breakpoints.h"

namespace {
// ProgramBuffer read at base, NOPs but for the given bytes at an offset.
void Buffer(std::int32_t base, const QList<int>& bytes, int offset = 0)
{
    ProgramBase = base;
    ProgramBuffer.fill(0x01);
    for (int b : bytes)
        ProgramBuffer[offset++] = static_cast<std::uint8_t>(b);
}

PageRowArray Page(std::int32_t top, bool codeOn = false, bool includeSym = false)
{
    PageRowArray rows;
    DecodePage(top, PageSwitches{codeOn, includeSym}, rows);
    return rows;
}
}  // namespace

class DisAsmPageTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        ResetTargetState();
        SymbolTable.clear();
        SymbolCount = 0;
    }

    void aFiveByteInstructionFillsTheCodeColumn()
    {
        Buffer(0x1000, {0x18, 0x1E, 0x10, 0x80, 0xFB});
        CpuRegisters.PC = 0x4000;   // off the page: no row is bold, no mark
        const PageRowArray rows = Page(0x1000, true);
        QCOMPARE(rows[0].RowText, QString(" $1000: 18 1E 10 80 FB   BRSET $10,Y $80 $1000"));
        QCOMPARE(rows[1].RowAddress, 0x1005);
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
            QCOMPARE(CpuRegisters.PC, 0x1004);
            QVERIFY(rows[4].AtPC);
            QCOMPARE(rows[4].RowText.mid(8, 2), mark + ' ');
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
        AddBreakpoint(0x20F0);
        AddBreakpoint(0x2102);
        CpuRegisters.PC = 0x2102;
        const PageRowArray rows = Page(0x20E0);
        QVERIFY(!rows[15].Breakpoint && rows[16].Breakpoint);
        QCOMPARE(rows[30].RowText, QString(" $20FE:   NOP"));
        // $20FF needs two bytes never read: it and the rows behind stay empty and unmarked.
        QCOMPARE(rows[31].RowAddress, 0x20FF);
        QVERIFY(rows[31].RowText.isEmpty() && rows[32].RowText.isEmpty());
        QCOMPARE(rows[32].RowAddress, 0x2102);
        QVERIFY(!rows[32].Breakpoint && !rows[32].AtPC);
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
        QCOMPARE(PageUpTop(0x1000, 0x10FA, 5), 0x10EE);
        QCOMPARE(Page(0x10EE)[4].RowAddress, 0x10FA);
        // Fewer instructions above than rows: the old top ends higher up.
        Buffer(0x1000, {0xB6, 0x00, 0x00});
        QCOMPARE(PageUpTop(0x1000, 0x1005, 10), 0x1000);
        // No start lines up: start 4, with the count of start 3.
        Buffer(0x1000, {0xFC, 0xCE, 0x86, 0xCC, 0x86});
        QCOMPARE(PageUpTop(0x1000, 0x1005, 2), 0x1004);
        QCOMPARE(PageUpTop(0x1000, 0x1005, 1), 0x1006);
    }
};

QTEST_APPLESS_MAIN(DisAsmPageTest)
#include "DisAsmPage_test.moc"
