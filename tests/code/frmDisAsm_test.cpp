// The disassembly window on the real main window, in simulator mode: rows and
// their colours through activation, the keys and their backward searches,
// go-to-address through the dialog, a refresh whose read fails, the mouse and
// the Debug popup, horizontal scrolling, breakpoints and unloading.
#include <QtTest>

#include "code/ListingReader.h"
#include "code/SymbolTable.h"
#include "source/hc11/Assembler.h"
#include "support/S19Image.h"
#include "code/frmDisAsm.h"
#include "core/TargetState.h"
#include "execution/Breakpoints.h"
#include "platform/PopupMenu.h"
#include "platform/SettingsStore.h"
#include "support/DisAsmLooks.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/EntryFields.h"

#include <QBuffer>
#include <QDir>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScrollBar>
#include <initializer_list>

namespace {
// LDS #$00FF; LDAA #5; DECA; BNE back to DECA; JSR $E010; BRA to itself; NOPs; RTS.
const std::initializer_list<int> Program = {0x8E, 0x00, 0xFF, 0x86, 0x05, 0x4A, 0x26, 0xFD, 0xBD,
                                            0xE0, 0x10, 0x20, 0xFE, 0x01, 0x01, 0x01, 0x39};

void Poke(std::int32_t address, std::initializer_list<int> bytes)
{
    for (int b : bytes)
        TargetMemory[address++ & 0xFFFF] = static_cast<std::uint8_t>(b);
}

}  // namespace

class frmDisAsmTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        f = std::make_unique<MainFormFixture>();
        f->Start();
        f->form->showNormal();
        f->form->resize(1000, 800);
        TargetMode = SimulatorMode;
        BoardConnected = true;
        RunStopped = true;
        f->form->Menu("mnuDebugCodeOn")->setChecked(false);
        f->form->Menu("mnuDebugIncludeSym")->setChecked(false);
        Poke(0xE000, Program);
        CpuRegisters.PC = 0xE003;
    }

    void cleanup() { f.reset(); }

    void opensAtPCWithTheColoursAsState()
    {
        frmDisAsm* w = Open(12);
        QCOMPARE(w->windowTitle(), QString("Disassembler"));
        QVERIFY(f->form->Menu("mnuViewDisassembler")->isChecked());
        QCOMPARE(w->TopAddress, 0xE003);
        QCOMPARE(ProgramBase, 0xE003);
        QCOMPARE(w->CurRow, std::int16_t(1));
        QCOMPARE(w->RowCaption(1), QString(" $E003:   LDAA  #$05"));
        QCOMPARE(w->RowCaption(3), QString(" $E006:   BNE   $E005"));
        QVERIFY(w->RowBold(1));
        for (int row = 2; row <= 50; ++row)
            QVERIFY(!w->RowBold(row));
        QCOMPARE(LookOf(w, 1), Look::Current);
        QCOMPARE(LookOf(w, 2), Look::Plain);
        QVERIFY(f->form->Menu("mnuRunStepInto")->isEnabled());

        // A breakpoint on the current row turns it magenta; deactivation leaves red.
        AddBreakpoint(0xE005);
        w->PageRedraw();
        w->Label_Click(2);
        QCOMPARE(LookOf(w, 1), Look::Plain);
        QCOMPARE(LookOf(w, 2), Look::CurrentBreakpoint);
        QWidget* other = OpenOtherWindow();
        QCOMPARE(LookOf(w, 2), Look::Breakpoint);
        QCOMPARE(w->CurRow, std::int16_t(2));
        QVERIFY(!f->form->Menu("mnuDebugToggleBreakpoint")->isEnabled());
        QVERIFY(f->form->Menu("mnuRunStepInto")->isEnabled());   // the run entries stay
        // Inactive, a new current row gets no highlight.
        w->Label_Click(3);
        QCOMPARE(LookOf(w, 2), Look::Breakpoint);
        QCOMPARE(LookOf(w, 3), Look::Plain);
        Activate(w);
        QCOMPARE(LookOf(w, 3), Look::Current);
        QVERIFY(f->form->Menu("mnuDebugToggleBreakpoint")->isEnabled());
        QVERIFY(f->form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());

        // Before a run the marks go: no bold, no highlight, the breakpoint stays.
        w->ClearMarks();
        QVERIFY(!w->RowBold(1));
        QCOMPARE(LookOf(w, 3), Look::Plain);
        QCOMPARE(LookOf(w, 2), Look::Breakpoint);
        delete other;
    }

    void pcOnThePageMovesTheRowNotThePage()
    {
        frmDisAsm* w = Open(12);
        CpuRegisters.PC = 0xE008;
        w->mnuGoToPCAddress();
        QCOMPARE(w->TopAddress, 0xE003);
        QCOMPARE(w->CurRow, std::int16_t(4));
        QVERIFY(w->RowBold(4) && !w->RowBold(1));
        QCOMPARE(LookOf(w, 4), Look::Current);
        QCOMPARE(LookOf(w, 1), Look::Plain);

        // The branch to itself shows its mark; off the page the page moves to PC.
        CpuRegisters.PC = 0xE00B;
        w->mnuGoToPCAddress();
        QCOMPARE(w->RowCaption(5), QString(" $E00B: ") + QChar(0xB1) + " BRA   $E00B");
        CpuRegisters.PC = 0xE100;
        w->mnuGoToPCAddress();
        QCOMPARE(w->TopAddress, 0xE100);
        QCOMPARE(w->CurRow, std::int16_t(1));

        // Set New PC takes the current row's address; Run to cursor notes it.
        GoTo(w, 0xE000);
        w->Label_Click(3);
        w->mnuRunToCursor();
        QCOMPARE(RunToAddress, 0xE005);
        w->mnuSetNewPC();
        QCOMPARE(CpuRegisters.PC, 0xE005);
        QVERIFY(w->RowBold(3));
        QCOMPARE(w->CurRow, std::int16_t(3));
    }

    void downAndUpMoveTheRowThenScroll()
    {
        frmDisAsm* w = Open(4);
        QCOMPARE(w->VisibleRows, std::int16_t(4));
        QTest::keyClick(w, Qt::Key_Up);   // back over the 3-byte load above
        QCOMPARE(w->TopAddress, 0xE000);
        QCOMPARE(ProgramBase, 0xDFFE);
        QCOMPARE(w->CurRow, std::int16_t(1));
        QCOMPARE(w->RowCaption(1), QString(" $E000:   LDS   #$00FF"));
        QCOMPARE(LookOf(w, 1), Look::Current);   // the current row stays 1, PC is row 2 now
        QCOMPARE(w->RowBold(2), true);
        QTest::keyClick(w, Qt::Key_Down);
        QCOMPARE(LookOf(w, 2), Look::Current);
        QCOMPARE(LookOf(w, 1), Look::Plain);
        QTest::keyClick(w, Qt::Key_Down);
        QTest::keyClick(w, Qt::Key_Down);
        QCOMPARE(w->CurRow, std::int16_t(4));
        QCOMPARE(w->TopAddress, 0xE000);
        QTest::keyClick(w, Qt::Key_Down);   // scrolls by one instruction
        QCOMPARE(w->TopAddress, 0xE003);
        QCOMPARE(ProgramBase, 0xE003);
        QCOMPARE(w->CurRow, std::int16_t(4));
        QCOMPARE(w->RowCaption(4), QString(" $E008:   JSR   $E010"));
        QCOMPARE(LookOf(w, 4), Look::Current);
        QCOMPARE(LookOf(w, 3), Look::Plain);
        QVERIFY(!w->PageBusy);

        // After a resize to fewer rows the current row stays until the next key,
        // and Down then scrolls as from the last row.
        SetRows(w, 2);
        QCOMPARE(w->CurRow, std::int16_t(4));
        QTest::keyClick(w, Qt::Key_Down);
        QCOMPARE(w->TopAddress, 0xE005);
        QCOMPARE(w->CurRow, std::int16_t(2));
    }

    void scrollingUpOverBadDataMovesOneToFiveBytes()
    {
        // Prefixes without a valid second byte and illegal bytes.
        for (std::int32_t a = 0x2000; a < 0x2200; a += 4)
            Poke(a, {0x18, 0x18, 0xCD, 0x41});
        Poke(0x2200, {0x18, 0x1E, 0x10, 0x80, 0xFB});
        CpuRegisters.PC = 0x2205;
        frmDisAsm* w = Open(6);
        std::int32_t top = w->TopAddress;
        QCOMPARE(top, 0x2205);
        for (int press = 0; press < 12; ++press) {
            QTest::keyClick(w, Qt::Key_Up);
            const std::int32_t moved = top - w->TopAddress;
            QVERIFY2(moved >= 1 && moved <= 5, qPrintable(QString::number(moved)));
            QCOMPARE(w->PageRows[0].RowAddress, w->TopAddress);
            top = w->TopAddress;
        }
        QCOMPARE(w->CurRow, std::int16_t(1));
    }

    void pageKeysAndTheWrapAtTheEndsOfMemory()
    {
        frmDisAsm* w = Open(5);
        w->Label_Click(3);
        const std::int32_t bottom = w->PageRows[4].RowAddress;
        QTest::keyClick(w, Qt::Key_PageDown);   // the bottom row becomes the top row
        QCOMPARE(w->TopAddress, bottom);
        QCOMPARE(w->CurRow, std::int16_t(3));
        QTest::keyClick(w, Qt::Key_PageUp);     // and back: the old top is the bottom row
        QCOMPARE(w->PageRows[4].RowAddress, bottom);
        QCOMPARE(w->TopAddress, 0xE003);
        QCOMPARE(LookOf(w, 3), Look::Current);

        // Page Down at the top of memory runs on from $0000.
        for (std::int32_t a = 0xFFF0; a <= 0xFFFF; ++a)
            TargetMemory[a] = 0x01;
        GoTo(w, 0xFFFB);
        QTest::keyClick(w, Qt::Key_PageDown);
        QCOMPARE(w->TopAddress, 0xFFFF);
        QCOMPARE(w->PageRows[1].RowAddress, 0x0000);
        QCOMPARE(w->RowCaption(2).left(8), QString(" $0000: "));
        // Up at $0000 wraps to the top of memory, Page Up across it too.
        GoTo(w, 0x0002);
        for (std::int32_t top : {0x0001, 0x0000, 0xFFFF, 0xFFFE}) {
            QTest::keyClick(w, Qt::Key_Up);
            QCOMPARE(w->TopAddress, top);
        }
        QTest::keyClick(w, Qt::Key_PageUp);
        for (const PageRow& row : w->PageRows)
            QVERIFY(row.RowAddress >= 0 && row.RowAddress <= 0xFFFF);
        QVERIFY(!w->RowCaption(5).isEmpty());
    }

    void goToAddressThroughTheDialog()
    {
        frmDisAsm* w = Open(8);
        int context = 0;
        {
            ModalPlayer player([&](QDialog& dialog) {
                context = dialog.property("HelpContextID").toInt();
                TypeAndPressOK(dialog, "txtAdr", "$E008");
            });
            f->form->Menu("mnuDebugGoToAddress")->trigger();
        }
        QCOMPARE(context, 191);
        QCOMPARE(w->TopAddress, 0xE008);
        QCOMPARE(ProgramBase, 0xE008);
        QCOMPARE(w->CurRow, std::int16_t(1));
        QCOMPARE(w->RowCaption(1), QString(" $E008:   JSR   $E010"));
        QVERIFY(!w->RowBold(1));
        {
            ModalPlayer player([](QDialog& dialog) { dialog.reject(); });
            w->mnuGoToAddress();
        }
        QCOMPARE(w->TopAddress, 0xE008);
        QCOMPARE(ProgramBase, 0xE008);
    }

    void aFailedReadClearsTheScreenAndARefreshBringsItBack()
    {
        frmDisAsm* w = Open(8);
        AddBreakpoint(0xE005);
        w->PageRedraw();
        TargetMode = BoardMode;
        f->line.SetCTS(false);
        f->form->Menu("mnuDebugRefresh")->trigger();
        QVERIFY(!BoardConnected);
        QVERIFY(!f->boxes.boxes.isEmpty());
        QCOMPARE(w->CurRow, std::int16_t(0));
        for (int row = 1; row <= 50; ++row) {
            QVERIFY(w->RowCaption(row).isEmpty());
            QCOMPARE(LookOf(w, row), Look::Plain);
        }
        QVERIFY(!w->HScroll->isVisible());
        QCOMPARE(w->TopAddress, 0xE003);   // kept, with PC and the breakpoints
        QCOMPARE(BreakpointCount, std::int16_t(1));
        // Without a page, keys and clicks do nothing.
        QTest::keyClick(w, Qt::Key_PageDown);
        w->Label_Click(2);
        w->Label_DblClick(2);
        QCOMPARE(w->CurRow, std::int16_t(0));
        QCOMPARE(BreakpointCount, std::int16_t(1));

        TargetMode = SimulatorMode;
        ProgramBase = 0xE000;
        w->mnuRefresh();
        QCOMPARE(w->CurRow, std::int16_t(1));
        QCOMPARE(w->TopAddress, 0xE000);
        QCOMPARE(LookOf(w, 3), Look::Breakpoint);
        QVERIFY(w->RowBold(2));
    }

    void doubleClickTogglesAndTheThirtyThirdIsRefused()
    {
        frmDisAsm* w = Open(8);
        QTest::mouseDClick(w->Label[3], Qt::LeftButton);
        QCOMPARE(BreakpointCount, std::int16_t(1));
        QCOMPARE(BreakpointTable[0], 0xE006);
        QCOMPARE(w->CurRow, std::int16_t(3));
        QCOMPARE(LookOf(w, 3), Look::CurrentBreakpoint);
        QCOMPARE(LookOf(w, 1), Look::Plain);
        QVERIFY(f->form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());
        f->form->Menu("mnuDebugToggleBreakpoint")->trigger();   // the same row again
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QCOMPARE(LookOf(w, 3), Look::Current);
        QVERIFY(!f->form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());

        for (int i = 0; i < MaxBreakpoints; ++i)
            AddBreakpoint(0x3000 + i);
        w->Label_DblClick(5);
        QCOMPARE(f->boxes.boxes.size(), 1);
        QCOMPARE(f->boxes.boxes[0].caption, QString("Orvane - Breakpoint Error"));
        QCOMPARE(f->boxes.boxes[0].text, QString("  Can't Set Breakpoint !\n (Max. Breakpoints = 32)"));
        QCOMPARE(f->boxes.boxes[0].style, MbOkOnly | MbExclamation);
        QCOMPARE(BreakpointCount, std::int16_t(MaxBreakpoints));
        QVERIFY(!HasBreakpoint(w->PageRows[4].RowAddress));
        QCOMPARE(LookOf(w, 5), Look::Plain);
        QCOMPARE(w->CurRow, std::int16_t(3));
    }

    void clearAllRepaintsOnlyTheRowsOfTheTable()
    {
        frmDisAsm* w = Open(8);
        // Two breakpoints off the page: the table empties and no row changes.
        AddBreakpoint(0x4000);
        AddBreakpoint(0x4002);
        w->Label_Click(2);
        f->form->BreakpointCountChanged();
        f->form->Menu("mnuDebugClearAllBreakpoints")->trigger();
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QCOMPARE(LookOf(w, 2), Look::Current);
        for (int row : {1, 3, 4})
            QCOMPARE(LookOf(w, row), Look::Plain);
        QVERIFY(!f->form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());

        // On the page: the current row goes back to blue, another to plain.
        w->Label_DblClick(4);
        w->Label_DblClick(2);
        QCOMPARE(LookOf(w, 4), Look::Breakpoint);
        QCOMPARE(LookOf(w, 2), Look::CurrentBreakpoint);
        w->mnuClearAllBreakpoints();
        QCOMPARE(LookOf(w, 2), Look::Current);
        QCOMPARE(LookOf(w, 4), Look::Plain);
        QCOMPARE(BreakpointCount, std::int16_t(0));
    }

    void rightButtonMakesTheRowCurrentAndShowsTheDebugPopup()
    {
        frmDisAsm* w = Open(8);
        QStringList shown;
        const PopupMenuHandler previous = SetPopupMenuHandler([&](QMenu* menu) {
            for (QAction* entry : menu->actions())
                if (entry->isVisible() && !entry->isSeparator())
                    shown << entry->objectName();
        });
        QTest::mouseClick(w->Label[5], Qt::RightButton);
        SetPopupMenuHandler(previous);
        QCOMPARE(w->CurRow, std::int16_t(5));
        QCOMPARE(LookOf(w, 5), Look::Current);
        QVERIFY(shown.contains("mnuDebugRefresh"));
        QVERIFY(!shown.contains("mnuDebugAddWatch"));
        QVERIFY(!f->form->Menu("mnuDebugRefresh")->isVisible());
        QTest::mouseClick(w->Label[2], Qt::LeftButton);
        QCOMPARE(w->CurRow, std::int16_t(2));
    }

    void switchesAndHorizontalScrolling()
    {
        SymbolTable = {{0xE003, 2, {0x86, 0x05}, "", "        LDAA    #5      ; count"}};
        SymbolCount = 1;
        frmDisAsm* w = Open(8);
        f->form->Menu("mnuDebugCodeOn")->trigger();
        QVERIFY(f->form->Menu("mnuDebugCodeOn")->isChecked());
        QCOMPARE(w->RowCaption(2), QString(" $E005: 4A               DECA"));
        f->form->Menu("mnuDebugIncludeSym")->trigger();
        QCOMPARE(w->RowCaption(1), QString(" $E003: 86 05" + QString(12, ' ') + "        LDAA    #5      ; count"));
        QCOMPARE(LookOf(w, 1), Look::Current);

        // Too narrow for the longest row: the bar takes the bottom and a row.
        auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
        frame->resize(900, frame->height());
        QCoreApplication::processEvents();
        QVERIFY(!w->HScroll->isVisible());
        frame->resize(frame->width() - w->width() + 20 * w->fontMetrics().horizontalAdvance(' '),
                      frame->height() - w->height() + 8 * w->Label[1]->height() + w->HScroll->sizeHint().height());
        QCoreApplication::processEvents();
        QVERIFY(w->HScroll->isVisible());
        QCOMPARE(w->VisibleRows, std::int16_t(8));
        QVERIFY(w->HScroll->maximum() > 0);
        w->HScroll->setValue(8);
        QCOMPARE(w->RowCaption(2), QString("4A               DECA"));
        w->HScroll->setValue(0);
        QCOMPARE(w->RowCaption(2).left(8), QString(" $E005: "));
    }

    void unloadingStoresPlacementAndTurnsTheRunCommandsOff()
    {
        frmDisAsm* w = Open(8);
        QVERIFY(f->form->Menu("mnuRunPlay")->isEnabled());
        QPointer<frmDisAsm> watch = w;
        w->parentWidget()->close();
        QTRY_VERIFY(watch.isNull());
        QVERIFY(!frmDisAsm::Instance());
        QVERIFY(!f->form->Menu("mnuViewDisassembler")->isChecked());
        for (const char* name : {"mnuRunPlay", "mnuRunStepInto", "mnuRunPause"})
            QVERIFY2(!f->form->Menu(name)->isEnabled(), name);
        QCOMPARE(GetSetting("Windows", "DisAsmState"), QString("0"));
        // A Debug command opens it again, at PC.
        f->form->Menu("mnuDebugGoToPCAddress")->trigger();
        QVERIFY(frmDisAsm::Instance());
        QCOMPARE(frmDisAsm::Instance()->TopAddress, 0xE003);
    }

    void screenshotOfAProgramBeingStepped()
    {
        // The LED counter example, assembled and loaded with its listing, with
        // PC on a branch back, a breakpoint and the current row elsewhere.
        // With ORVANE_SCREENSHOT set to a folder the window is saved there as
        // disassembler.png (run under a real display for its fonts).
        QFile file(QFINDTESTDATA("../../examples/ledcount.asm"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto result = hc11::as11::AssembleSource(file.readAll().toStdString(), "ledcount");
        QVERIFY(result.errors.empty());
        for (const auto& [address, byte] : asmtest::ReadS19(result.s19).bytes)
            TargetMemory[address] = byte;
        QByteArray listing = QByteArray::fromStdString(result.listing);
        QBuffer device(&listing);
        QVERIFY(device.open(QIODevice::ReadOnly));
        ReadSymbols(device, [] {});
        f->form->Menu("mnuDebugCodeOn")->setChecked(true);
        f->form->Menu("mnuDebugIncludeSym")->setChecked(true);
        Poke(0x0000, {0, 0, 0x13, 0x88, 0, 0, 0, 0xFF, 0});   // IX = 5000, SP = $00FF, Z clear
        CpuRegisters.PC = 0xE000;

        frmDisAsm* w = frmDisAsm::Open();
        auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
        frame->resize(820, frame->height());
        SetRows(w, 20);
        Activate(w);
        const int wloop = 15;   // DEX, then BNE WLOOP
        QVERIFY(w->PageRows[wloop].RowText.mid(25).startsWith("WLOOP   DEX"));
        CpuRegisters.PC = w->PageRows[wloop + 1].RowAddress;   // BNE WLOOP, taken
        w->Label_DblClick(wloop + 3);                          // a breakpoint on PULX
        w->mnuGoToPCAddress();
        QCOMPARE(w->CurRow, std::int16_t(wloop + 2));
        w->Label_Click(9);
        QCOMPARE(w->RowCaption(wloop + 2).at(23), QChar('-'));
        QVERIFY(w->RowBold(wloop + 2));
        QCOMPARE(LookOf(w, wloop + 3), Look::Breakpoint);
        QCOMPARE(LookOf(w, 9), Look::Current);

        QVERIFY(QTest::qWaitForWindowExposed(f->form.get()));
        const QImage shot = frame->grab().toImage();
        const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
        if (!folder.isEmpty())
            QVERIFY(shot.save(QDir(folder).filePath("disassembler.png")));
        // The colours that record the rows' states are the ones on the screen.
        const auto colourAt = [&](int row) {   // right of the text, inside the row
            return shot.pixelColor(w->Label[row]->mapTo(frame, QPoint(w->width() - 6, w->Label[row]->height() / 2)));
        };
        QCOMPARE(colourAt(9), frmDisAsm::CurrentColour);
        QCOMPARE(colourAt(wloop + 3), frmDisAsm::BreakpointColour);
        QCOMPARE(colourAt(2), w->WindowColour());
    }

private:
    void GoTo(frmDisAsm* w, std::int32_t address)
    {
        ModalPlayer player([address](QDialog& dialog) {
            TypeAndPressOK(dialog, "txtAdr", "$" + QString::number(address, 16).toUpper());
        });
        w->mnuGoToAddress();
        QCOMPARE(w->TopAddress, address);
    }

    // Opens the window and makes it show the given number of rows.
    frmDisAsm* Open(int rows)
    {
        frmDisAsm* w = frmDisAsm::Open();
        SetRows(w, rows);
        Activate(w);
        return w;
    }

    void SetRows(frmDisAsm* w, int rows)
    {
        auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
        frame->resize(frame->width(), frame->height() - w->height() + rows * w->Label[1]->height() + 2);
        QCoreApplication::processEvents();
        QCOMPARE(w->VisibleRows, std::int16_t(rows));
    }

    void Activate(QWidget* w)
    {
        f->form->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(w->parentWidget()));
        QCoreApplication::processEvents();
    }

    QWidget* OpenOtherWindow()
    {
        auto* other = new QWidget;
        QMdiSubWindow* sub = f->form->mdiArea()->addSubWindow(other);
        sub->show();
        f->form->mdiArea()->setActiveSubWindow(sub);
        QCoreApplication::processEvents();
        return sub;
    }

    std::unique_ptr<MainFormFixture> f;
};

QTEST_MAIN(frmDisAsmTest)
#include "frmDisAsm_test.moc"
