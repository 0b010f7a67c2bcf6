#include <QtTest>

#include <sstream>

#include "AsmTestHelpers.h"
#include "source/hc11/AsmListing.h"
#include "source/hc11/S19Writer.h"
#include "support/AsmPrograms.h"
#include "support/ListingRules.h"

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

} // namespace

class AsmListingTest : public QObject {
    Q_OBJECT
private slots:
    void codeLinesStandInTheReadersColumns()
    {
        const auto lines = Lines(AssembleSource("* heading\n ORG $1000\nSTART LDAA #$12\n\n STD 4,Y\n").listing);
        QCOMPARE(lines[0], std::string("0001                       * heading"));
        QCOMPARE(lines[1], std::string("0002 1000                   ORG $1000"));
        QCOMPARE(lines[2], std::string("0003 1000 86 12            START LDAA #$12"));
        QCOMPARE(lines[3], std::string("0004"));
        QCOMPARE(lines[4], std::string("0005 1002 18 ED 04          STD 4,Y"));

        ListingEntry e;
        QVERIFY(ReadListingLine(lines[2], e));
        QCOMPARE(e.address, 0x1000);
        QCOMPARE(int(e.code.size()), 2);
        QCOMPARE(e.label, std::string("START"));
        QCOMPARE(e.source, std::string("START LDAA #$12"));
        QVERIFY(!ReadListingLine(lines[0], e));   // a comment has no address
        QVERIFY(!ReadListingLine(lines[3], e));
    }

    void longDataContinuesWithoutSourceAndLoadsAsAValue()
    {
        const auto result = AssembleSource(" ORG $2000\nTABLE FCB 1,2,3,4,5,6,7\n FCC /abcdefghijk/\n");
        const auto lines = Lines(result.listing);
        QCOMPARE(lines[1], std::string("0002 2000 01 02 03 04 05   TABLE FCB 1,2,3,4,5,6,7"));
        QCOMPARE(lines[2], std::string("0002 2005 06 07"));
        QCOMPARE(lines[4], std::string("0003 200C 66 67 68 69 6A"));
        QCOMPARE(lines[5], std::string("0003 2011 6B"));

        // The reader keeps TABLE as a value with no bytes, and drops the continuations.
        const auto entries = ReadListing(result.listing);
        QCOMPARE(int(entries.size()), 3);
        QCOMPARE(entries[1].label, std::string("TABLE"));
        QCOMPARE(entries[1].address, 0x2000);
        QVERIFY(entries[1].code.empty() && entries[1].source.empty());
    }

    void valuesLabelsAndTheSymbolTable()
    {
        const auto result = AssembleSource(
            "PORT EQU $6000\nN SET -1\n ORG $10\nLOOP: INCA\nALONE\n\tBRA LOOP\n END\n");
        const auto entries = ReadListing(result.listing);
        // EQU and SET carry their value; the colon does not stick to the
        // label; a label alone on a line is still taken.
        QCOMPARE(entries[0].label, std::string("PORT"));
        QCOMPARE(entries[0].address, 0x6000);
        QCOMPARE(entries[1].address, 0xFFFF);
        QCOMPARE(entries[3].label, std::string("LOOP"));
        QCOMPARE(entries[3].address, 0x10);
        QCOMPARE(entries[4].label, std::string("ALONE"));
        QCOMPARE(entries[4].address, 0x11);
        QCOMPARE(entries[5].source.substr(0, 9), std::string("         "));   // tab expanded
        QCOMPARE(entries[5].code, (std::vector<std::uint8_t>{0x20, 0xFD}));
        QCOMPARE(int(entries.size()), 6);   // END has no address

        // The symbol table at the end is sorted and no reader line.
        const auto lines = Lines(result.listing);
        const auto table = std::find(lines.begin(), lines.end(), "Symbol Table");
        QVERIFY(table != lines.end());
        QCOMPARE(*(table + 2), std::string(" ALONE                            $0011"));
        QCOMPARE(*(table + 4), std::string(" N                                $FFFF"));
        QCOMPARE(lines.back(), std::string("0 errors"));
    }

    void lineNumbersBeyondFourDigitsKeepTheColumns()
    {
        std::string source;
        for (int i = 0; i < 10001; ++i)
            source += " NOP\n";
        const auto lines = Lines(AssembleSource(source).listing);
        QCOMPARE(lines[9998].substr(0, 9), std::string("9999 270E"));
        QCOMPARE(lines[9999].substr(0, 9), std::string("0000 270F"));
        QCOMPARE(lines[10000].substr(0, 9), std::string("0001 2710"));
    }

    void everyCodeLineOfAProgramLoads()
    {
        // Each line with code gives a reader entry with exactly its bytes.
        std::string source = " ORG $C000\n";
        TwinSource program;
        AppendEveryInstruction(program, "");
        source += program.ours;
        const auto result = AssembleSource(source);
        QVERIFY(result.errors.empty());
        const auto entries = ReadListing(result.listing);
        const S19Image image = ReadS19(result.s19);
        QCOMPARE(int(entries.size()), program.lines + 1);
        int bytes = 0;
        for (const ListingEntry& e : entries) {
            for (std::size_t i = 0; i < e.code.size(); ++i)
                QCOMPARE(int(e.code[i]), int(image.bytes.at(e.address + int(i))));
            bytes += int(e.code.size());
        }
        QCOMPARE(bytes, int(image.bytes.size()));
    }

    void s19RecordsHoldUpToThirtyTwoBytesInEmissionOrder()
    {
        std::string out;
        hc11::as11::S19Writer writer(out, "HDR");
        std::vector<std::uint8_t> data(70);
        for (int i = 0; i < 70; ++i)
            data[i] = std::uint8_t(i);
        writer.Data(0x1000, data.data(), 40);
        writer.Data(0x1028, data.data() + 40, 30);   // continues the run
        writer.Data(0x0100, data.data(), 1);          // a jump back opens a new record
        writer.End(0x1000);
        const auto lines = Lines(out);
        QCOMPARE(int(lines.size()), 6);
        QCOMPARE(lines[0], std::string("S00600004844521B"));
        QCOMPARE(lines[1].substr(0, 8), std::string("S1231000"));
        QCOMPARE(lines[2].substr(0, 8), std::string("S1231020"));
        QCOMPARE(lines[3].substr(0, 8), std::string("S1091040"));
        QCOMPARE(lines[4], std::string("S104010000FA"));
        QCOMPARE(lines[5], std::string("S9031000EC"));
        const S19Image image = ReadS19(out);
        QVERIFY2(image.problem.empty(), image.problem.c_str());
        QCOMPARE(int(image.bytes.size()), 71);
    }
};

QTEST_APPLESS_MAIN(AsmListingTest)
#include "AsmListing_test.moc"
