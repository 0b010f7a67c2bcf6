// Download from the File menu and the toolbar in simulator mode, and on a
// scripted line where the board refuses: what reaches the target, PC, panel
// 2, the breakpoints, the windows it opens, the skipped and the refused
// records, Cancel, and that the file is closed on every way out.
#include <QtTest>

#include "code/frmDownload.h"
#include "core/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/SettingsStore.h"
#include "platform/TickCount.h"
#include "source/SourceRecords.h"
#include "source/hc11/Assembler.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"
#include "support/S19Image.h"
#include "views/EntryFields.h"

#include <QDir>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <random>

namespace {
const QString ReadError = "Orvane - Read Error";

// An S1 line for hand-made files; the assembler's lines are checked against
// the same rule in the reader's own tests.
QByteArray S1(int address, const std::vector<std::uint8_t>& data, int checksumOffset = 0)
{
    const int count = int(data.size()) + 3;
    int sum = count + (address >> 8) + (address & 0xFF);
    QByteArray line = "S1" + QByteArray::number(count, 16).rightJustified(2, '0') +
                      QByteArray::number(address, 16).rightJustified(4, '0');
    for (const std::uint8_t byte : data) {
        line += QByteArray::number(byte, 16).rightJustified(2, '0');
        sum += byte;
    }
    line += QByteArray::number((0xFF - sum + checksumOffset) & 0xFF, 16).rightJustified(2, '0');
    return line.toUpper() + "\n";
}

const char* const Program = " ORG $E000\n"
                            "START LDS #$00FF\n"
                            " LDAA #$01\n"
                            "LOOP STAA $1004\n"
                            " ROLA\n"
                            " BRA LOOP\n"
                            " FCC 'a table that needs a second record'\n"
                            " ORG $FFFE\n"
                            " FDB START\n";

// Whether this process holds a descriptor on the file.
bool HeldOpen(const QString& path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    const QDir descriptors("/proc/self/fd");
    for (const QString& fd : descriptors.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
        if (QFileInfo(descriptors.filePath(fd)).symLinkTarget() == target)
            return true;
    return false;
}

// The tests run in a folder of their own, as the file dialogs would leave it;
// start-up moves to the program's folder, so Enter comes after it.
struct WorkFolder {
    QTemporaryDir dir;
    QString previous = QDir::currentPath();
    void Enter() const { QDir::setCurrent(dir.path()); }
    ~WorkFolder() { QDir::setCurrent(previous); }
    void Write(const QString& name, const QByteArray& text) const
    {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

// Calls inside the run's event passes, with the download window at hand.
struct DuringRun {
    std::function<void(frmDownload&, int pass)> act;
    int passes = 0;
    std::function<void()> previous;
    explicit DuringRun(std::function<void(frmDownload&, int)> a) : act(std::move(a))
    {
        previous = SetDoEventsHook([this] {
            if (auto* form = MainForm->findChild<frmDownload*>())
                act(*form, passes++);
        });
    }
    ~DuringRun() { SetDoEventsHook(previous); }
};

// A state that a good run replaces and a failed one keeps.
void SetPreviousProgram(frmMain& form)
{
    form.SetPanelText(2, "Program: old.s19");
    BreakpointTable[0] = 0xE003;
    BreakpointTable[1] = 0xE005;
    BreakpointCount = 2;
    form.BreakpointCountChanged();
    CpuRegisters.PC = 0x1234;
    ClockCount = 4321;
}

void ExpectPreviousProgramKept(frmMain& form)
{
    QCOMPARE(form.PanelText(2), QString("Program: old.s19"));
    QCOMPARE(BreakpointCount, std::int16_t(2));
    QVERIFY(form.Menu("mnuDebugClearAllBreakpoints")->isEnabled());
}

frmMain& StartSimulator(MainFormFixture& f, const WorkFolder& folder)
{
    SaveSetting("Settings", "SimEnabled", "True");
    frmMain& form = f.Start();
    folder.Enter();
    return form;
}

frmMain& StartBoard(MainFormFixture& f, const WorkFolder& folder)
{
    frmMain& form = f.Start();
    folder.Enter();
    return form;
}
}  // namespace

class DownloadTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        S19File.clear();
        EntryAccepted = false;
    }

    // ---- A good run ----------------------------------------------------------
    void goodRunSetsUpTheProgram()
    {
        WorkFolder folder;
        const auto assembled = hc11::as11::AssembleSource(Program, "PROG");
        QVERIFY(assembled.errors.empty());
        folder.Write("prog.s19", QByteArray::fromStdString(assembled.s19));
        const asmtest::S19Image image = asmtest::ReadS19(assembled.s19);

        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        SetPreviousProgram(form);
        TargetMemory.fill(0x5A);

        S19File = "prog.s19";
        form.Menu("mnuFileDownload")->trigger();

        QVERIFY(f.boxes.boxes.isEmpty());
        for (const auto& [address, byte] : image.bytes)
            QCOMPARE(TargetMemory[address], byte);
        // The rest of the flash is erased; memory below it is left alone.
        QCOMPARE(TargetMemory[0xE100], std::uint8_t(0xFF));
        QCOMPARE(TargetMemory[0xFFFD], std::uint8_t(0xFF));
        QCOMPARE(TargetMemory[0xDFFF], std::uint8_t(0x5A));
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QCOMPARE(form.PanelText(2), QString("Program: prog.s19"));
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QVERIFY(!form.Menu("mnuDebugClearAllBreakpoints")->isEnabled());
        QCOMPARE(ClockCount, 0);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000000"));
        // The registers come from the save area that the simulator keeps.
        QCOMPARE(CpuRegisters.A, std::uint8_t(0x5A));
        QVERIFY(!HeldOpen(folder.dir.filePath(S19File)));
        {
            QFile probe(folder.dir.filePath(S19File));
            QVERIFY(probe.open(QIODevice::ReadOnly));
            QVERIFY(HeldOpen(probe.fileName()));   // the look at the descriptors sees an open file
        }
        QVERIFY(!form.findChild<frmDownload*>());
        // The CPU, stack and disassembly windows of this tree have no factory
        // yet: they stay closed and nothing fails.
        QVERIFY(!form.IsOpen("frmRegCPU") && !form.IsOpen("frmDisAsm"));
    }

    void simulatorNeedsNoSerialPort()
    {
        WorkFolder folder;
        folder.Write("prog.s19", S1(0xE000, {0x01}) + S1(0xFFFE, {0xE0, 0x00}));
        MainFormFixture f;
        f.line.FailOpen("No such file or directory");
        frmMain& form = StartSimulator(f, folder);
        QVERIFY(!BoardConnected);
        S19File = "prog.s19";
        form.mnuFileDownload_Click();
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x01));
        QCOMPARE(CpuRegisters.PC, 0xE000);
    }

    void goodRunOpensAndRefreshesTheDebugWindows()
    {
        WorkFolder folder;
        folder.Write("prog.s19", S1(0xE000, {0x01, 0x01}) + S1(0xFFFE, {0xE0, 0x00}));
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        S19File = "prog.s19";

        form.mnuFileDownload_Click();
        QVERIFY(form.IsOpen("frmRegCPU") && form.IsOpen("frmStack") && form.IsOpen("frmDisAsm"));
        // A fresh disassembly window finds PC itself; the refresh round follows.
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegCPU.mnuRefresh", "frmStack.mnuRefresh"}));
        QCOMPARE(form.ActiveWindow(), form.Window("frmDisAsm"));

        // Open already: it is put on PC and refreshed, then the round, and it
        // ends up active whichever window was in front.
        form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(form.Window("frmStack")->parentWidget()));
        FakeToolWindow::Log().clear();
        form.mnuFileDownload_Click();
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmDisAsm.mnuGoToPCAddress", "frmDisAsm.mnuRefresh",
                                                     "frmRegCPU.mnuRefresh", "frmStack.mnuRefresh"}));
        QCOMPARE(form.ActiveWindow(), form.Window("frmDisAsm"));
        QCOMPARE(form.mdiArea()->subWindowList().size(), 3);
    }

    // ---- Lines that are not written -------------------------------------------
    void fileWithoutGoodRecordsOnlyErases()
    {
        WorkFolder folder;
        folder.Write("none.s19", "S00600004844521B\n\ns1040010EB00\nS2080100000102030400\n" +
                                     S1(0x0100, {0x11}, 1) + "S9030000FC\n");
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        SetPreviousProgram(form);
        TargetMemory.fill(0x5A);
        S19File = "none.s19";

        form.mnuFileDownload_Click();
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0xFF));
        QCOMPARE(TargetMemory[0x0010], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x5A));
        // The erased vector reads $FFFF.
        QCOMPARE(CpuRegisters.PC, 0xFFFF);
        ExpectPreviousProgramKept(form);
        QVERIFY(!form.IsOpen("frmRegCPU") && !form.IsOpen("frmDisAsm"));
    }

    void badRecordsAreSkippedAndTheRunGoesOn()
    {
        WorkFolder folder;
        QByteArray lowerCase = S1(0x0120, {0xAB, 0xCD});
        lowerCase.replace("ABCD", "abcd");
        folder.Write("mixed.s19", S1(0x0100, {0x11, 0x22}) + S1(0x0110, {0x33}, 1) + lowerCase +
                                      "S1050130AA\n" +   // short: the second byte and the sum are missing
                                      S1(0x0140, {0x44}) + S1(0x0101, {0x99}) + S1(0xFFFE, {0xE0, 0x00}));
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        TargetMemory.fill(0x5A);
        S19File = "mixed.s19";

        QStringList labels;
        DuringRun watch([&labels](frmDownload& dialog, int pass) {
            if (pass > 0)
                labels << dialog.lbAddress->text() + " " + dialog.lbSize->text();
        });
        form.mnuFileDownload_Click();

        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x11));
        QCOMPARE(TargetMemory[0x0101], std::uint8_t(0x99));   // a later record overwrites
        QCOMPARE(TargetMemory[0x0110], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0120], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0130], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0140], std::uint8_t(0x44));
        QCOMPARE(CpuRegisters.PC, 0xE000);
        // A skipped record leaves the labels as the last good one set them.
        QCOMPARE(labels, QStringList({"Address = $0100 2 bytes", "Address = $0100 2 bytes",
                                      "Address = $0100 2 bytes", "Address = $0100 2 bytes",
                                      "Address = $0140 1 byte", "Address = $0101 1 byte",
                                      "Address = $FFFE 2 bytes"}));
    }

    void binaryGarbageIsPassedOver()
    {
        WorkFolder folder;
        std::mt19937 random(11);
        QByteArray garbage;
        for (int i = 0; i < 20000; ++i) {
            char byte = char(random() & 0xFF);
            garbage += byte == 'S' ? 'x' : byte;   // no line may begin a record
        }
        folder.Write("garbage.s19", garbage);
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        SetPreviousProgram(form);
        S19File = "garbage.s19";

        form.mnuFileDownload_Click();
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(CpuRegisters.PC, 0xFFFF);
        ExpectPreviousProgramKept(form);
        QVERIFY(!HeldOpen(folder.dir.filePath(S19File)));
    }

    // ---- Refused records and unreadable files ----------------------------------
    void runTimeErrorsEndTheRunAndKeepTheState_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        const QByteArray before = S1(0x0100, {0x11});
        const QByteArray after = S1(0x0200, {0x22}) + S1(0xFFFE, {0xE0, 0x00});
        const QString noData = "S1 record without data in line 2 !";
        QTest::newRow("count 3") << before + "S1030000FC\n" + after << noData;
        QTest::newRow("count 0") << before + "S1000000\n" + after << noData;
        QTest::newRow("binary after S1") << before + QByteArray("S1\xFF\x00\x01\x7F\n", 7) + after << noData;
        QTest::newRow("past $FFFF") << before + S1(0xFFFF, {0x01, 0x02}) + after
                                    << QString("S1 record past $FFFF in line 2 !");
    }

    void runTimeErrorsEndTheRunAndKeepTheState()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        WorkFolder folder;
        folder.Write("bad.s19", file);
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        SetPreviousProgram(form);
        TargetMemory.fill(0x5A);
        S19File = "bad.s19";

        form.mnuFileDownload_Click();
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, message);
        QCOMPARE(f.boxes.boxes[0].caption, ReadError);
        QCOMPARE(f.boxes.boxes[0].style & 0x70, 48);
        // What was written stays; nothing after the refused line is.
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x11));
        QCOMPARE(TargetMemory[0x0200], std::uint8_t(0x5A));
        QCOMPARE(TargetMemory[0x0000], std::uint8_t(0x5A));   // nothing wrapped round
        QCOMPARE(CpuRegisters.PC, 0x1234);
        ExpectPreviousProgramKept(form);
        QVERIFY(!form.IsOpen("frmRegCPU"));
        QVERIFY(!HeldOpen(folder.dir.filePath(S19File)));
        QVERIFY(!form.findChild<frmDownload*>());
    }

    void unreadableFileIsAReadErrorBeforeTheErase()
    {
        WorkFolder folder;
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        SetPreviousProgram(form);
        TargetMemory.fill(0x5A);

        form.Dialog.FileName = folder.dir.filePath("missing.s19");
        frmDownload::ShowModal();
        QCOMPARE(f.boxes.boxes.size(), 1);
        QVERIFY(f.boxes.boxes[0].text.endsWith(" !"));
        QVERIFY(f.boxes.boxes[0].text.size() > 2);
        QCOMPARE(f.boxes.boxes[0].caption, ReadError);
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x5A));
        QCOMPARE(CpuRegisters.PC, 0x1234);
        ExpectPreviousProgramKept(form);

        // A folder opens but does not read as a file.
        form.Dialog.FileName = folder.dir.path();
        frmDownload::ShowModal();
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[1].caption, ReadError);
        ExpectPreviousProgramKept(form);
    }

    // ---- Cancel ----------------------------------------------------------------
    void cancelStopsAtTheNextLine_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Cancel button") << false;
        QTest::newRow("Escape") << true;
    }

    void cancelStopsAtTheNextLine()
    {
        QFETCH(bool, escape);
        WorkFolder folder;
        folder.Write("prog.s19", S1(0xFFFE, {0xE0, 0x10}) + S1(0xE010, {0x01}) + S1(0xE011, {0x02}));
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        SetPreviousProgram(form);
        S19File = "prog.s19";

        DuringRun press([escape](frmDownload& dialog, int pass) {
            if (pass == 1)   // after the first line
                escape ? dialog.reject() : dialog.cmdCancel->click();
        });
        form.mnuFileDownload_Click();

        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(press.passes, 2);   // the run stopped at the next line
        QCOMPARE(TargetMemory[0xE010], std::uint8_t(0xFF));   // erased all the same
        QCOMPARE(CpuRegisters.PC, 0xE010);
        QVERIFY(!EntryAccepted);
        ExpectPreviousProgramKept(form);
        QVERIFY(!form.IsOpen("frmRegCPU"));
        QCOMPARE(ClockCount, 0);   // the menu's path clears it whatever the run did
        QVERIFY(!form.findChild<frmDownload*>());
    }

    // ---- The menu entry and the toolbar button ---------------------------------
    void menuAsksOnceThenTakesTheSameFile()
    {
        WorkFolder folder;
        folder.Write("first.s19", S1(0x0100, {0x01}));
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        TargetMemory.fill(0x5A);
        ClockCount = 55;

        QList<CommonDialog> asked;
        QString answer;
        const auto previous = CommonDialog::SetHandler([&](CommonDialog& dialog, CommonDialog::Kind kind) {
            asked << dialog;
            if (kind != CommonDialog::Kind::Open || answer.isEmpty())
                return false;
            dialog.FileName = answer;
            return true;
        });

        form.mnuFileDownload_Click();   // the user cancels
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked[0].DialogTitle, QString("Download"));
        QCOMPARE(asked[0].Filter, QString("Machine Code (*.s19)|*.s19|All Files (*.*)|*.*"));
        QCOMPARE(asked[0].FilterIndex, 1);
        QCOMPARE(asked[0].FileName, QString());
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x5A));
        QCOMPARE(ClockCount, 55);
        QVERIFY(S19File.isEmpty());

        answer = folder.dir.filePath("first.s19");
        form.mnuFileDownload_Click();
        QCOMPARE(S19File, QString("first.s19"));
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x01));
        QCOMPARE(form.PanelText(2), QString("Program: first.s19"));
        QCOMPARE(ClockCount, 0);

        // Twice in a row: the same file, read afresh, without the dialog.
        folder.Write("first.s19", S1(0x0100, {0x02}));
        form.mnuFileDownload_Click();
        QCOMPARE(asked.size(), 2);
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x02));

        // The toolbar button takes it too, and leaves the clock alone.
        ClockCount = 77;
        folder.Write("first.s19", S1(0x0100, {0x03}));
        form.tbToolbar_ButtonClick(form.Button(21));
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x03));
        QCOMPARE(ClockCount, 77);
        QCOMPARE(asked.size(), 2);

        // A name whose file has gone: neither way does anything.
        QFile::remove(folder.dir.filePath("first.s19"));
        TargetMemory[0xE000] = 0x5A;
        form.mnuFileDownload_Click();
        form.FileDownload();
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x5A));
        QCOMPARE(ClockCount, 77);
        QCOMPARE(asked.size(), 2);
        QVERIFY(f.boxes.boxes.isEmpty());
        CommonDialog::SetHandler(previous);
    }

    void toolbarAsksWhileNoFileIsNamed()
    {
        WorkFolder folder;
        folder.Write("tool.s19", S1(0x0100, {0x07}));
        MainFormFixture f;
        frmMain& form = StartSimulator(f, folder);
        ClockCount = 9;
        int asked = 0;
        const auto previous = CommonDialog::SetHandler([&](CommonDialog& dialog, CommonDialog::Kind) {
            ++asked;
            dialog.FileName = folder.dir.filePath("tool.s19");
            return true;
        });
        form.FileDownload();
        CommonDialog::SetHandler(previous);
        QCOMPARE(asked, 1);
        QCOMPARE(S19File, QString("tool.s19"));
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x07));
        QCOMPARE(ClockCount, 0);   // it went the menu's way
    }

    // ---- The board refuses (scripted line) ---------------------------------------
    void eraseRefusedWritesNothing()
    {
        WorkFolder folder;
        folder.Write("prog.s19", S1(0x0100, {0x01}) + S1(0xFFFE, {0xE0, 0x00}));
        MainFormFixture f;
        frmMain& form = StartBoard(f, folder);
        SetPreviousProgram(form);
        QByteArrayList frames;
        f.line.SetResponder([&frames](const QByteArray& frame) {
            frames << frame.left(1);
            return QByteArray(1, char(21));   // NAK
        });
        S19File = "prog.s19";

        form.mnuFileDownload_Click();
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[0].text, QString("Erasing Flash failed!"));
        QCOMPARE(f.boxes.boxes[1].text, QString("Can't Write to Memory !"));
        QCOMPARE(f.boxes.boxes[1].caption, QString("Orvane - Download Error"));
        QCOMPARE(frames, QByteArrayList({"E"}));
        QCOMPARE(CpuRegisters.PC, 0x1234);
        ExpectPreviousProgramKept(form);
        QVERIFY(!HeldOpen(folder.dir.filePath(S19File)));
    }

    void failedRecordEndsTheLoopButKeepsWhatWasWritten()
    {
        WorkFolder folder;
        folder.Write("prog.s19", S1(0xE000, {0x01}) + S1(0xE001, {0x02}) + S1(0xE002, {0x03}));
        MainFormFixture f;
        frmMain& form = StartBoard(f, folder);
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        SetPreviousProgram(form);
        // Time runs a millisecond a reading, so the time-outs pass at once.
        std::uint32_t now = 1000;
        const auto clock = SetTickCountSource([&now] { return ++now; });
        QByteArrayList frames;
        f.line.SetResponder([&frames](const QByteArray& frame) {
            frames << frame.left(1);
            // Erase and the first record are acknowledged; then the board is silent.
            return frames.size() <= 2 ? QByteArray(1, char(6)) : QByteArray();
        });
        S19File = "prog.s19";

        form.mnuFileDownload_Click();
        SetTickCountSource(clock);
        QCOMPARE(frames.mid(0, 3), QByteArrayList({"E", "P", "P"}));
        QVERIFY(!frames.mid(3).contains("P"));   // the third record is never sent
        QVERIFY(!f.boxes.boxes.isEmpty());
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        // A record got through, so the program is named and the breakpoints go;
        // the dead board stops the rest.
        QCOMPARE(form.PanelText(2), QString("Program: prog.s19"));
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QCOMPARE(CpuRegisters.PC, 0x1234);   // the vector could not be read
        QVERIFY(!form.IsOpen("frmRegCPU"));
    }
};

QTEST_MAIN(DownloadTest)
#include "Download_test.moc"
