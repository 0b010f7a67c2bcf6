// Download: the line reader, the run over the simulator's link with skipped
// and refused records and Cancel, and the download window on the main window.
#include <QtTest>

#include "engine/code/S19Download.h"
#include "engine/code/S1Record.h"
#include "ui/code/frmDownload.h"
#include "engine/state/TargetState.h"
#include "platform/SettingsStore.h"
#include "engine/source/SourceRecords.h"
#include "support/DebuggerFixture.h"
#include "support/DoEventsAction.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"
#include "support/WorkFolder.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
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

bool HeldOpen(const QString& path)
{
    const QDir fds("/proc/self/fd");
    for (const QString& fd : fds.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
        if (QFileInfo(fds.filePath(fd)).symLinkTarget() == QFileInfo(path).canonicalFilePath())
            return true;
    return false;
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

// Stand-in CPU, stack and disassembly windows; S19File names "prog.s19" in the work folder.
struct Session {
    PluggedWindows windows{{"frmRegCPU", "frmStack", "frmDisAsm"}};
    MainFormFixture f;
    WorkFolder folder;
    frmMain* form = nullptr;

    explicit Session(const QByteArray& file)
    {
        SaveSetting("Settings", "SimEnabled", "True");
        form = &f.Start();
        folder.Enter();
        folder.Write("prog.s19", file);
        S19File = "prog.s19";
        form->SetPanelText(2, "Program: old.s19");
        BreakpointTable[0] = 0xE003;
        BreakpointCount = 1;
        form->BreakpointCountChanged();
        CpuRegisters.PC = 0x1234;
        TargetMemory.fill(0x5A);
    }
    ~Session() { S19File.clear(); }

    void ExpectOldProgramKept() const
    {
        QCOMPARE(form->PanelText(2), QString("Program: old.s19"));
        QCOMPARE(BreakpointCount, std::int16_t(1));
        QVERIFY(form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());
        QVERIFY(!form->IsOpen("frmRegCPU"));
        QVERIFY(!HeldOpen(folder.Path("prog.s19")));
        QVERIFY(!form->findChild<frmDownload*>());
    }
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
                                           S1(0x0100, {0x11}, 1) + "S9030000FC\n",
                                       garbage}) {
            EngineRun run(file);
            const DownloadResult result = run.Go();
            QVERIFY(result.kind == DownloadResult::Kind::Ended && !result.written);
            QCOMPARE(TargetMemory[0xE000], std::uint8_t(0xFF));
            QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x5A));
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
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x11));
        QCOMPARE(TargetMemory[0x0101], std::uint8_t(0x99));   // a later record overwrites
        for (int skipped : {0x0110, 0x0120})
            QCOMPARE(TargetMemory[skipped], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0140], std::uint8_t(0x44));
    }

    void refusedRecordsAndCancelEndTheRun()
    {
        // A record without data, or cut short, must not pass for zeros nor vanish without a word.
        const std::pair<QByteArray, const char*> refused[] = {
            {"S1030000FC\n", "S1 record without data in line 2"},
            {"S100\n", "S1 record without data in line 2"},
            {"S1020000FD\n", "S1 record without data in line 2"},
            {"S1FF\n", "S1 record shorter than its byte count in line 2"},
            {"S1050130AA\n", "S1 record shorter than its byte count in line 2"},
            {"S1040010EB\r\n", "S1 record shorter than its byte count in line 2"},
            {S1(0xFFFF, {0x01, 0x02}), "S1 record past $FFFF in line 2"}};
        for (const auto& [line, message] : refused) {
            EngineRun run(S1(0x0100, {0x11}) + line + S1(0x0200, {0x22}) + S1(0xFFFE, {0xE0, 0x00}));
            const DownloadResult result = run.Go();
            QVERIFY(result.kind == DownloadResult::Kind::Failed && !result.written);
            QCOMPARE(result.failure, QString(message));
            QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x11));   // written before stays
            QCOMPARE(TargetMemory[0x0200], std::uint8_t(0x5A));
            QCOMPARE(TargetMemory[0x0000], std::uint8_t(0x5A));   // nothing wrapped round
            QCOMPARE(CpuRegisters.PC, 0x1234);
        }
    }

    void goodRunErasesTheFlashAndBringsTheWindowsUp()
    {
        Session s(S1(0xE000, {0x8E, 0x00, 0xFF}) + S1(0xFFFE, {0xE0, 0x00}));   // the last ends at $FFFF
        ClockCount = 4321;
        s.form->Menu("mnuFileDownload")->trigger();
        QVERIFY(s.f.boxes.boxes.isEmpty());
        QCOMPARE(TargetMemory[0xE003], std::uint8_t(0xFF));   // erased
        QCOMPARE(TargetMemory[0xDFFF], std::uint8_t(0x5A));   // below the flash: untouched
        QCOMPARE(s.form->PanelText(4), QString("Clock= 00000000"));
        QVERIFY(!s.form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());
        QVERIFY(!HeldOpen(s.folder.Path("prog.s19")));
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegCPU.mnuRefresh", "frmStack.mnuRefresh"}));
        // Open already: put on PC and refreshed, and in front whatever was before.
        s.form->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(s.form->Window("frmStack")->parentWidget()));
        FakeToolWindow::Log().clear();
        s.form->mnuFileDownload_Click();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuGoToPCAddress", "frmDisAsm.mnuRefresh",
                                                     "frmRegCPU.mnuRefresh", "frmStack.mnuRefresh"}));
        QCOMPARE(s.form->ActiveWindow(), s.form->Window("frmDisAsm"));
    }

    void unreadableFileIsAReadErrorBeforeTheErase()
    {
        Session s("");
        s.form->Dialog.FileName = s.folder.Path("missing.s19");
        frmDownload::ShowModal();
        QCOMPARE(s.f.boxes.boxes.size(), 1);
        QVERIFY(s.f.boxes.boxes[0].text.endsWith("directory !"));
        QCOMPARE(s.f.boxes.boxes[0].caption, QString("Orvane - Read Error"));
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x5A));
        s.ExpectOldProgramKept();
    }

    void theWindowsCancelAndEscapeStopTheRun()
    {
        for (const bool escape : {false, true}) {
            Session s(S1(0xFFFE, {0xE0, 0x10}) + S1(0xE010, {0x01}) + S1(0xE011, {0x02}));
            int passes = 0;   // event passes of the run, the first before the first line
            DoEventsAction press([&] {
                if (auto* dialog = MainForm->findChild<frmDownload*>(); dialog && passes++ == 1)
                    escape ? dialog->reject() : dialog->cmdCancel->click();
            });
            s.form->mnuFileDownload_Click();
            // After the first line: the rest stays erased, PC has the vector, and nothing counts as written.
            QCOMPARE(passes, 2);
            QCOMPARE(TargetMemory[0xE011], std::uint8_t(0xFF));
            QCOMPARE(CpuRegisters.PC, 0xE010);
            s.ExpectOldProgramKept();
        }
    }
};

QTEST_MAIN(DownloadTest)
#include "Download_test.moc"
