// Symbols from listings: the column rules of a listing line, what a line
// gives, and the table's order, size and replacement.

#include "engine/code/ListingReader.h"
#include "engine/code/SymbolTable.h"
#include "engine/state/Conversions.h"
#include "engine/source/SourceRecords.h"
#include "support/ListingText.h"

#include <QBuffer>
#include <QTemporaryDir>

namespace {
// The line that the column rules below spoil in one place at a time.
const QString GoodLine = ListingLine("0003", "1000", {"86", "12"}, "START LDAA #$12");

SymbolEntry Read(const QString& line)
{
    SymbolEntry entry;
    if (!ReadListingLine(line, entry))
        qFatal("line dropped: %s", qPrintable(line));
    return entry;
}

int ReadAll(const QByteArray& data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    int pumps = 0;
    ReadSymbols(buffer, [&] { ++pumps; });
    return pumps;
}
}  // namespace

class SymbolLoadTest : public QObject {
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void init()
    {
        SymbolTable.clear();
        SymbolCount = 0;
        LstFile = "PROG.LST";
    }

    void theTableStopsAt32767Entries()
    {
        QStringList lines;
        for (int i = 0; i < 32770; ++i)
            lines << ListingLine(i % 10000, i & 0xFFFF, {"01"}, QStringLiteral("L%1 NOP").arg(i));
        const ListingLoad load = LoadListingFile(WriteListing(dir.path(), "big.lst", lines, "\n"), {});
        QCOMPARE(tuple(SymbolCount, SymbolTable.value(32766).SymbolLabel), tuple(32767, "L32766"));
        QVERIFY(load.opened && load.failure.startsWith("Overflow"));
    }

    void linesThatBreakAColumnRuleAreDropped()
    {
        const QString bare = ListingLine("0001", "2000", {"01"}, "");
        QCOMPARE(bare.size(), 27);
        QStringList dropped{bare, bare.left(26) + '\t',   // a tab makes it long enough only when expanded
                            ListingLine("   3", "1000", {}, "X"), ListingLine("LINE", "1000", {}, "X"),
                            ListingLine("0003", "    ", {}, "X"), ListingLine("0003", "1G00", {}, "X")};
        for (int column : {5, 10, 13, 16, 19, 22, 25, 26, 27}) {
            for (const QChar spoiler : {QChar('X'), QChar('\t')}) {
                QString line = GoodLine;
                line[column - 1] = spoiler;
                dropped << line;
            }
        }
        for (const QString& line : dropped)
            QVERIFY2(!ListingLineCounts(line), qPrintable(line));
        QVERIFY(ListingLineCounts(bare + ' ') && (Read(ListingLine("0003", "ab1f", {}, "X")).SymbolAddress) == 0xAB1F);
    }

    void bytesLabelsAndTabs()
    {
        const SymbolEntry bytes = Read(ListingLine("0001", "1000", {"ce", "  ", "12", "  ", "G5"}, " NOP"));
        // A byte keeps the index of its place; nonsense does not fail: the G is skipped.
        QCOMPARE(tuple(bytes.SymbolCodeSize, bytes.SymbolCode[0]), tuple(3, 0xCE));
        QCOMPARE(tuple(bytes.SymbolCode[2], bytes.SymbolCode[4]), tuple(0x12, 0x05));
        QCOMPARE(bytes.SymbolLabel + "|" + bytes.SymbolSource, QString("| NOP"));
        // A label that ends the line has no blank behind it and is not taken.
        QCOMPARE(Read(ListingLine(1, 0x100, {}, "LAST")).SymbolLabel, QString());
        // Tabs are expanded to stops of 9 after the test; one ends a label like a blank.
        const SymbolEntry tabbed = Read(ListingLine(2, 0x1002, {"20", "FE"}, "LOOP\tBRA LOOP"));
        QCOMPARE(tabbed.SymbolLabel + "|" + tabbed.SymbolSource, QString("LOOP|LOOP     BRA LOOP"));
        // Stored as written; the lookup only finds names in upper case.
        SymbolTable = {Read(ListingLine(1, 0x180, {"39"}, "loop RTS"))};
        SymbolCount = 1;
        QString name = "loop";
        QCOMPARE(SymbolValue(name), -1);
    }

    void dataDirectivesKeepLabelAndAddressOnly()
    {
        const std::tuple<const char*, const char*, bool> cases[] = {
            {"TABLE FCB 1,2,3,4,5", "TABLE", true}, {"TEXT fcc 'HI'", "TEXT", true}, {"W Fdb $1234", "W", true},
            {"AREA fill 0,5", "AREA", true},        {"X FCBX 1", "X", true},          {"      FDB $1", "", true},
            {"X FIL 1", "X", false},                {"LIMIT EQU $40", "LIMIT", false},
            {"FCBLOCK", "", true}};   // a label that ends the line is read as the word after it
        for (const auto& [source, label, directive] : cases) {
            const SymbolEntry entry = Read(ListingLine("0007", "2000", {"01", "02", "03", "04", "05"}, source));
            QVERIFY2(entry.SymbolAddress == 0x2000 && entry.SymbolLabel == label, source);
            QVERIFY2(entry.SymbolCodeSize == (directive ? 0 : 5) && entry.SymbolSource == (directive ? "" : source), source);
        }
    }

    void tableKeepsOrderAndDuplicatesAndIsReplacedWhole()
    {
        const QStringList lines{"Orvane listing, page 1", "", ListingLine(1, 0x1000, {"86"}, "DUP LDAA #1"),
                                ListingLine(2, 0x0800, {}, "OTHER EQU $800"), ListingLine(3, 0x2000, {}, "DUP EQU 1")};
        QCOMPARE(ReadAll(lines.join('\n').toLatin1()), 5);   // the pump runs after every line
        QCOMPARE(tuple(SymbolCount, SymbolTable.value(1).SymbolLabel), tuple(3, "OTHER"));
        QString name = "dup";
        QCOMPARE(SymbolValue(name), 0x1000);   // the first of two definitions wins
        ReadAll("text without a listing line\n");
        QCOMPARE(int(SymbolCount), 0);
    }

    void lineEndsBinaryDataAndHugeLines()
    {
        const QStringList lines{ListingLine(1, 0x10, {"01"}, "A NOP"), ListingLine(2, 0x11, {"01"}, "B NOP")};
        for (const char* end : {"\r\n", "\n", "\r"}) {
            ReadAll(lines.join(end).toLatin1());   // the last line has no end at all
            QVERIFY(SymbolCount == 2);
            QCOMPARE(SymbolTable[0].SymbolSource + SymbolTable[1].SymbolSource, QString("A NOPB NOP"));
        }
        // The reader takes 64 KiB at a time: a CR last in one piece and its LF first in the next.
        const QByteArray first = lines[0].toLatin1();
        QCOMPARE(ReadAll(first + QByteArray(65535 - first.size(), 'x') + "\r\n" + lines[1].toLatin1()), 2);

        // Binary bytes (NUL, end-of-file marks) and a huge line do not stop the reader.
        const QString longSource = "HUGE " + QString(200000, 'N');
        ReadAll(QByteArray(4096, '\0') + "\xFF\x1A\r" + ListingLine(1, 0x1234, {"7E"}, longSource).toLatin1() + "\n" +
                QByteArray(4096, '\0'));
        QVERIFY(SymbolTable.last().SymbolLabel == "HUGE" && SymbolTable.last().SymbolSource == longSource);
    }
};

QTEST_MAIN(SymbolLoadTest)
#include "SymbolLoad_test.moc"
