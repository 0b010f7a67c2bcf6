// The download window on the main window: a good run erases the flash and
// brings the CPU, stack and disassembly windows up; an unreadable file, Cancel
// and Escape keep the old program. The run itself is the engine's download test.

#include "engine/source/SourceRecords.h"
#include "engine/state/TargetState.h"
#include "support/DoEventsAction.h"
#include "support/WorkFolder.h"
#include "support/ui/FakeToolWindow.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ShownWindow.h"
#include "ui/code/frmDownload.h"

#include <QPushButton>

namespace {
bool HeldOpen(const QString& path)
{
    const QDir fds("/proc/self/fd");
    for (const QString& fd : fds.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
        if (QFileInfo(fds.filePath(fd)).symLinkTarget() == QFileInfo(path).canonicalFilePath())
            return true;
    return false;
}

// Stand-in CPU, stack and disassembly windows; S19File names "prog.s19" in the work folder.
struct Session {
    PluggedWindows windows{{"frmRegCPU", "frmStack", "frmDisAsm"}};
    MainFormFixture f;
    WorkFolder folder;
    frmMain* form = nullptr;

    explicit Session(const QByteArray& file)
    {
        form = &StartInSimulator(f);
        folder.Enter();
        folder.Write("prog.s19", file);
        S19File = "prog.s19";
        form->SetPanelText(2, "Program: old.s19");
        BreakpointTable[0] = 0xE003, BreakpointCount = 1;
        form->BreakpointCountChanged();
        CpuRegisters.PC = 0x1234;
        TargetMemory.fill(0x5A);
    }
    ~Session() { S19File.clear(); }

    void ExpectOldProgramKept() const
    {
        QCOMPARE(form->PanelText(2), QString("Program: old.s19"));
        QCOMPARE(tuple(BreakpointCount, form->Menu("mnuDebugClearAllBreakpoints")->isEnabled()), tuple(1, true));
        QVERIFY(!form->IsOpen("frmRegCPU") && !HeldOpen(folder.Path("prog.s19")) && !form->findChild<frmDownload*>());
    }
};
}  // namespace

class DownloadWindowTest : public QObject {
    Q_OBJECT
private slots:
    void goodRunErasesTheFlashAndBringsTheWindowsUp()
    {
        Session s("S106E0008E00FF8C\nS105FFFEE0001D\n");   // the last ends at $FFFF
        ClockCount = 4321;
        s.form->Menu("mnuFileDownload")->trigger();
        QVERIFY(s.f.boxes.boxes.isEmpty());   // the erase itself is the engine's download test's
        QCOMPARE(s.form->PanelText(4), QString("Clock= 00000000"));
        QVERIFY(!s.form->Menu("mnuDebugClearAllBreakpoints")->isEnabled() && !HeldOpen(s.folder.Path("prog.s19")));
        QCOMPARE(FakeToolWindow::Log(), QStringList({"frmRegCPU.mnuRefresh", "frmStack.mnuRefresh"}));
        // Open already: put on PC and refreshed, and in front whatever was before.
        Activate(*s.form, s.form->Window("frmStack"));
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
        QCOMPARE(tuple(s.f.boxes.boxes.size(), s.f.boxes.boxes.value(0).text.endsWith("directory !")), tuple(1, true));
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0x5A));
        s.ExpectOldProgramKept();
    }

    void theWindowsCancelAndEscapeStopTheRun()
    {
        for (const bool escape : {false, true}) {
            Session s("S105FFFEE0100D\nS104E010010A\nS104E0110208\n");
            int passes = 0;   // event passes of the run, the first before the first line
            DoEventsAction press([&] {
                if (auto* dialog = MainForm->findChild<frmDownload*>(); dialog && passes++ == 1)
                    escape ? dialog->reject() : dialog->cmdCancel->click();
            });
            s.form->mnuFileDownload_Click();
            // After the first line: the rest stays erased, PC has the vector, and nothing counts as written.
            QCOMPARE(tuple(passes, TargetMemory[0xE011], CpuRegisters.PC), tuple(2, 0xFF, 0xE010));
            s.ExpectOldProgramKept();
        }
    }
};

QTEST_MAIN(DownloadWindowTest)
#include "DownloadWindow_test.moc"
