#include <QtTest>

#include "code/S1Record.h"

using Kind = S1Record::Kind;
using Bytes = std::vector<std::uint8_t>;
Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(Bytes)

class S1RecordTest : public QObject {
    Q_OBJECT
private slots:
    void readsByFixedColumns_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<int>("address");
        QTest::addColumn<Bytes>("data");
        // 13 + 7A + F0 + 0A + 0A + 0D + 61 = $1FF: one's complement (two's would need $62)
        QTest::newRow("good") << QByteArray("S1137AF00A0A0D0000000000000000000000000061\r\n") << Kind::Good
                              << 0x7AF0 << Bytes{0x0A, 0x0A, 0x0D, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
        QTest::newRow("junk behind the sum") << QByteArray("S1040010EB00;x") << Kind::Good << 0x10 << Bytes{0xEB};
        QTest::newRow("sum one off") << QByteArray("S1040010EB01") << Kind::BadChecksum << 0x10 << Bytes{0xEB};
        // Lower case and stray characters add nothing to a field's value.
        QTest::newRow("lower-case data") << QByteArray("S1040010eb00") << Kind::BadChecksum << 0x10 << Bytes{0};
        QTest::newRow("stray digit") << QByteArray("S1040010E?00") << Kind::BadChecksum << 0x10 << Bytes{0x0E};
        QTest::newRow("lower-case zero") << QByteArray("S1040010EB0x") << Kind::Good << 0x10 << Bytes{0xEB};
        // Missing digits read as nothing and the sum decides: 04 + 00 + 10 + EB = $FF.
        QTest::newRow("sum missing") << QByteArray("S1040010EB") << Kind::Good << 0x10 << Bytes{0xEB};
        QTest::newRow("half a byte") << QByteArray("S1060010E") << Kind::BadChecksum << 0x10 << Bytes{0x0E, 0, 0};
        int row = 0;
        for (const char* line : {"S1030000FC", "S1", "S1\xFF\x01"})
            QTest::addRow("no data %d", ++row) << QByteArray(line) << Kind::NoData << 0 << Bytes{};
        for (const char* line : {"S9030000FC", "s1040010EB00", "", " S1040010EB00"})
            QTest::addRow("not a record %d", ++row) << QByteArray(line) << Kind::NotARecord << 0 << Bytes{};
    }

    void readsByFixedColumns()
    {
        QFETCH(QByteArray, line);
        QFETCH(Kind, kind);
        const S1Record record = ReadS1Line(line);
        QCOMPARE(record.kind, kind);
        QTEST(int(record.Address), "address");
        QTEST(record.Data, "data");
    }

    void progressNeverOverflows()
    {
        QCOMPARE(DownloadProgress(299, 300), 99);   // 100 only at the end
        QCOMPARE(DownloadProgress(qint64(3) << 30, qint64(4) << 30), 75);   // no 32-bit overflow
    }
};

QTEST_APPLESS_MAIN(S1RecordTest)
#include "S1Record_test.moc"
