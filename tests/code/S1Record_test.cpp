// The reading of one line of a machine-code file: which lines are records,
// the fixed columns, the one's-complement checksum, lines that are short,
// lower-case or carry junk, and the texts of the download window.
#include <QtTest>

#include "code/S1Record.h"
#include "source/hc11/Assembler.h"
#include "support/S19Image.h"

#include <sstream>

using Kind = S1Record::Kind;
using Bytes = std::vector<std::uint8_t>;

class S1RecordTest : public QObject {
    Q_OBJECT
private slots:
    void goodRecordGivesAddressAndData()
    {
        // 3 + 16 bytes at $7AF0; 13 + 7A + F0 + 0A + 0A + 0D + 61 = $1FF.
        const S1Record record = ReadS1Line("S1137AF00A0A0D0000000000000000000000000061\r\n");
        QCOMPARE(record.kind, Kind::Good);
        QCOMPARE(record.Address, 0x7AF0);
        QCOMPARE(record.Data.size(), std::size_t(16));
        QCOMPARE(record.Data[0], std::uint8_t(0x0A));
        QCOMPARE(record.Data[2], std::uint8_t(0x0D));
        QCOMPARE(record.Data[15], std::uint8_t(0x00));

        // What stands behind the checksum does not count, nor does the line end.
        QCOMPARE(ReadS1Line("S1040010EB00;comment").kind, Kind::Good);
        QCOMPARE(ReadS1Line("S1040010EB00").Data, Bytes{0xEB});
    }

    void checksumIsTheOnesComplementOfTheSum()
    {
        QVERIFY(S1ChecksumGood(0x05, 0xE000, {0x86, 0x42}, 0x52));
        // $53 would close a two's-complement sum: one off, and refused.
        QVERIFY(!S1ChecksumGood(0x05, 0xE000, {0x86, 0x42}, 0x53));
        // The address counts as two bytes, not as one 16-bit number modulo 256.
        QVERIFY(S1ChecksumGood(0x04, 0x1234, {0x00}, 0xFF - 0x04 - 0x12 - 0x34));
        QVERIFY(!S1ChecksumGood(0x04, 0x1234, {0x00}, 0xFF - 0x04 - 0x34));

        QCOMPARE(ReadS1Line("S1137AF00A0A0D0000000000000000000000000062").kind, Kind::BadChecksum);
        // One data byte changed, the checksum kept.
        QCOMPARE(ReadS1Line("S1137AF00A0B0D0000000000000000000000000061").kind, Kind::BadChecksum);
    }

    void onlyUpperCaseS1LinesAreRecords()
    {
        for (const char* line : {"S00600004844521B", "S9030000FC", "s1040010EB00", "S2080100000102030400",
                                 "", "\n", " S1040010EB00", "1040010EB00"})
            QCOMPARE(ReadS1Line(line).kind, Kind::NotARecord);
    }

    void lowerCaseOrStrayDigitsAddNothing()
    {
        // "eb" reads as nothing: data 0, and the sum no longer closes.
        QCOMPARE(ReadS1Line("S1040010eb00").kind, Kind::BadChecksum);
        // A stray character in a field is skipped: "E?" is $E.
        const S1Record stray = ReadS1Line("S1040010E?00");
        QCOMPARE(stray.Data, Bytes{0x0E});
        QCOMPARE(stray.kind, Kind::BadChecksum);
        // A lower-case digit that happens to stand for 0 changes nothing.
        const S1Record zero = ReadS1Line("S1040010EB0x");
        QCOMPARE(zero.kind, Kind::Good);
    }

    void shortLineReadsTheDigitsThatArePresent()
    {
        // The count says one data byte and a checksum, but the checksum is missing:
        // it reads as 0, and 04 + 00 + 10 + EB = $FF passes.
        const S1Record noChecksum = ReadS1Line("S1040010EB");
        QCOMPARE(noChecksum.kind, Kind::Good);
        QCOMPARE(noChecksum.Data, Bytes{0xEB});
        // Half a data byte: "E" is $E, the rest reads as nothing.
        const S1Record half = ReadS1Line("S1060010E");
        QCOMPARE(half.Data, (Bytes{0x0E, 0x00, 0x00}));
        QCOMPARE(half.kind, Kind::BadChecksum);
        // Address digits missing: the address is what the two present give.
        QCOMPARE(ReadS1Line("S104E0").Address, 0xE0);
    }

    void byteCountOfThreeOrLessHoldsNoData()
    {
        for (const char* line : {"S1030000FC", "S1020000FD", "S1000000", "S1", "S1\r\n", "S1zz"})
            QCOMPARE(ReadS1Line(line).kind, Kind::NoData);
        QCOMPARE(ReadS1Line("S1040000FF00").kind, Kind::BadChecksum);   // one byte: a record
    }

    void recordsMustEndAtTheTopOfMemory()
    {
        S1Record record;
        record.Address = 0xFFFE;
        record.Data = {0xE0, 0x00};
        QVERIFY(S1RecordFits(record));
        record.Address = 0xFFFF;
        QVERIFY(!S1RecordFits(record));
        record.Data = {0x01};
        QVERIFY(S1RecordFits(record));
        // The largest record a count can give, 252 bytes, from $FF04 on ends at $FFFF.
        record.Address = 0xFF04;
        record.Data.assign(252, 0);
        QVERIFY(S1RecordFits(record));
        record.Address = 0xFF05;
        QVERIFY(!S1RecordFits(record));
    }

    void assemblerOutputReadsBackByteForByte()
    {
        const auto result = hc11::as11::AssembleSource(
            " ORG $E000\nSTART LDS #$00FF\n LDAA #$55\nLOOP STAA $1004\n COMA\n BRA LOOP\n"
            " FCC 'A text long enough to need more than one record'\n"
            " ORG $FFFE\n FDB START\n",
            "PROG");
        QVERIFY(result.errors.empty());
        const asmtest::S19Image image = asmtest::ReadS19(result.s19);
        QVERIFY2(image.problem.empty(), image.problem.c_str());

        std::map<int, std::uint8_t> read;
        int records = 0;
        std::istringstream lines(result.s19);
        for (std::string line; std::getline(lines, line);) {
            const S1Record record = ReadS1Line(QByteArray::fromStdString(line));
            if (record.kind == Kind::NotARecord)
                continue;
            QCOMPARE(record.kind, Kind::Good);
            ++records;
            for (std::size_t i = 0; i < record.Data.size(); ++i)
                read[record.Address + int(i)] = record.Data[i];
        }
        QCOMPARE(records, image.dataRecords);
        QVERIFY(records >= 3);
        QVERIFY(read == image.bytes);
        QCOMPARE(read[0xFFFE], std::uint8_t(0xE0));
    }

    void windowTexts()
    {
        QCOMPARE(DownloadAddressText(0xE000), QString("Address = $E000"));
        QCOMPARE(DownloadAddressText(0x12), QString("Address = $0012"));
        QCOMPARE(DownloadSizeText(1), QString("1 byte"));
        QCOMPARE(DownloadSizeText(2), QString("2 bytes"));
        QCOMPARE(DownloadSizeText(252), QString("252 bytes"));

        QCOMPARE(DownloadProgress(0, 300), 0);
        QCOMPARE(DownloadProgress(299, 300), 99);   // integer division: 100 only at the end
        QCOMPARE(DownloadProgress(300, 300), 100);
        // Files above 21 MB would overflow a 32-bit product.
        QCOMPARE(DownloadProgress(qint64(3) << 30, qint64(4) << 30), 75);
    }
};

QTEST_APPLESS_MAIN(S1RecordTest)
#include "S1Record_test.moc"
