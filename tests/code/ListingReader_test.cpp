#include <QtTest>

#include "code/ListingReader.h"
#include "core/Conversions.h"
#include "support/ListingText.h"

#include <QBuffer>
#include <QRandomGenerator>

namespace {
// The line that every column rule below spoils in one place.
const QString GoodLine = ListingLine("0003", "1000", {"86", "12"}, "START LDAA #$12");

SymbolEntry Read(const QString& line)
{
    SymbolEntry entry;
    if (!ReadListingLine(line, entry))
        qFatal("line dropped: %s", qPrintable(line));
    return entry;
}

void ReadAll(const QByteArray& data, int* lines = nullptr)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    int calls = 0;
    ReadSymbols(buffer, [&] { ++calls; });
    if (lines)
        *lines = calls;
}

// A device that hands out its data and then fails, as a disk might.
class FailingDevice : public QIODevice {
public:
    explicit FailingDevice(QByteArray data) : data_(std::move(data)) { open(ReadOnly); }

protected:
    qint64 readData(char* out, qint64 max) override
    {
        if (data_.isEmpty()) {
            setErrorString(QStringLiteral("Device I/O error"));
            return -1;
        }
        const qint64 n = std::min<qint64>(max, data_.size());
        memcpy(out, data_.constData(), n);
        data_.remove(0, n);
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray data_;
};
}  // namespace

class ListingReaderTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup()
    {
        SymbolTable.clear();
        SymbolCount = 0;
    }

    void codeLineGivesAddressBytesLabelAndSource()
    {
        QCOMPARE(GoodLine.indexOf("START"), 27);   // the helper puts the source at column 28
        const SymbolEntry entry = Read(GoodLine);
        QCOMPARE(entry.SymbolAddress, 0x1000);
        QCOMPARE(int(entry.SymbolCodeSize), 2);
        QCOMPARE(int(entry.SymbolCode[0]), 0x86);
        QCOMPARE(int(entry.SymbolCode[1]), 0x12);
        QCOMPARE(entry.SymbolLabel, QString("START"));
        QCOMPARE(entry.SymbolSource, QString("START LDAA #$12"));
    }

    void lineNeedsTwentyEightCharacters()
    {
        const QString bare = ListingLine("0001", "2000", {"01"}, "");   // 27 characters, all columns right
        QCOMPARE(bare.size(), 27);
        QVERIFY(!ListingLineCounts(bare));
        QVERIFY(ListingLineCounts(bare + ' '));
        // A tab would make the line long enough only once expanded: too late.
        QVERIFY(!ListingLineCounts(bare.left(26) + '\t'));
    }

    void everySeparatorColumnMustBeBlank_data()
    {
        QTest::addColumn<int>("column");
        for (int column : {5, 10, 13, 16, 19, 22, 25, 26, 27})
            QTest::addRow("column %d", column) << column;
    }

    void everySeparatorColumnMustBeBlank()
    {
        QFETCH(int, column);
        for (const QChar spoiler : {QChar('X'), QChar('0'), QChar('\t')}) {
            QString line = GoodLine;
            line[column - 1] = spoiler;
            QVERIFY2(!ListingLineCounts(line), qPrintable(line));
        }
    }

    void lineNumberAndAddressMustReadAsNumbers()
    {
        QVERIFY(!ListingLineCounts(ListingLine("   3", "1000", {}, "X")));   // blank-padded number
        QVERIFY(!ListingLineCounts(ListingLine("LINE", "1000", {}, "X")));   // a page header
        QVERIFY(!ListingLineCounts(ListingLine("0003", "    ", {}, "X")));   // a line without address
        QVERIFY(!ListingLineCounts(ListingLine("0003", "1G00", {}, "X")));
        QVERIFY(!ListingLineCounts(ListingLine("0003", "10 0", {}, "X")));
        QCOMPARE(Read(ListingLine("0003", "ab1f", {}, "X")).SymbolAddress, 0xAB1F);
        QCOMPARE(Read(ListingLine("9999", "FFFF", {}, "X")).SymbolAddress, 0xFFFF);
    }

    void bytesKeepTheIndexOfTheirPlace()
    {
        const SymbolEntry entry = Read(ListingLine("0001", "1000", {"ce", "  ", "12", "  ", "G5"}, " NOP"));
        QCOMPARE(int(entry.SymbolCodeSize), 3);
        QCOMPARE(int(entry.SymbolCode[0]), 0xCE);   // lower-case digits are read in upper case
        QCOMPARE(int(entry.SymbolCode[1]), 0);
        QCOMPARE(int(entry.SymbolCode[2]), 0x12);
        QCOMPARE(int(entry.SymbolCode[4]), 0x05);   // nonsense does not fail: the G is skipped
        QCOMPARE(int(Read(ListingLine("0001", "1000", {"01", "02", "03", "04", "05"}, " X")).SymbolCodeSize), 5);
    }

    void labelStandsAtColumn28AndEndsAtABlank()
    {
        QCOMPARE(Read(ListingLine(1, 0x100, {"01"}, "   NOP")).SymbolLabel, QString());
        QCOMPARE(Read(ListingLine(1, 0x100, {"01"}, "   NOP")).SymbolSource, QString("   NOP"));
        // A label that ends the line has no blank behind it and is not taken.
        const SymbolEntry last = Read(ListingLine(1, 0x100, {}, "LAST"));
        QCOMPARE(last.SymbolLabel, QString());
        QCOMPARE(last.SymbolSource, QString("LAST"));
        // Stored as written; the lookup only finds upper case.
        SymbolTable = {Read(ListingLine(1, 0x180, {"39"}, "loop RTS"))};
        SymbolCount = 1;
        QCOMPARE(SymbolTable[0].SymbolLabel, QString("loop"));
        QString name = "loop";
        QCOMPARE(SymbolValue(name), -1);
    }

    void tabsAreExpandedAfterTheTest()
    {
        // The tab at column 32 reaches the stop at 36 (counted from 0), as the editor shows it.
        const SymbolEntry entry = Read(ListingLine(2, 0x1002, {"20", "FE"}, "LOOP\tBRA LOOP"));
        QCOMPARE(entry.SymbolLabel, QString("LOOP"));
        QCOMPARE(entry.SymbolSource, QString("LOOP     BRA LOOP"));
        // A tab behind column 28 ends a label like a blank.
        QCOMPARE(Read(ListingLine(2, 0x1002, {}, "TAB\tEQU 1")).SymbolLabel, QString("TAB"));
    }

    void dataDirectivesKeepLabelAndAddressOnly_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("directive");
        QTest::newRow("FCB with label") << "TABLE FCB 1,2,3,4,5" << "TABLE" << true;
        QTest::newRow("lower case") << "TEXT fcc 'HELLO'" << "TEXT" << true;
        QTest::newRow("mixed case") << "WORDS Fdb $1234" << "WORDS" << true;
        QTest::newRow("FILL") << "AREA fill 0,5" << "AREA" << true;
        QTest::newRow("FILLER counts by its four letters") << "X FILLER" << "X" << true;
        QTest::newRow("FCBX counts by its three letters") << "X FCBX 1" << "X" << true;
        QTest::newRow("no label, blanks before") << "      FDB $1" << "" << true;
        QTest::newRow("FIL is an instruction word") << "X FIL 1" << "X" << false;
        QTest::newRow("FC alone") << "X FC" << "X" << false;
        QTest::newRow("instruction") << "TBL LDAA TABLE" << "TBL" << false;
        // A label that ends the line is not a label: the directive test then reads it.
        QTest::newRow("unlabelled word FCBLOCK") << "FCBLOCK" << "" << true;
    }

    void dataDirectivesKeepLabelAndAddressOnly()
    {
        QFETCH(QString, source);
        QFETCH(QString, label);
        QFETCH(bool, directive);
        const SymbolEntry entry = Read(ListingLine("0007", "2000", {"01", "02", "03", "04", "05"}, source));
        QCOMPARE(entry.SymbolAddress, 0x2000);
        QCOMPARE(entry.SymbolLabel, label);
        QCOMPARE(int(entry.SymbolCodeSize), directive ? 0 : 5);
        QCOMPARE(entry.SymbolSource, directive ? QString() : source);
    }

    void equatesAndOriginsCountWithoutCode()
    {
        const SymbolEntry equate = Read(ListingLine(1, 0x40, {}, "LIMIT EQU $40"));
        QCOMPARE(equate.SymbolLabel, QString("LIMIT"));
        QCOMPARE(equate.SymbolAddress, 0x40);
        QCOMPARE(int(equate.SymbolCodeSize), 0);
        QCOMPARE(equate.SymbolSource, QString("LIMIT EQU $40"));
    }

    void tableKeepsListingOrderAndDuplicates()
    {
        int lines = 0;
        ReadAll(QStringList{"Orvane listing, page 1", "", ListingLine(1, 0x1000, {"86"}, "DUP LDAA #1"),
                            ListingLine(2, 0x0800, {}, "OTHER EQU $800"), ListingLine(3, 0x1000, {"86"}, "DUP LDAA #1"),
                            QString()}
                    .join('\n')
                    .toLatin1(),
                &lines);
        QCOMPARE(lines, 5);   // the pump runs after every line, counted or not; the last one ends the text
        QCOMPARE(int(SymbolCount), 3);
        QCOMPARE(SymbolTable[1].SymbolLabel, QString("OTHER"));
        QCOMPARE(SymbolTable[2].SymbolAddress, 0x1000);
        SymbolTable[2].SymbolAddress = 0x2000;   // the first of two definitions wins
        QString name = "dup";
        QCOMPARE(SymbolValue(name), 0x1000);
    }

    void everyLineEndGivesTheSameTable_data()
    {
        QTest::addColumn<QString>("end");
        QTest::newRow("CR LF") << "\r\n";
        QTest::newRow("LF") << "\n";
        QTest::newRow("CR") << "\r";
    }

    void everyLineEndGivesTheSameTable()
    {
        QFETCH(QString, end);
        const QStringList lines{ListingLine(1, 0x10, {"01"}, "A NOP"), ListingLine(2, 0x11, {"01"}, "B NOP"),
                                ListingLine(3, 0x12, {"01"}, "C NOP")};
        ReadAll((lines.join(end)).toLatin1());   // the last line has no end
        QCOMPARE(int(SymbolCount), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(SymbolTable[i].SymbolAddress, 0x10 + i);
            QVERIFY(!SymbolTable[i].SymbolSource.contains('\r'));
        }
        QCOMPARE(SymbolTable[2].SymbolSource, QString("C NOP"));
    }

    void crLfSplitAcrossReadsIsOneLineEnd()
    {
        // The reader takes 64 KiB at a time; put the CR last in the first piece.
        const QByteArray first = ListingLine(1, 0x10, {"01"}, "A NOP").toLatin1();
        QByteArray data = first + QByteArray(65536 - first.size() - 1, 'x');   // one long line
        data += "\r\n" + ListingLine(2, 0x11, {"01"}, "B NOP").toLatin1() + "\r\n";
        QCOMPARE(data.indexOf('\r'), 65535);
        int lines = 0;
        ReadAll(data, &lines);
        QCOMPARE(lines, 2);
        QCOMPARE(int(SymbolCount), 2);
        QCOMPARE(SymbolTable[0].SymbolSource.size(), 65536 - 1 - 27);
    }

    void veryLongLinesAndBinaryDataDoNotStopTheReader()
    {
        QByteArray data(3 * 1024 * 1024, Qt::Uninitialized);
        QRandomGenerator random(7);
        for (char& c : data)
            c = static_cast<char>(random.bounded(256));
        data.replace('\n', "x");   // one line of three megabytes: nothing counts
        data.replace('\r', "x");
        const QString longSource = "HUGE " + QString(200000, 'N');
        data += "\n" + ListingLine(1, 0x1234, {"7E"}, longSource).toLatin1() + "\n";
        QByteArray noise(4096, '\0');
        data += noise + "\n";
        ReadAll(data);
        QCOMPARE(int(SymbolCount), 1);
        QCOMPARE(SymbolTable[0].SymbolLabel, QString("HUGE"));
        QCOMPARE(SymbolTable[0].SymbolSource, longSource);
    }

    void anewLoadReplacesTheOldTableEvenWhenNothingCounts()
    {
        ReadAll(ListingLine(1, 0x10, {"01"}, "A NOP").toLatin1());
        QCOMPARE(int(SymbolCount), 1);
        ReadAll("just text\nnothing of a listing\n");
        QCOMPARE(int(SymbolCount), 0);
        QString name = "A";
        QCOMPARE(SymbolValue(name), -1);
    }

    void aFailingDeviceKeepsWhatWasRead()
    {
        FailingDevice device((ListingLine(1, 0x10, {"01"}, "A NOP") + '\n' + ListingLine(2, 0x11, {"01"}, "B NOP")
                              + '\n' + ListingLine(3, 0x12, {"01"}, "C NO")).toLatin1());
        try {
            ReadSymbols(device, {});
            QFAIL("a failing device must stop the load");
        } catch (const ListingReadError& error) {
            QCOMPARE(QString(error.what()), QString("Device I/O error"));
        }
        // The third line never ended before the failure, so it is not read.
        QCOMPARE(int(SymbolCount), 2);
        QCOMPARE(SymbolTable[1].SymbolLabel, QString("B"));
    }
};

QTEST_APPLESS_MAIN(ListingReaderTest)
#include "ListingReader_test.moc"
