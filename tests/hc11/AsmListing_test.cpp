#include <map>
#include <sstream>

#include "hc11/asm/Assembler.h"
#include "hc11/asm/S19Reader.h"
#include "hc11/asm/S19Writer.h"
#include "engine/code/ListingReader.h"
#include "support/S19Image.h"
#include <QBuffer>

using namespace asmtest;
using hc11::as11::AssembleSource;

namespace {

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// The listing as the IDE's symbol reader takes it, so the two cannot drift apart.
QVector<SymbolEntry> ReadListing(const std::string& listing)
{
    QByteArray bytes(listing.data(), qsizetype(listing.size()));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    ReadSymbols(device, {});
    return SymbolTable.mid(0, SymbolCount);
}

} // namespace

class AsmListingTest : public QObject {
    Q_OBJECT
private slots:
    void codeLinesStandInTheReadersColumns()
    {
        const auto lines = Lines(AssembleSource("* heading\n ORG $1000\nSTART LDAA #$12\n\n STD 4,Y\n").listing);
        QCOMPARE(lines, (std::vector<std::string>{
            "0001                       * heading", "0002 1000                   ORG $1000",
            "0003 1000 86 12            START LDAA #$12", "0004", "0005 1002 18 ED 04          STD 4,Y",
            "", "Symbol Table", "", " START                            $1000", "", "0 errors"}));
    }

    void longDataContinuesWithoutSourceAndLoadsAsAValue()
    {
        const auto result = AssembleSource(" ORG $2000\nTABLE FCB 1,2,3,4,5,6,7\n FCC /abcdefghijk/\n");
        const auto lines = Lines(result.listing);
        QCOMPARE(lines[1], std::string("0002 2000 01 02 03 04 05   TABLE FCB 1,2,3,4,5,6,7"));
        QCOMPARE(lines[2], std::string("0002 2005 06 07"));
        QCOMPARE(lines[5], std::string("0003 2011 6B"));
        // TABLE is a value with no bytes; the continuations are dropped.
        const auto entries = ReadListing(result.listing);
        QCOMPARE(int(entries.size()), 3);
        QVERIFY(entries[1].SymbolLabel == "TABLE" && entries[1].SymbolAddress == 0x2000);
        QVERIFY(entries[1].SymbolCodeSize == 0 && entries[1].SymbolSource.isEmpty());
    }

    void valuesAndLabelsLoad()
    {
        const auto entries = ReadListing(
            AssembleSource("PORT EQU $6000\nN SET -1\n ORG $10\nLOOP: INCA\nALONE\n\tBRA LOOP\n END\n").listing);
        // EQU and SET carry their value; END has no address.
        QCOMPARE(int(entries.size()), 6);
        QVERIFY(entries[0].SymbolLabel == "PORT" && entries[0].SymbolAddress == 0x6000);
        QCOMPARE(entries[1].SymbolAddress, 0xFFFF);
        QVERIFY(entries[3].SymbolLabel == "LOOP" && entries[3].SymbolAddress == 0x10);
        QVERIFY(entries[4].SymbolLabel == "ALONE" && entries[4].SymbolAddress == 0x11);
        QCOMPARE(entries[5].SymbolSource.left(9), QString(9, ' '));   // tab expanded
        QVERIFY(entries[5].SymbolCodeSize == 2 && entries[5].SymbolCode[0] == 0x20 && entries[5].SymbolCode[1] == 0xFD);
    }

    void lineNumbersBeyondFourDigitsKeepTheColumns()
    {
        std::string source;
        for (int i = 0; i < 10001; ++i)
            source += " NOP\n";
        const auto lines = Lines(AssembleSource(source).listing);
        QCOMPARE(lines[9998].substr(0, 9), std::string("9999 270E"));
        QCOMPARE(lines[9999].substr(0, 9), std::string("0000 270F"));
    }

    // examples/: clean, and every label and code byte in the listing.
    void examplesLoadAsSymbols()
    {
        const struct { const char* file; const char* label; int value; } rows[] = {
            {"ledcount.asm", "WLOOP", 0xE01A}, {"echo.asm", "PUTC", 0xE028}, {"lookup.asm", "SEGMENTS", 0xE041}};
        for (const auto& row : rows) {
            QFile f(QFINDTESTDATA(QString("../../examples/") + row.file));
            QVERIFY2(f.open(QIODevice::ReadOnly), row.file);
            const auto result = AssembleSource(f.readAll().toStdString());
            QVERIFY2(result.errors.empty(), result.ErrorFileText().c_str());
            const S19Image image = ReadS19(result.s19);
            QVERIFY(image.problem.empty());
            QCOMPARE(image.start, 0xE000);
            QCOMPARE(image.bytes.at(0xFFFE) * 256 + image.bytes.at(0xFFFF), 0xE000);   // the reset vector
            std::map<QString, int> labels;
            int instructionBytes = 0;
            for (const SymbolEntry& e : ReadListing(result.listing)) {
                if (!e.SymbolLabel.isEmpty())
                    labels.emplace(e.SymbolLabel, e.SymbolAddress);
                for (int i = 0; i < e.SymbolCodeSize; ++i)
                    QCOMPARE(int(e.SymbolCode[i]), int(image.bytes.at(e.SymbolAddress + i)));
                instructionBytes += e.SymbolCodeSize;
            }
            QVERIFY(instructionBytes > 30);
            QCOMPARE(labels.at(QStringLiteral("START")), 0xE000);
            QCOMPARE(labels.at(QString(row.label)), row.value);
        }
    }

    void s19RecordsHoldUpToThirtyTwoBytesInEmissionOrder()
    {
        std::string out;
        hc11::as11::S19Writer writer(out, "HDR");
        std::vector<std::uint8_t> data(70, 0);
        writer.Data(0x1000, data.data(), 40);
        writer.Data(0x1028, data.data() + 40, 30);   // continues the run
        writer.Data(0x0100, data.data(), 1);          // a jump back opens a new record
        writer.End(0x1000);
        std::vector<std::string> heads;
        for (const std::string& line : Lines(out))
            heads.push_back(line.substr(0, 8));
        QCOMPARE(heads, (std::vector<std::string>{"S0060000", "S1231000", "S1231020", "S1091040", "S1040100", "S9031000"}));
        QVERIFY(out.find("S00600004844521B\n") == 0 && out.find("S104010000FA\nS9031000EC") != std::string::npos);
        const S19Image image = ReadS19(out);
        QVERIFY2(image.problem.empty() && image.bytes.size() == 71, image.problem.c_str());
    }

    void s19ReaderStopsAtTheFirstBadRecordAndSaysWhy()
    {
        const std::string good = "S0030000FC\nS104E000AA71\n";
        const std::pair<std::string, std::string> rows[] = {
            {"S104E000AA72\n", "bad checksum"},
            {"S105E000AA71\n", "its byte count does not match its length"},
            {"S104E00GAA71\n", "bad hex digit in column 8"},
            {"S104E000AA7\n", "bad hex digit in column 12"},
            {"S2050000000000\n", "S2 records are not for a 16-bit address space"},
            {"S1 04E000AA71\n", "bad hex digit in column 3"},
            {"garbage\n", "not an S-record"},
            {"S105FFFFAABB97\n", "its data runs past $FFFF"},
        };
        for (const auto& [record, why] : rows) {
            const hc11::as11::S19Image image = hc11::as11::ReadS19(good + "\r\n" + record + good);
            QCOMPARE(image.error, why);
            QCOMPARE(image.errorLine, 4);
            QCOMPARE(image.blocks.size(), std::size_t(1));   // what came before the bad record
        }
        // An S9 record ends the file: what follows is not read.
        const hc11::as11::S19Image ended = hc11::as11::ReadS19(good + "S903E0001C\ngarbage\n");
        QVERIFY(ended.error.empty() && ended.start == 0xE000 && ended.blocks[0].bytes == std::vector<std::uint8_t>{0xAA});
    }
};

QTEST_APPLESS_MAIN(AsmListingTest)
#include "AsmListing_test.moc"
