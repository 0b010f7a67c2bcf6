// The stack window in simulator mode: the view that brings SP in, the bold
// SP row and the blue current row as the rows' state, a byte changed on the
// target and shown by the refresh, go-to-address with its wrap, keys and
// mouse, the run's marks, and a failed read.
#include <QtTest>

#include "code/frmAddress.h"
#include "code/frmStack.h"
#include "core/TargetState.h"
#include "platform/PopupMenu.h"
#include "platform/TickCount.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "support/ScriptedMonitor.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

namespace {
// Resizes the window's frame so that exactly rows rows fit.
void ShowRows(frmStack* stack, int rows)
{
    QWidget* frame = stack->parentWidget();
    frame->resize(frame->width(), frame->height() - stack->height() + rows * stack->RowHeight());
    QCOMPARE(int(stack->VisibleRows), rows);
}

bool IsBlue(const frmStack* stack, int row)
{
    return stack->Label[row]->palette().color(QPalette::Window) == QColor(0, 0, 255);
}

bool IsBold(const frmStack* stack, int row)
{
    return stack->Label[row]->font().bold();
}

QString Text(const frmStack* stack, int row)
{
    return stack->Label[row]->text();
}
}  // namespace

class frmStackTest : public QObject {
    Q_OBJECT

    MainFormFixture* f = nullptr;
    frmMain* form = nullptr;

    // Simulator, SP at $00FF, a pattern in memory, the window open with 20 rows showing SP.
    frmStack* OpenStack()
    {
        form = &f->Start();
        form->show();   // rows are laid out in a shown frame
        TargetMode = SimulatorMode;
        for (int i = 0; i < 65536; ++i)
            TargetMemory[i] = std::uint8_t(i ^ (i >> 8));
        CpuRegisters.SP = 0x00FF;
        form->Menu("mnuViewStack")->trigger();
        auto* stack = qobject_cast<frmStack*>(form->Window("frmStack"));
        ShowRows(stack, 20);
        stack->ClearScreen();
        stack->mnuGoToSPAddress();
        return stack;
    }

private slots:
    void init() { f = new MainFormFixture; }
    void cleanup()
    {
        delete f;
        f = nullptr;
    }

    void goToSPPutsSPBoldOnTheLastRowAndAVisibleSPDoesNotMoveTheView()
    {
        frmStack* stack = OpenStack();
        QCOMPARE(stack->windowTitle(), QString("Stack"));
        QCOMPARE(StackViewAddress, 0x00EC);
        QCOMPARE(Text(stack, 1), QString(" $00EC:   $EC"));
        QCOMPARE(Text(stack, 20), QString(" $00FF:   $FF"));
        QVERIFY(IsBold(stack, 20));
        QVERIFY(!IsBold(stack, 19) && !IsBold(stack, 21));
        QCOMPARE(int(stack->CurRow), 20);
        QVERIFY(IsBlue(stack, 20));
        QVERIFY(!IsBlue(stack, 19));

        CpuRegisters.SP = 0x00F0;
        stack->mnuGoToSPAddress();
        QCOMPARE(StackViewAddress, 0x00EC);
        QCOMPARE(int(stack->CurRow), 5);
        QVERIFY(IsBold(stack, 5) && !IsBold(stack, 20));
        QVERIFY(IsBlue(stack, 5) && !IsBlue(stack, 20));
    }

    void anEnteredByteGoesToTheTargetAndTheRowShowsItByTheRefresh()
    {
        frmStack* stack = OpenStack();
        QStringList seen;
        ModalPlayer player([&](QDialog& dialog) {
            seen << dialog.findChild<QLabel*>("Label")->text() << dialog.findChild<QLineEdit*>("Text")->text();
            TypeAndPressOK(dialog, "Text", "%01110111");
        });
        stack->Label_Click(18);
        QTest::keyClick(stack, Qt::Key_Return);
        QCOMPARE(seen, (QStringList{"$00FD:", "$FD"}));
        QCOMPARE(TargetMemory[0x00FD], 0x77);
        QCOMPARE(Text(stack, 18), QString(" $00FD:   $77"));
        QCOMPARE(int(stack->CurRow), 18);

    }

    void goToAddressWrapsAndKeysMoveRowAndView()
    {
        frmStack* stack = OpenStack();
        {
            ModalPlayer player([](QDialog& dialog) { TypeAndPressOK(dialog, "txtAdr", "$FFFF"); });
            stack->mnuGoToAddress();
        }
        QCOMPARE(frmAddress::HelpContextID, 192);
        QCOMPARE(Text(stack, 1), QString(" $FFFF:   $00"));
        QCOMPARE(Text(stack, 2), QString(" $0000:   $00"));
        QCOMPARE(int(stack->CurRow), 1);

        QTest::keyClick(stack, Qt::Key_Down);
        QTest::keyClick(stack, Qt::Key_Down);
        QCOMPARE(int(stack->CurRow), 3);
        QVERIFY(IsBlue(stack, 3) && !IsBlue(stack, 2));
        QTest::keyClick(stack, Qt::Key_Up);
        QTest::keyClick(stack, Qt::Key_Up);
        QTest::keyClick(stack, Qt::Key_Up);   // at row 1 the view moves
        QCOMPARE(StackViewAddress, 0xFFFE);
        QCOMPARE(int(stack->CurRow), 1);
        QCOMPARE(Text(stack, 1), QString(" $FFFE:   $01"));

        StackViewAddress = 0x0005;
        stack->mnuRefresh();
        QTest::keyClick(stack, Qt::Key_PageUp);
        QCOMPARE(StackViewAddress, 0xFFF1);
        QCOMPARE(Text(stack, 20), QString(" $0004:   $04"));
        QTest::keyClick(stack, Qt::Key_PageDown);
        QCOMPARE(StackViewAddress, 0x0005);
        // Down on the last visible row moves the view by one.
        std::int16_t last = 20;
        stack->SetCurRow(last);
        QTest::keyClick(stack, Qt::Key_Down);
        QCOMPARE(StackViewAddress, 0x0006);
        QCOMPARE(int(stack->CurRow), 20);
    }

    void theCurrentRowStaysInsideTheVisibleRows()
    {
        frmStack* stack = OpenStack();
        std::int16_t beyond = 45;
        stack->SetCurRow(beyond);
        QCOMPARE(int(stack->CurRow), 20);
        ShowRows(stack, 8);
        QCOMPARE(int(stack->CurRow), 20);   // moves on the next call only
        QVERIFY(!stack->Label[9]->isVisible() && stack->Label[8]->isVisible());
        stack->SetCurRow(stack->CurRow);
        QCOMPARE(int(stack->CurRow), 8);
    }

    void theEmptyWindowTakesNoClicksAndItsPopupHasNoEntry()
    {
        frmStack* stack = OpenStack();
        bool enterEnabled = true;
        PopupMenuHandler previous = SetPopupMenuHandler([&](QMenu* menu) {
            QCOMPARE(menu, form->MenuOf("mnuPopupStack"));
            enterEnabled = form->Menu("mnuPopupStackEnter")->isEnabled();
        });
        QTest::mouseClick(stack->Label[4], Qt::RightButton);
        QVERIFY(enterEnabled);
        QCOMPARE(int(stack->CurRow), 4);

        stack->ClearScreen();
        QTest::mouseClick(stack->Label[3], Qt::LeftButton);
        QCOMPARE(int(stack->CurRow), 0);
        QTest::mouseClick(stack->Label[3], Qt::RightButton);
        QVERIFY(!enterEnabled);
        QCOMPARE(int(stack->CurRow), 0);
        QCOMPARE(Text(stack, 3), QString());
        SetPopupMenuHandler(previous);

        // The popup's Refresh Window ends the empty state.
        form->Menu("mnuPopupStackRefresh")->trigger();
        QCOMPARE(int(stack->CurRow), 1);
        QCOMPARE(Text(stack, 1), QString(" $00EC:   $EC"));
    }

    void aRunClearsTheMarksAndDeactivationTheHighlight()
    {
        frmStack* stack = OpenStack();
        form->FreezeDisplay();
        QVERIFY(!IsBold(stack, 20) && !IsBlue(stack, 20));
        QVERIFY(!stack->isEnabled());
        form->ThawDisplay();
        QVERIFY(stack->isEnabled());
        stack->mnuRefresh();
        QVERIFY(IsBold(stack, 20) && IsBlue(stack, 20));

        QWidget* cpu = form->LoadWindow("frmRegCPU");
        form->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(cpu->parentWidget()));
        QVERIFY(!IsBlue(stack, 20));
        QCOMPARE(int(stack->CurRow), 20);
        form->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(stack->parentWidget()));
        QVERIFY(IsBlue(stack, 20));
    }

    void aFailedReadEmptiesTheWindowAndKeepsTheViewAddress()
    {
        ScriptedMonitor board(*f);
        form = &f->Start();
        form->show();
        CpuRegisters.SP = 0x01FF;
        board.memory[0x01FF] = 0x3C;
        form->Menu("mnuViewStack")->trigger();
        auto* stack = qobject_cast<frmStack*>(form->Window("frmStack"));
        QVERIFY(stack->CurRow != 0);
        QCOMPARE(Text(stack, stack->CurRow), QString(" $01FF:   $3C"));
        const std::int32_t view = StackViewAddress;

        std::uint32_t now = 0;
        auto clock = SetTickCountSource([&] { return now += 50; });
        board.silent = true;
        QTest::keyClick(stack, Qt::Key_PageDown);
        SetTickCountSource(clock);
        QCOMPARE(f->boxes.boxes.size(), 1);
        QCOMPARE(int(stack->CurRow), 0);
        QCOMPARE(Text(stack, 1), QString());
        QCOMPARE(StackViewAddress, (view + stack->VisibleRows) & 0xFFFF);
        QVERIFY(!stack->PageBusy);
        // Keys do nothing while the window is empty.
        board.frames.clear();
        QTest::keyClick(stack, Qt::Key_PageDown);
        QVERIFY(board.frames.isEmpty());
    }
};

QTEST_MAIN(frmStackTest)
#include "frmStack_test.moc"
