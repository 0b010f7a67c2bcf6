// The CPU register window in simulator mode and on a scripted board: what it
// shows from the save area, values entered through the value dialog and
// shown as the target answers, PC kept on the host, the read-only SP and the
// flag row, formats and the fitted value column, the shared popup, and a
// failed read.
#include <QtTest>

#include "core/TargetState.h"
#include "platform/PopupMenu.h"
#include "platform/TickCount.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "views/RegisterWindow.h"

#include <QLabel>
#include <QMenu>
#include <QTreeWidget>

namespace {
enum Row { A, B, D, IX, IY, PC, SP, CCR };

// A=$12 B=$34 IX=$5678 IY=$9ABC SP=$00FF CCR=$D1 in the save area, PC $E000 on the host.
template <typename Memory>
void FillSaveArea(Memory& memory)
{
    const std::uint8_t saved[] = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0x00, 0xFF, 0xD1};
    std::copy(std::begin(saved), std::end(saved), memory.begin());
    CpuRegisters.PC = 0xE000;
}

RegisterWindow* OpenCpu(frmMain& form)
{
    form.Menu("mnuViewRegCPU")->trigger();
    return qobject_cast<RegisterWindow*>(form.Window("frmRegCPU"));
}

QStringList Cells(const RegisterWindow* w)
{
    QStringList cells;
    for (int i = 0; i < w->ListView->topLevelItemCount(); ++i)
        cells << w->Cell(i);
    return cells;
}

// Enters text for the selected row, the way a user does with the Enter key.
// Returns what the dialog showed: its label and the text it started from.
QStringList EnterValue(RegisterWindow* w, int row, const QString& text)
{
    QStringList seen;
    ModalPlayer player([&](QDialog& dialog) {
        seen << dialog.findChild<QLabel*>("Label")->text() << dialog.findChild<QLineEdit*>("Text")->text();
        TypeAndPressOK(dialog, "Text", text);
    });
    w->SelectRow(row);
    QTest::keyClick(w->ListView, Qt::Key_Return);
    return seen;
}

QPoint RowPoint(const RegisterWindow* w, int row)
{
    return w->ListView->visualItemRect(w->ListView->topLevelItem(row)).center();
}

struct EntryState {
    bool enter, hex, bin, dec, autoVisible, refresh;
    QString checked;
};

// Right-clicks at a point of the list and records the popup as it stands while up.
EntryState RightClick(frmMain& form, RegisterWindow* w, const QPoint& at, const char* trigger = nullptr)
{
    EntryState state{};
    PopupMenuHandler previous = SetPopupMenuHandler([&](QMenu* menu) {
        QCOMPARE(menu, form.MenuOf("mnuPopupView"));
        state = {form.Menu("mnuPopupViewEnter")->isEnabled(), form.Menu("mnuPopupViewHex")->isEnabled(),
                 form.Menu("mnuPopupViewBin")->isEnabled(),   form.Menu("mnuPopupViewDec")->isEnabled(),
                 form.Menu("mnuPopupViewAutoRefresh")->isVisible(), form.Menu("mnuPopupViewRefresh")->isEnabled(),
                 QString()};
        for (const char* name : {"mnuPopupViewHex", "mnuPopupViewBin", "mnuPopupViewDec"})
            if (form.Menu(name)->isChecked())
                state.checked += QString::fromLatin1(name).mid(12);
        if (trigger)
            form.Menu(trigger)->trigger();
    });
    QTest::mouseClick(w->ListView->viewport(), Qt::RightButton, {}, at);
    SetPopupMenuHandler(previous);
    return state;
}
}  // namespace

class frmRegCPUTest : public QObject {
    Q_OBJECT

    MainFormFixture* f = nullptr;
    frmMain* form = nullptr;

    RegisterWindow* StartSimulated()
    {
        form = &f->Start();
        TargetMode = SimulatorMode;
        FillSaveArea(TargetMemory);
        return OpenCpu(*form);
    }

private slots:
    void init() { f = new MainFormFixture; }
    void cleanup()
    {
        delete f;
        f = nullptr;
    }

    void opensShowingTheSaveAreaAndTheHostsPC()
    {
        RegisterWindow* cpu = StartSimulated();
        QVERIFY(cpu);
        QVERIFY(form->IsOpen("frmRegCPU"));
        QCOMPARE(cpu->windowTitle(), QString("CPU Registers"));
        QCOMPARE(Cells(cpu), (QStringList{"$12", "$34", "$1234", "$5678", "$9ABC", "$E000", "$00FF", "%SX0I000C"}));
        QVERIFY(cpu->ValueColumnWidth() > 0);
        QVERIFY(CpuRegisters.FlagS && CpuRegisters.FlagC && !CpuRegisters.FlagZ);
    }

    void enteredValuesReachTheTargetAndComeBackByTheRefresh()
    {
        RegisterWindow* cpu = StartSimulated();
        // PC is the host's: no target byte changes.
        const auto before = TargetMemory;
        QCOMPARE(EnterValue(cpu, PC, "@177777"), (QStringList{"PC:", "$E000"}));
        QCOMPARE(CpuRegisters.PC, 0xFFFF);
        QCOMPARE(cpu->Cell(PC), QString("$FFFF"));
        QVERIFY(TargetMemory == before);

        QCOMPARE(EnterValue(cpu, D, "$1234"), (QStringList{"D:", "$1234"}));
        EnterValue(cpu, D, "$BEEF");
        QCOMPARE(TargetMemory[0], 0xBE);
        QCOMPARE(TargetMemory[1], 0xEF);
        QCOMPARE(cpu->Cell(A), QString("$BE"));
        QCOMPARE(cpu->Cell(B), QString("$EF"));
        QCOMPARE(cpu->Cell(D), QString("$BEEF"));

        EnterValue(cpu, IY, "65535");
        QCOMPARE(cpu->Cell(IY), QString("$FFFF"));

        // An 8-bit row takes 255 and the dialog refuses 256: nothing is written.
        EnterValue(cpu, A, "255");
        QCOMPARE(cpu->Cell(A), QString("$FF"));
        EnterValue(cpu, B, "256");
        QCOMPARE(f->boxes.boxes.size(), 1);
        QCOMPARE(f->boxes.boxes[0].text, QString("Invalid Number !"));
        QCOMPARE(TargetMemory[1], 0xEF);
        QCOMPARE(cpu->Cell(B), QString("$EF"));

        // The flag row offers plain binary and takes any notation; InCPU splits the flags again.
        TargetMemory[8] = 0;
        cpu->mnuRefresh();
        QCOMPARE(cpu->Cell(CCR), QString("%00000000"));
        QCOMPARE(EnterValue(cpu, CCR, "$D1"), (QStringList{"CCR:", "%00000000"}));
        QCOMPARE(TargetMemory[8], 0xD1);
        QCOMPARE(cpu->Cell(CCR), QString("%SX0I000C"));
        QVERIFY(CpuRegisters.FlagX && CpuRegisters.FlagI);
    }

    void theWindowShowsWhatTheBoardAnswersNotWhatWasTyped()
    {
        ScriptedMonitor board(*f);
        FillSaveArea(board.memory);
        // The X bit can't be set by a write, as on the processor.
        board.Stored = [](std::int32_t address, std::uint8_t byte) {
            return address == 8 ? std::uint8_t(byte & ~0x40) : byte;
        };
        form = &f->Start();
        board.memory[8] = 0x00;
        RegisterWindow* cpu = OpenCpu(*form);
        QCOMPARE(cpu->Cell(CCR), QString("%00000000"));
        EnterValue(cpu, CCR, "%11111111");
        QCOMPARE(cpu->Cell(CCR), QString("%S0HINZVC"));
        QVERIFY(f->boxes.boxes.isEmpty());

        // PC is the host's: its entry sends no write, only the refresh's reads.
        board.frames.clear();
        EnterValue(cpu, PC, "$E123");
        QCOMPARE(CpuRegisters.PC, 0xE123);
        QCOMPARE(cpu->Cell(PC), QString("$E123"));
        QCOMPARE(board.Count('W'), 0);
        QVERIFY(board.Count('R') > 0);
    }

    void spIsReadOnlyAndTheFlagRowKeepsItsLetters()
    {
        RegisterWindow* cpu = StartSimulated();
        int dialogs = 0;
        ModalPlayer player([&](QDialog&) { ++dialogs; });
        cpu->SelectRow(SP);
        QTest::keyClick(cpu->ListView, Qt::Key_Return);
        QTest::mouseDClick(cpu->ListView->viewport(), Qt::LeftButton, {}, RowPoint(cpu, SP));
        QCOMPARE(dialogs, 0);

        EntryState sp = RightClick(*form, cpu, RowPoint(cpu, SP));
        QVERIFY(!sp.enter);
        QVERIFY(sp.hex && sp.bin && sp.dec);
        QCOMPARE(sp.checked, QString("Hex"));
        // SP can still be formatted.
        RightClick(*form, cpu, RowPoint(cpu, SP), "mnuPopupViewDec");
        QCOMPARE(cpu->Cell(SP), QString("255"));

        EntryState ccr = RightClick(*form, cpu, RowPoint(cpu, CCR), "mnuPopupViewHex");
        QVERIFY(ccr.enter);
        QVERIFY(!ccr.hex && !ccr.bin && !ccr.dec);
        QCOMPARE(ccr.checked, QString("Bin"));
        QCOMPARE(cpu->Cell(CCR), QString("%SX0I000C"));   // the entry, triggered anyway, changes nothing
        QCOMPARE(cpu->RowFormat[CCR], '%');
    }

    void formatsRedrawAndFitTheValueColumn()
    {
        RegisterWindow* cpu = StartSimulated();
        const int narrow = cpu->ValueColumnWidth();
        EntryState ix = RightClick(*form, cpu, RowPoint(cpu, IX), "mnuPopupViewBin");
        QVERIFY(ix.enter && ix.hex && ix.bin && ix.dec);
        QCOMPARE(cpu->Cell(IX), QString("%0101011001111000"));
        const int wide = cpu->ValueColumnWidth();
        QVERIFY(wide > narrow);
        // The column is exactly wide enough for the cells, so none is cut.
        QVERIFY(wide >= cpu->ListView->fontMetrics().horizontalAdvance("%0101011001111000"));
        QCOMPARE(RightClick(*form, cpu, RowPoint(cpu, IX), "mnuPopupViewDec").checked, QString("Bin"));
        QCOMPARE(cpu->Cell(IX), QString("22136"));
        QCOMPARE(cpu->ValueColumnWidth(), narrow);
        QCOMPARE(RightClick(*form, cpu, RowPoint(cpu, IX)).checked, QString("Dec"));
        // The help of the shared popup is the register windows'.
        QCOMPARE(form->HelpContextOf("mnuPopupViewEnter"), 95);
        QCOMPARE(form->HelpContextOf("mnuPopupViewAutoRefresh"), 99);
    }

    void thePopupBelowTheRowsAndOverAClearedWindow()
    {
        RegisterWindow* cpu = StartSimulated();
        cpu->SelectRow(B);
        const QPoint below = RowPoint(cpu, CCR) + QPoint(0, 3 * cpu->ListView->visualItemRect(
                                                                     cpu->ListView->topLevelItem(CCR)).height());
        EntryState empty = RightClick(*form, cpu, below);
        QVERIFY(!empty.enter && !empty.hex && !empty.bin && !empty.dec);
        QCOMPARE(empty.checked, QString("Hex"));   // the selected row's format
        QCOMPARE(cpu->SelectedRow(), int(B));
        // Auto refresh is not this window's: hidden while the menu is up, back afterwards.
        QVERIFY(!empty.autoVisible);
        QVERIFY(empty.refresh);
        QVERIFY(form->Menu("mnuPopupViewAutoRefresh")->isVisible());

        cpu->ClearScreen();
        QCOMPARE(cpu->ValueColumnWidth(), 0);
        QCOMPARE(Cells(cpu), QStringList(8, QString()));
        int dialogs = 0;
        ModalPlayer player([&](QDialog&) { ++dialogs; });
        QTest::mouseDClick(cpu->ListView->viewport(), Qt::LeftButton, {}, RowPoint(cpu, A));
        QCOMPARE(dialogs, 0);
        // Refresh Window brings a cleared window back: the popup calls it by name on the active window.
        EntryState cleared = RightClick(*form, cpu, RowPoint(cpu, A), "mnuPopupViewRefresh");
        QVERIFY(!cleared.enter && !cleared.hex && !cleared.bin && !cleared.dec);
        QVERIFY(cleared.refresh);
        QCOMPARE(cpu->Cell(A), QString("$12"));
        QVERIFY(cpu->ValueColumnWidth() > 0);
    }

    void aFailedReadClearsTheWindowWithOneMessage()
    {
        ScriptedMonitor board(*f);
        FillSaveArea(board.memory);
        form = &f->Start();
        RegisterWindow* cpu = OpenCpu(*form);
        QCOMPARE(cpu->Cell(A), QString("$12"));

        std::uint32_t now = 0;
        auto clock = SetTickCountSource([&] { return now += 50; });   // time-outs pass at once
        board.silent = true;
        cpu->mnuRefresh();
        QCOMPARE(f->boxes.boxes.size(), 1);
        QCOMPARE(f->boxes.boxes[0].caption, QString("Orvane - Communication Error"));
        QVERIFY(!BoardConnected);
        QCOMPARE(cpu->ValueColumnWidth(), 0);
        QCOMPARE(Cells(cpu), QStringList(8, QString()));

        // A write that fails clears it too, and nothing is refreshed after it.
        board.silent = false;
        cpu->mnuRefresh();
        QVERIFY(cpu->ValueColumnWidth() > 0);
        board.silent = true;
        EnterValue(cpu, A, "$01");
        QCOMPARE(f->boxes.boxes.size(), 2);
        QCOMPARE(cpu->ValueColumnWidth(), 0);
        QCOMPARE(board.memory[0], 0x12);
        SetTickCountSource(clock);
    }
};

QTEST_MAIN(frmRegCPUTest)
#include "frmRegCPU_test.moc"
