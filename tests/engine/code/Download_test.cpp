// Download: the line reader, and the run over the simulator's link with
// skipped and refused records.

#include "engine/code/S19Download.h"
#include "engine/code/S1Record.h"
#include "engine/state/TargetState.h"
#include "support/DebuggerFixture.h"
#include "support/WorkFolder.h"

#include <random>

namespace {
// An S1 line with its one's-complement checksum, or one that is off by checksumOffset.
QByteArray S1(int address, const std::vector<std::uint8_t>& data, int checksumOffset = 0)
{
    QByteArray record = QByteArray(1, char(data.size() + 3)) + char(address >> 8) + char(address);
    record.append(reinterpret_cast<const char*>(data.data()), qsizetype(data.size()));
    int sum = 0;
    for (const char byte : record)
        sum += std::uint8_t(byte);
    return "S1" + (record + char(0xFF - sum + checksumOffset)).toHex().toUpper() + "\n";
}

// The run on its own: the simulator's link, a view that records, the file in a work folder.
struct EngineRun : DownloadView {
    DebuggerFixture f{true};
    WorkFolder folder;
    QStringList records;

    explicit EngineRun(const QByteArray& file)
    {
        folder.Write("prog.s19", file);
        CpuRegisters.PC = 0x1234;
        TargetMemory.fill(0x5A);
    }
    DownloadResult Go() { return DownloadMachineCode(f.link, folder.Path("prog.s19"), *this); }
    void ShowProgress(int) override {}
    void ShowRecord(std::int32_t address, int count) override
    {
        records << DownloadAddressText(address) + ' ' + DownloadSizeText(count);
    }
    void LetEventsRun() override {}
    bool CancelRequested() const override { return false; }
};

}  // namespace

class DownloadTest : public QObject {
    Q_OBJECT
private slots:
    void linesAreReadByFixedColumns()
    {
        using Kind = S1Record::Kind;
        // 13 + 7A + F0 + 0A + 0A + 0D + 61 = $1FF: one's complement (two's would need $62).
        // Lower case and stray characters add nothing to a field; a line short of digits is refused.
        const std::tuple<QByteArray, Kind, int, std::vector<std::uint8_t>> rows[] = {
            {"S1137AF00A0A0D0000000000000000000000000061\r\n", Kind::Good, 0x7AF0,
             {0x0A, 0x0A, 0x0D, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
            {"S1040010EB00;x", Kind::Good, 0x10, {0xEB}},       {"S1040010EB01", Kind::BadChecksum, 0x10, {0xEB}},
            {"S1040010eb00", Kind::BadChecksum, 0x10, {0}},     {"S1040010E?00", Kind::BadChecksum, 0x10, {0x0E}},
            {"S1040010EB0x", Kind::Good, 0x10, {0xEB}},         {"S1040010EB\r\n", Kind::Truncated, 0, {}},
            {"S1060010E", Kind::Truncated, 0, {}},              {"S1030000FC", Kind::NoData, 0, {}},
            {"S1FF", Kind::Truncated, 0, {}},                   {"S1020000FD", Kind::NoData, 0, {}},
            {"S100", Kind::NoData, 0, {}},                      {"S1", Kind::NoData, 0, {}},
            {"S1\xFF\x01", Kind::NoData, 0, {}},
            {"S9030000FC", Kind::NotARecord, 0, {}},            {"s1040010EB00", Kind::NotARecord, 0, {}},
            {"", Kind::NotARecord, 0, {}},                      {" S1040010EB00", Kind::NotARecord, 0, {}}};
        for (const auto& [line, kind, address, data] : rows) {
            const S1Record record = ReadS1Line(line);
            QVERIFY2(record.kind == kind && int(record.Address) == address && record.Data == data, line.constData());
        }
        QCOMPARE(DownloadProgress(299, 300), 99);   // 100 only at the end
        QCOMPARE(DownloadProgress(qint64(3) << 30, qint64(4) << 30), 75);   // no 32-bit overflow
    }

    void filesWithoutGoodRecordsOnlyErase()
    {
        std::mt19937 random(11);
        QByteArray garbage;
        for (int i = 0; i < 20000; ++i)
            garbage += char(random());
        garbage.replace('S', 'x');   // so that no line is a record
        for (const QByteArray& file : {"S00600004844521B\n\ns1040010EB00\nS2080100000102030400\n" +
                                           S1(0x0100, {0x11}, 1) + "S9030000FC\n", garbage}) {
            EngineRun run(file);
            const DownloadResult result = run.Go();
            QVERIFY(result.kind == DownloadResult::Kind::Ended && !result.written);
            QVERIFY(TargetMemory[0xE000] == 0xFF && TargetMemory[0x0100] == 0x5A);
            QCOMPARE(CpuRegisters.PC, 0xFFFF);   // the erased vector
        }
    }

    void badRecordsAreSkippedAndTheRunGoesOn()
    {
        QByteArray lowerCase = S1(0x0120, {0xAB, 0xCD});
        lowerCase.replace("ABCD", "abcd");
        EngineRun run(S1(0x0100, {0x11, 0x22}) + S1(0x0110, {0x33}, 1) + lowerCase + S1(0x0140, {0x44}) +
                      S1(0x0101, {0x99}));
        const DownloadResult result = run.Go();
        QVERIFY(result.kind == DownloadResult::Kind::Ended && result.written);
        QCOMPARE(run.records, QStringList({"Address = $0100 2 bytes", "Address = $0140 1 byte",
                                           "Address = $0101 1 byte"}));
        // A later record overwrites; the skipped ones leave their bytes.
        QList<int> bytes;
        for (int at : {0x0100, 0x0101, 0x0110, 0x0120, 0x0140})
            bytes << TargetMemory[at];
        QCOMPARE(bytes, (QList<int>{0x11, 0x99, 0x5A, 0x5A, 0x44}));
    }

    void refusedRecordsAndCancelEndTheRun()
    {
        // A record without data, or cut short, must not pass for zeros nor vanish without a word
        // (which lines are which is the line reader's test).
        const std::pair<QByteArray, const char*> refused[] = {
            {"S1030000FC\n", "S1 record without data in line 2"},
            {"S1050130AA\n", "S1 record shorter than its byte count in line 2"},
            {S1(0xFFFF, {0x01, 0x02}), "S1 record past $FFFF in line 2"}};
        for (const auto& [line, message] : refused) {
            EngineRun run(S1(0x0100, {0x11}) + line + S1(0x0200, {0x22}) + S1(0xFFFE, {0xE0, 0x00}));
            const DownloadResult result = run.Go();
            QVERIFY(result.kind == DownloadResult::Kind::Failed && !result.written);
            QCOMPARE(result.failure, QString(message));
            // What was written before stays; nothing wrapped round.
            QVERIFY(TargetMemory[0x0100] == 0x11 && TargetMemory[0x0200] == 0x5A && TargetMemory[0x0000] == 0x5A);
            QCOMPARE(CpuRegisters.PC, 0x1234);
        }
    }
};

QTEST_MAIN(DownloadTest)
#include "Download_test.moc"
