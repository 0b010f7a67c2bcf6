#include "ui/code/frmAddress.h"
#include "engine/code/SymbolTable.h"
#include "ui/code/frmStack.h"
#include "engine/state/TargetState.h"
#include "platform/TickCount.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "support/ui/ShownWindow.h"
#include "ui/views/EntryFields.h"

#include <QLabel>

class frmStackTest : public QObject {
    Q_OBJECT
    std::unique_ptr<MainFormFixture> f;
    std::unique_ptr<ScriptedMonitor> board;
    frmStack* stack = nullptr;

    bool IsBlue(int row) const { return stack->Label[row]->palette().color(QPalette::Window) == QColor(0, 0, 255); }
    bool IsBold(int row) const { return stack->Label[row]->font().bold(); }
    QString Text(int row) const { return stack->Label[row]->text(); }

private slots:
    void init()
    {
        f = std::make_unique<MainFormFixture>();
        board = std::make_unique<ScriptedMonitor>(f->line);
        for (int i = 0; i < 65536; ++i)
            board->memory[i] = std::uint8_t(i ^ (i >> 8));
        f->Start().show();   // rows are laid out in a shown frame
        CpuRegisters.SP = 0x00FF;
        stack = OpenByMenu<frmStack>(*f->form, "mnuViewStack", "frmStack");
        QWidget* frame = stack->parentWidget();
        frame->resize(frame->width(), frame->height() - stack->height() + 20 * stack->RowHeight());
        QCOMPARE(int(stack->VisibleRows), 20);
        stack->ClearScreen();
        stack->mnuGoToSPAddress();
    }
    void cleanup() { f.reset(), board.reset(); }

    void aVisibleSPDoesNotMoveTheView()
    {
        QCOMPARE(StackViewAddress, 0x00EC);
        CpuRegisters.SP = 0x00F0;
        stack->mnuGoToSPAddress();
        QCOMPARE(tuple(StackViewAddress, stack->CurRow), tuple(0x00EC, 5));
        QVERIFY(IsBold(5) && !IsBold(20) && IsBlue(5) && !IsBlue(20));
        QWidget* cpu = f->form->LoadWindow("frmRegCPU");
        Activate(*f->form, cpu);
        QVERIFY(!IsBlue(5) && stack->CurRow == 5);
    }

    void anEnteredByteGoesToTheTargetAndTheRowShowsWhatIsReadBack()
    {
        board->Stored = [](std::int32_t, std::uint8_t written) { return std::uint8_t(written | 1); };
        QStringList seen;
        stack->Label_Click(18);
        PlayDialogs([&] { QTest::keyClick(stack, Qt::Key_Return); }, [&](QDialog& dialog) {
            seen << dialog.findChild<QLabel*>("Label")->text() << dialog.findChild<QLineEdit*>("Text")->text();
            TypeAndPressOK(dialog, "Text", "%01110110");
        });
        QCOMPARE(seen, (QStringList{"$00FD:", "$FD"}));
        QCOMPARE(tuple(board->Count('W'), board->memory[0x00FD], stack->CurRow), tuple(1, 0x77, 18));
        QCOMPARE(Text(18), QString(" $00FD:   $77"));
    }

    void goToAddressWrapsAndKeysMoveRowAndView()
    {
        ModalPlayer player([](QDialog& dialog) { TypeAndPressOK(dialog, "txtAdr", "$FFFF"); });
        stack->mnuGoToAddress();
        QCOMPARE(tuple(frmAddress::HelpContextID, stack->CurRow), tuple(192, 1));
        QCOMPARE(Text(1) + Text(2), QString(" $FFFF:   $00 $0000:   $00"));

        QTest::keyClick(stack, Qt::Key_Down);
        QCOMPARE(tuple(stack->CurRow, IsBlue(2), IsBlue(1)), tuple(2, true, false));
        QTest::keyClick(stack, Qt::Key_Up);
        QTest::keyClick(stack, Qt::Key_Up);   // at row 1 the view moves
        QCOMPARE(tuple(StackViewAddress, Text(1)), tuple(0xFFFE, " $FFFE:   $01"));
        StackViewAddress = 0x0005;
        stack->mnuRefresh();
        QTest::keyClick(stack, Qt::Key_PageUp);
        QCOMPARE(tuple(StackViewAddress, Text(20)), tuple(0xFFF1, " $0004:   $04"));
    }

    void theAddressDialogTakesNumbersBeforeSymbolsAndRefusesBadText()
    {
        SymbolTable = {{0x0010, 0, {}, "START", ""}, {0x2000, 0, {}, "start", ""},   // lower case: never found
                       {0x5555, 0, {}, "1234", ""}};   // reads as a number: never looked up
        SymbolCount = 3;
        QCOMPARE(tuple(AddressFromText("1234"), AddressFromText("NOWHERE")), tuple(1234, -1));
        QList<bool> openAfter;
        PlayDialogs([&] { stack->mnuGoToAddress(); }, [&](QDialog& dialog) {
            auto* box = dialog.findChild<QLineEdit*>("txtAdr");
            for (const char* text : {"", "$10000"}) {
                TypeAndPressOK(dialog, "txtAdr", text);
                openAfter << dialog.isVisible() << box->text().isEmpty();
            }
            QTest::keyClicks(box, "Start");
            QTest::keyClick(box, Qt::Key_Return);
        });
        QCOMPARE(openAfter, QList<bool>(4, true));
        QCOMPARE(f->boxes.Texts(), QStringList{"Invalid Address !"});
        QCOMPARE(Text(1), QString(" $0010:   $10"));
        ModalPlayer escape([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        stack->mnuGoToAddress();
        QCOMPARE(tuple(Text(1), EntryAccepted), tuple(" $0010:   $10", false));
    }

    void aFailedReadEmptiesTheWindowAndKeepsTheViewAddress()
    {
        std::uint32_t now = 0;
        const auto clock = SetTickCountSource([&] { return now += 50; });
        board->silent = true;
        QTest::keyClick(stack, Qt::Key_PageDown);
        SetTickCountSource(clock);
        QCOMPARE(tuple(f->boxes.boxes.size(), stack->CurRow, Text(1)), tuple(1, 0, ""));
        QCOMPARE(tuple(StackViewAddress, stack->PageBusy), tuple(0x0100, false));
        board->frames.clear();   // keys and clicks do nothing while the window is empty
        QTest::keyClick(stack, Qt::Key_PageDown);
        QTest::mouseClick(stack->Label[3], Qt::LeftButton);
        QVERIFY(board->frames.isEmpty() && stack->CurRow == 0);
    }
};

QTEST_MAIN(frmStackTest)
#include "frmStack_test.moc"
