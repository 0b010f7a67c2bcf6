// The memory and watch windows on the real main window, in simulator mode and on hc11board. With
// ORVANE_SCREENSHOT set to a folder, memory-window.png and watch-window.png are saved there.

#include "engine/code/SymbolTable.h"
#include "engine/state/ByteHistory.h"
#include "engine/state/TargetState.h"
#include "platform/TickCount.h"
#include "support/BoardProcess.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "support/ui/ShownWindow.h"
#include "ui/views/WatchTable.h"
#include "ui/views/frmMemory.h"
#include "ui/views/frmWatch.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableView>
#include <QTreeWidget>

namespace {
// The top of memory, with bytes on both sides of the printable range.
const std::uint8_t TopBytes[16] = {0x00, 0x1F, 0x20, 0x41, 0x7E, 0x7F, 0x80, 0xFF,
                                   0x30, 0x31, 0x32, 0x33, 0x34, 0x35, 0xE0, 0x00};
// INC $0040, then STD $0041: what Step Into runs.
const std::vector<std::uint8_t> Program = {0x7C, 0x00, 0x40, 0xFD, 0x00, 0x41};

// Answers the memory window's address dialog with keys typed into its box.
void TypeAddress(QDialog& dialog, const QString& keys)
{
    QTest::keyClicks(dialog.findChild<QLineEdit*>("txtAdr"), keys);
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtAdr"), Qt::Key_Return);
}

void GoTo(frmMemory* memory, const QString& keys)
{
    PlayDialogs([&] { memory->mnuMemoryAddress(); }, [&](QDialog& dialog) { TypeAddress(dialog, keys); });
}

// Opens the memory window, answering its address dialog (it comes once the window is up).
frmMemory* OpenMemory(frmMain& form, const QString& address)
{
    ModalPlayer player([&](QDialog& dialog) { TypeAddress(dialog, address); });
    form.Menu("mnuViewMemory")->trigger();
    QCoreApplication::processEvents();
    return qobject_cast<frmMemory*>(form.Window("frmMemory"));
}

// Types into the editor box over the cursor's cell and presses Enter.
void EditCell(frmMemory* memory, const QString& keys)
{
    QTest::keyClick(memory->gridMemory, Qt::Key_Return);
    QVERIFY(memory->txtData->isVisible());
    QTest::keyClicks(memory->txtData, keys);
    QTest::keyClick(memory->txtData, Qt::Key_Return);
}

// Add Watch with the dialog answered: text, and Word checked when word.
void AddWatchTyped(frmMain& form, const QString& text, bool word, int* dialogs = nullptr)
{
    PlayDialogs([&] { form.mnuDebugAddWatch_Click(); }, [&](QDialog& dialog) {
        if (dialogs)
            ++*dialogs;
        dialog.findChild<QRadioButton*>(word ? "optWord" : "optByte")->setChecked(true);
        TypeAndPressOK(dialog, "txtAdr", text);
    });
}

frmWatch* Watches(frmMain& form) { return qobject_cast<frmWatch*>(form.Window("frmWatch")); }
}  // namespace

class MemoryWatchWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        ClearWatches();
        SeenBytes.Clear();
        // A dialog that a test doesn't answer is cancelled, never left waiting.
        cancelOthers_ = std::make_unique<ModalPlayer>([](QDialog&) {});
    }
    void cleanup() { cancelOthers_.reset(); }

    void simulator()
    {
        MainFormFixture f;
        frmMain& form = StartInSimulator(f);
        QVERIFY(ShowAt(form, {1100, 700}));
        std::copy(std::begin(TopBytes), std::end(TopBytes), TargetMemory.begin() + 0xFFF0);
        TopOfMemoryAndEdits(form, f);
        WatchesAndStep(form, f);
        if (!QTest::currentTestFailed())
            SaveScreenshot(form.Window("frmMemory")->parentWidget(), "memory-window.png");
    }

    void board()
    {
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(emulator.DevicePath());
        QVERIFY(ShowAt(form, {1100, 700}));
        form.Link().FlashErase();
        std::int32_t top = 0xFFF0;
        form.Link().Programm(top, {std::begin(TopBytes), std::end(TopBytes)}, 16);
        QVERIFY(f.boxes.boxes.isEmpty());
        TopOfMemoryAndEdits(form, f);
        WatchesAndStep(form, f);
    }

    void aBoardThatStopsAnsweringDuringARefresh()
    {
        MainFormFixture f;
        ScriptedMonitor monitor(f.line);
        monitor.memory[0x0205] = 0x41;
        int answers = 100;
        f.line.SetResponder([&](const QByteArray& frame) {
            return answers-- > 0 ? monitor.Answer(frame) : QByteArray();
        });
        frmMain& form = f.Start();
        form.show();
        frmMemory* memory = OpenMemory(form, "200");
        QCOMPARE(memory->CellText(0, 7), QString("41"));
        AddWatchTyped(form, "$0205", false);
        AddWatchTyped(form, "$0206", true);
        QCOMPARE(Watches(form)->Cell(0), QString("$41"));

        std::uint32_t now = 0;
        const auto clock = SetTickCountSource([&] { return now += 50; });
        answers = 2;   // two of the page's four blocks, then silence
        memory->mnuMemoryRefresh();
        QCOMPARE(f.boxes.boxes.size(), 1);
        // Addresses and no bytes.
        QCOMPARE(memory->CellText(0, 0) + memory->CellText(0, 7) + memory->CellText(0, 24), QString(" $0200:"));

        // The watches: one message, and the cleared window labels its watches by address.
        answers = 0;
        Watches(form)->mnuRefresh();
        SetTickCountSource(clock);
        QCOMPARE(tuple(f.boxes.boxes.size(), Watches(form)->Label(1) + Watches(form)->Cell(1)), tuple(2, "$0206"));

        // The board is back: Enter on the cleared window still takes a value,
        // writes it, and the refresh brings the values back.
        answers = 100;
        EnterValue(Watches(form), 1, "$1234");
        QCOMPARE(monitor.memory[0x0206] * 256 + monitor.memory[0x0207], 0x1234);
        QCOMPARE(tuple(Watches(form)->Cell(1), f.boxes.boxes.size()), tuple("$1234", 2));
    }

private:
    std::unique_ptr<ModalPlayer> cancelOthers_;

    void TopOfMemoryAndEdits(frmMain& form, MainFormFixture& f)
    {
        frmMemory* memory = OpenMemory(form, "FFF0");
        QVERIFY(memory && form.Menu("mnuViewMemory")->isChecked());
        const int last = memory->Grid.Rows() - 1;
        QVERIFY(last >= 7 && memory->Grid.CursorRow() == last);
        QCOMPARE(memory->Grid.PageAddress(), 0x10000 - (last + 1) * 16);
        QString row;   // the address, the bytes, the character column's fourth
        for (int column : {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 22})
            row += memory->CellText(last, column) + ' ';
        QCOMPARE(row, QString(" $FFF0: 00 1F 20 41 7E 7F 80 FF 30 31 32 33 34 35 E0 00 A "));
        // Past $FFFF nothing moves: not down, not a page, not right from the last byte.
        for (int key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Right})
            QTest::keyClick(memory->gridMemory, Qt::Key(key));
        QVERIFY(memory->Grid.CursorAddress() == 0xFFFF && memory->VScroll->value() == memory->VScroll->maximum());

        // An edit in RAM: the target's byte in both cells.
        form.mnuDebugAddWatch_Click();   // cancelled: nothing added
        QCOMPARE(WatchCount, std::int16_t(0));
        GoTo(memory, "100");
        QCOMPARE(memory->Grid.PageAddress(), 0x100);
        EditCell(memory, "5a");
        QCOMPARE(tuple(TargetByte(form, 0x0100), memory->CellText(0, 2)), tuple(0x5A, "5A"));
        QTest::keyClick(memory->gridMemory, Qt::Key_Tab);
        EditCell(memory, "q");
        QCOMPARE(tuple(TargetByte(form, 0x0100), memory->CellText(0, 2)), tuple('q', "71"));
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));

        // An edit of the flash: the simulator keeps it, the board doesn't, and says so.
        GoTo(memory, "fff3");
        EditCell(memory, "99");
        const bool board = TargetMode == BoardMode;
        QCOMPARE(memory->CellText(memory->Grid.CursorRow(), 5), board ? QString("41") : QString("99"));
        QCOMPARE(tuple(TargetByte(form, 0xFFF3), f.boxes.boxes.size()), tuple(board ? 0x41 : 0x99, board ? 1 : 0));
        QVERIFY(!board || f.boxes.boxes[0].text == "Can't Write to Memory !\n\r (Read Only Memory)");
        f.boxes.boxes.clear();

        // The address box takes hex digits only, four at most, and refuses nothing.
        PlayDialogs([&] { memory->mnuMemoryAddress(); }, [](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Memory Display Address"));
            TypeAddress(dialog, "$0x1g23");
        });
        QCOMPARE(tuple(memory->Grid.PageAddress(), memory->Grid.CursorColumn()), tuple(0x0120, 5));
        // Cancel goes to $0000.
        PlayDialogs([&] { memory->mnuMemoryAddress(); },
                    [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(tuple(memory->Grid.PageAddress(), f.boxes.boxes.size()), tuple(0, 0));
    }

    void WatchesAndStep(frmMain& form, MainFormFixture& f)
    {
        // A word across $FFFF: high byte at $FFFF, low byte at $0000.
        std::int32_t zero = 0;
        form.Link().OutByte(zero, 0x34);
        AddWatchTyped(form, "$FFFF", true);
        frmWatch* watch = Watches(form);
        QVERIFY(watch && form.Menu("mnuViewWatch")->isChecked());
        QCOMPARE(watch->Label(0) + watch->Cell(0), QString("$FFFF$0034"));

        // A symbol that isn't in the table: the dialog stays open and says so.
        int dialogs = 0;
        PlayDialogs([&] { form.mnuDebugAddWatch_Click(); }, [&](QDialog& dialog) {
            ++dialogs;
            TypeAndPressOK(dialog, "txtAdr", "NOSUCH");
            QVERIFY(dialog.isVisible() && dialog.findChild<QLineEdit*>("txtAdr")->text().isEmpty());
        });
        QCOMPARE(f.boxes.Texts(), QStringList{"Invalid Address !"});
        QCOMPARE(WatchCount, std::int16_t(1));
        f.boxes.boxes.clear();

        // The watches the step changes, one by symbol in lower case.
        SymbolTable = {{0x0040, 0, {}, "COUNT", ""}};
        SymbolCount = 1;
        std::int32_t at = 0x0040;
        form.Link().OutBytes(at, {0x07, 0x00, 0x00}, 3);
        AddWatchTyped(form, "count", false);
        AddWatchTyped(form, "65", true);
        QCOMPARE(watch->Label(1) + watch->Cell(1) + watch->Label(2), QString("COUNT$07$0041"));

        // Step Into: INC $0040 changes COUNT and nothing else.
        std::int32_t code = 0x0180;
        form.Link().OutBytes(code, Program, static_cast<std::int16_t>(Program.size()));
        CpuRegisters.PC = 0x0180;
        // A goes to $0000 with every step: the word watch over it keeps its value.
        CpuRegisters.A = 0x34;
        CpuRegisters.B = 0x12;
        form.mnuRunStepInto_Click();
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));
        QCOMPARE(watch->Cell(1), QString("$08"));
        QVERIFY(watch->CellChanged(1) && !watch->CellChanged(0) && !watch->CellChanged(2));
        // The next step changes the word; COUNT is back to the plain colour.
        form.mnuRunStepInto_Click();
        QCOMPARE(tuple(watch->Cell(2), watch->CellChanged(2), watch->CellChanged(1)), tuple("$3412", true, false));
        if (TargetMode == SimulatorMode)
            SaveScreenshot(watch->parentWidget(), "watch-window.png");

        // A value typed into a watch goes to the target and comes back.
        EnterValue(watch, 1, "%101");
        QCOMPARE(tuple(TargetByte(form, 0x0040), watch->Cell(1)), tuple(5, "$05"));

        // Edit: from a symbol to a number drops it; byte to word keeps the format.
        watch->SelectRow(1);
        watch->mnuViewDec();
        PlayDialogs([&] { form.mnuDebugEditWatch_Click(); }, [](QDialog& dialog) {
            QCOMPARE(dialog.findChild<QLineEdit*>("txtAdr")->text(), QString("COUNT"));
            dialog.findChild<QRadioButton*>("optWord")->setChecked(true);
            TypeAndPressOK(dialog, "txtAdr", "$40");
        });
        QCOMPARE(watch->Label(1) + " " + watch->Cell(1), QString("$0040 1332"));   // $0534 in decimal

        // Fill up to 32; the 33rd shows the box and no dialog.
        while (WatchCount < MaxWatches)
            AddWatchTyped(form, QString::number(0x200 + WatchCount), false);
        QCOMPARE(watch->ListView->topLevelItemCount(), 32);
        dialogs = 0;
        AddWatchTyped(form, "$300", false, &dialogs);
        QCOMPARE(tuple(dialogs, f.boxes.Texts()), tuple(0, QStringList{" Can't Add Watch !\n\r(Max. Watches = 32)"}));
        f.boxes.boxes.clear();

        // Remove all; with no row selected nothing is removed.
        while (WatchCount > 0) {
            watch->SelectRow(0);
            form.mnuPopupViewRemoveWatch_Click();
        }
        QVERIFY(watch->ListView->topLevelItemCount() == 0 && !form.Menu("mnuDebugEditWatch")->isEnabled());
        form.mnuDebugEditWatch_Click();   // no row: nothing happens, no dialog
        form.mnuPopupViewRemoveWatch_Click();
        QCOMPARE(tuple(WatchCount, f.boxes.boxes.size()), tuple(0, 0));

        // The table outlives the window.
        AddWatchTyped(form, "$0040", false);
        form.UnloadWindow("frmWatch");
        QVERIFY(!form.Menu("mnuViewWatch")->isChecked() && WatchCount == 1);
        form.Menu("mnuViewWatch")->trigger();
        QCOMPARE(Watches(form)->Cell(0), QString("$05"));
    }
};

QTEST_MAIN(MemoryWatchWindowsTest)
#include "MemoryWatchWindows_test.moc"
