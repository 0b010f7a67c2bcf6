// The CPU register window in simulator mode and on a scripted board, and the
// list window template as a block window uses it.

#include "engine/state/TargetState.h"
#include "platform/widgets/PopupMenu.h"
#include "platform/TickCount.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "support/ui/ShownWindow.h"
#include "ui/views/RegisterWindow.h"

#include <QMenu>
#include <QTreeWidget>

namespace {
enum Row { A, B, D, IX, IY, PC, SP, CCR };
enum TimerRow { TCNT = 0, TOC1 = 4 };

// A=$12 B=$34 IX=$5678 IY=$9ABC SP=$00FF CCR=$D1 in the save area, PC $E000 on the host.
RegisterWindow* OpenCpu(frmMain& form, std::array<std::uint8_t, 65536>& memory)
{
    const std::uint8_t saved[] = {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0x00, 0xFF, 0xD1};
    std::copy(std::begin(saved), std::end(saved), memory.begin());
    CpuRegisters.PC = 0xE000;
    return OpenByMenu<RegisterWindow>(form, "mnuViewRegCPU", "frmRegCPU");
}

QStringList Cells(const RegisterWindow* w)
{
    QStringList cells;
    for (int i = 0; i < w->ListView->topLevelItemCount(); ++i)
        cells << w->Cell(i);
    return cells;
}

// A lost board: every time-out passes at once.
template <class Action>
void Silently(ScriptedMonitor& board, Action action)
{
    std::uint32_t now = 0;
    const auto clock = SetTickCountSource([&] { return now += 50; });
    board.silent = true;
    action();
    SetTickCountSource(clock);
}

QPoint RowPoint(const RegisterWindow* w, int row)
{
    return w->ListView->visualItemRect(w->ListView->topLevelItem(row)).center();
}

// The popup while up: its enabled, visible entries, then the checked format.
QString RightClick(frmMain& form, RegisterWindow* w, const QPoint& at, const char* trigger = nullptr)
{
    QString state;
    PopupMenuHandler previous = SetPopupMenuHandler([&](QMenu*) {
        for (const char* name : {"Enter", "Hex", "Bin", "Dec", "Refresh", "AutoRefresh"}) {
            QAction* entry = form.Menu(QString("mnuPopupView") + name);
            if (entry->isEnabled() && entry->isVisible())
                state += QString(name) + " ";
        }
        for (const char* name : {"Hex", "Bin", "Dec"})
            if (form.Menu(QString("mnuPopupView") + name)->isChecked())
                state += QString("| ") + name;
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
private slots:
    void enteredValuesThePopupFormatsAndPlayInTheSimulator()
    {
        MainFormFixture f;
        frmMain& form = StartInSimulator(f);
        QVERIFY(ShowAt(form, {1000, 560}));
        RegisterWindow* cpu = OpenCpu(form, TargetMemory);
        QCOMPARE(Cells(cpu), (QStringList{"$12", "$34", "$1234", "$5678", "$9ABC", "$E000", "$00FF", "%SX0I000C"}));
        // At its default place every row is in sight, and no value is cut by the window's edge.
        QCoreApplication::processEvents();
        const QRect view = cpu->ListView->viewport()->rect();
        QVERIFY(view.contains(cpu->ListView->visualItemRect(cpu->ListView->topLevelItem(CCR))));
        QVERIFY(cpu->ListView->columnWidth(0) + cpu->ValueColumnWidth() <= view.width());

        QCOMPARE(EnterValue(cpu, D, "$BEEF"), (QStringList{"D:", "$1234"}));
        QCOMPARE(tuple(TargetMemory[0], TargetMemory[1]), tuple(0xBE, 0xEF));
        QCOMPARE(cpu->Cell(A) + cpu->Cell(B), QString("$BE$EF"));
        EnterValue(cpu, IY, "65535");
        QCOMPARE(cpu->Cell(IY), QString("$FFFF"));
        // The first key replaces the value; empty text is passed over, a refused number told and cleared.
        QStringList seen;
        cpu->SelectRow(B);
        PlayDialogs([&] { QTest::keyClick(cpu->ListView, Qt::Key_Return); }, [&](QDialog& dialog) {
            auto* box = dialog.findChild<QLineEdit*>("Text");
            seen << box->selectedText();
            for (const char* text : {"", "256"}) {
                TypeAndPressOK(dialog, "Text", text);
                seen << (dialog.isVisible() ? box->text() : "closed");
            }
            dialog.findChild<QPushButton*>("cmdCancel")->click();
        });
        QCOMPARE(seen, (QStringList{"$EF", "", ""}));
        QCOMPARE(tuple(f.boxes.Texts(), TargetMemory[1]), tuple(QStringList{"Invalid Number !"}, 0xEF));

        // The flag row offers plain binary and takes any notation; InCPU splits the flags again.
        TargetMemory[8] = 0;
        cpu->mnuRefresh();
        QCOMPARE(EnterValue(cpu, CCR, "$D1"), (QStringList{"CCR:", "%00000000"}));
        QCOMPARE(tuple(TargetMemory[8], CpuRegisters.FlagX, CpuRegisters.FlagI), tuple(0xD1, true, true));
        QCOMPARE(cpu->Cell(CCR), QString("%SX0I000C"));

        // Formats through the popup, and the value column fitted to the cells.
        const int narrow = cpu->ValueColumnWidth();
        const QString everything = "Enter Hex Bin Dec Refresh ";
        QCOMPARE(RightClick(form, cpu, RowPoint(cpu, IX), "mnuPopupViewBin"), everything + "| Hex");
        QCOMPARE(cpu->Cell(IX), QString("%0101011001111000"));
        const int wide = cpu->ValueColumnWidth();
        // Exactly wide enough for the cells, so none is cut.
        QVERIFY(wide > narrow && wide >= cpu->ListView->fontMetrics().horizontalAdvance("%0101011001111000"));
        QCOMPARE(RightClick(form, cpu, RowPoint(cpu, IX), "mnuPopupViewDec"), everything + "| Bin");
        QCOMPARE(tuple(cpu->Cell(IX), cpu->ValueColumnWidth()), tuple("22136", narrow));

        // SP takes no value but can be formatted.
        int dialogs = 0;
        ModalPlayer player([&](QDialog&) { ++dialogs; });
        cpu->SelectRow(SP);
        QTest::keyClick(cpu->ListView, Qt::Key_Return);
        QTest::mouseDClick(cpu->ListView->viewport(), Qt::LeftButton, {}, RowPoint(cpu, SP));
        QCOMPARE(RightClick(form, cpu, RowPoint(cpu, SP), "mnuPopupViewDec"), QString("Hex Bin Dec Refresh | Hex"));
        QCOMPARE(cpu->Cell(SP), QString("255"));
        // The flag row keeps its letters; its format entries are off, and triggered anyway change nothing.
        QCOMPARE(RightClick(form, cpu, RowPoint(cpu, CCR), "mnuPopupViewHex"), QString("Enter Refresh | Bin"));
        QCOMPARE(cpu->Cell(CCR), QString("%SX0I000C"));
        // Below the rows: no entry but Refresh; the selected row's format is checked.
        cpu->SelectRow(B);
        const QPoint below = RowPoint(cpu, CCR) + QPoint(0, 3 * cpu->ListView->visualItemRect(
                                                                     cpu->ListView->topLevelItem(CCR)).height());
        QCOMPARE((tuple{RightClick(form, cpu, below), cpu->SelectedRow(), dialogs}), tuple("Refresh | Hex", B, 0));

        // During Play the cells follow at each event pass: LDAA #$42, INCA, then a breakpoint on the NOP.
        const std::uint8_t program[] = {0x86, 0x42, 0x4C, 0x01};
        std::copy(std::begin(program), std::end(program), TargetMemory.begin() + 0x2000);
        CpuRegisters.PC = 0x2000;
        BreakpointTable[0] = 0x2003, BreakpointCount = 1;
        form.mnuRunPlay_Click();
        QCoreApplication::processEvents();
        QCOMPARE(cpu->Cell(A) + cpu->Cell(PC), QString("$43$2003"));
        TargetMemory[0] = 0x99;   // outside Play a redraw is written at once
        cpu->mnuRefresh();
        QCOMPARE(cpu->Cell(A), QString("$99"));
    }

    // On a board: a block window writes a 16-bit row in one write and refreshes itself across the
    // dialog, activation and a lost link; the CPU window shows what the board answers, not what was typed.
    void blockAndCpuWindowsOnTheBoard()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        board.memory[0x1016] = 0x12, board.memory[0x1017] = 0x34;
        // The X bit can't be set by a write, as on the processor.
        board.Stored = [](std::int32_t address, std::uint8_t byte) {
            return address == 8 ? std::uint8_t(byte & ~0x40) : byte;
        };
        frmMain& form = f.Start();
        auto* timer = qobject_cast<RegisterWindow*>(form.LoadWindow("frmRegTimer"));
        QCOMPARE(timer->Cell(TOC1), QString("$1234"));

        // One write, high byte first, then one read of the block for the redraw.
        board.frames.clear();
        EnterValue(timer, TOC1, "$BEEF");
        QCOMPARE(tuple(board.Count('W'), board.Count('R')), tuple(1, 1));
        QCOMPARE(board.frames[0].mid(0, 6), QByteArray::fromHex("57101602BEEF"));
        QCOMPARE(timer->Cell(TOC1), QString("$BEEF"));

        RegisterWindow* cpu = OpenCpu(form, board.memory);
        Activate(form, timer);
        timer->mnuAutoRefresh();
        QVERIFY(form.tmrRefresh.isActive() && form.tmrRefresh.interval() == 100);
        // A tick refreshes the active window from the target, but not while anything runs.
        board.memory[0x100F] = 0x42;
        for (bool* running : {&BoardRunning, &PlayActive, &AnimateActive}) {
            *running = true;
            form.tmrRefresh_Timer();
            *running = false;
        }
        QCOMPARE(timer->Cell(TCNT), QString("$0000"));
        form.tmrRefresh_Timer();
        QCOMPARE(timer->Cell(TCNT), QString("$0042"));

        // Off while the dialog is up; a cancelled dialog writes nothing.
        bool timerDuringDialog = true;
        PlayDialogs([&] { timer->mnuEnter(); }, [&](QDialog&) { timerDuringDialog = form.tmrRefresh.isActive(); });
        QCOMPARE(tuple(timerDuringDialog, board.Count('W'), form.tmrRefresh.isActive()), tuple(false, 1, true));

        Activate(form, cpu);
        QVERIFY(!form.tmrRefresh.isActive());
        Activate(form, timer);
        QVERIFY(form.tmrRefresh.isActive());

        // A lost link clears the window and ends auto refresh for good.
        Silently(board, [&] { form.tmrRefresh_Timer(); });
        QCOMPARE(tuple(f.boxes.boxes.size(), timer->ValueColumnWidth()), tuple(1, 0));
        QVERIFY(!timer->AutoRefresh && !form.tmrRefresh.isActive());
        board.silent = false;
        timer->mnuRefresh();
        QVERIFY(timer->ValueColumnWidth() > 0 && !form.tmrRefresh.isActive());

        EnterValue(cpu, CCR, "%11111111");
        QCOMPARE(cpu->Cell(CCR), QString("%S0HINZVC"));
        // PC is the host's: its entry sends no write, only the refresh's reads.
        board.frames.clear();
        QCOMPARE(EnterValue(cpu, PC, "@160443"), (QStringList{"PC:", "$E000"}));
        QCOMPARE(tuple(CpuRegisters.PC, cpu->Cell(PC)), tuple(0xE123, "$E123"));
        QCOMPARE(tuple(board.Count('W'), board.Count('R') > 0, f.boxes.boxes.size()), tuple(0, true, 1));

        // A write that fails clears the window with one message, and nothing is refreshed after it.
        Silently(board, [&] { EnterValue(cpu, A, "$01"); });
        QCOMPARE(tuple(f.boxes.boxes.size(), BoardConnected, Cells(cpu)), tuple(2, false, QStringList(8, QString())));
        QCOMPARE(tuple(cpu->ValueColumnWidth(), board.memory[0]), tuple(0, 0x12));
    }
};

QTEST_MAIN(frmRegCPUTest)
#include "frmRegCPU_test.moc"
