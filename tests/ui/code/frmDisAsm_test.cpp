// The disassembly window on the real main window, in simulator mode.

#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "support/ui/DisAsmLooks.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ui/ShownWindow.h"

#include <QLabel>

class frmDisAsmTest : public QObject {
    Q_OBJECT
    std::unique_ptr<MainFormFixture> f;
    frmDisAsm* w = nullptr;

    void SetRows(int rows)
    {
        QWidget* frame = w->parentWidget();
        frame->resize(frame->width(), frame->height() - w->height() + rows * w->Label[1]->height() + 2);
        QCoreApplication::processEvents();
        QCOMPARE(w->VisibleRows, std::int16_t(rows));
    }

    // Through the Debug menu's dialog (help topic 191).
    void GoTo(std::int32_t address)
    {
        int context = 0;
        PlayDialogs([&] { f->form->Menu("mnuDebugGoToAddress")->trigger(); }, [&](QDialog& dialog) {
            context = dialog.property("HelpContextID").toInt();
            TypeAndPressOK(dialog, "txtAdr", "$" + QString::number(address, 16).toUpper());
        });
        QCOMPARE(tuple(context, w->TopAddress, w->CurRow), tuple(191, address, 1));
    }

private slots:
    void init()
    {
        f = std::make_unique<MainFormFixture>();
        QVERIFY(ShowAt(StartInSimulator(*f), {1000, 800}));
        BoardConnected = RunStopped = true;
        // LDS #$00FF; LDAA #5; DECA; BNE back to DECA; JSR $E010; BRA to itself; NOPs; RTS.
        std::int32_t at = 0xE000;
        for (int b : {0x8E, 0x00, 0xFF, 0x86, 0x05, 0x4A, 0x26, 0xFD, 0xBD, 0xE0, 0x10, 0x20, 0xFE, 0x01, 0x01, 0x01, 0x39})
            TargetMemory[at++] = std::uint8_t(b);
        CpuRegisters.PC = 0xE003;
        w = frmDisAsm::Open();
        SetRows(8);
        Activate(*f->form, w);
    }

    void cleanup() { f.reset(); }

    void coloursFollowTheCurrentRowBreakpointsAndActivation()
    {
        QCOMPARE(w->RowCaption(3), QString(" $E006: 26 FD            BNE   $E005"));
        QVERIFY(w->RowBold(1) && !w->RowBold(2));
        AddBreakpoint(0xE005);
        w->PageRedraw();
        w->Label_Click(2);
        QCOMPARE(tuple(LookOf(w, 1), LookOf(w, 2)), tuple(Look::Plain, Look::CurrentBreakpoint));
        auto* other = f->form->mdiArea()->addSubWindow(new QWidget);
        other->show();
        f->form->mdiArea()->setActiveSubWindow(other);
        QVERIFY(LookOf(w, 2) == Look::Breakpoint && !f->form->Menu("mnuDebugToggleBreakpoint")->isEnabled());
        w->Label_Click(3);   // inactive, a new current row gets no highlight
        QCOMPARE(LookOf(w, 3), Look::Plain);
        Activate(*f->form, w);
        QCOMPARE(LookOf(w, 3), Look::Current);

        const QImage shot = w->grab().toImage();
        const auto colourAt = [&](int row) {
            return shot.pixelColor(w->Label[row]->mapTo(w, QPoint(w->width() - 6, w->Label[row]->height() / 2)));
        };
        QCOMPARE((QList{colourAt(1), colourAt(2), colourAt(3)}),
                 (QList{frmDisAsm::PlainColour(), frmDisAsm::BreakpointColour, frmDisAsm::CurrentColour}));

        w->ClearMarks();   // before a run: no bold, no highlight, the breakpoint stays
        QCOMPARE(tuple(w->RowBold(1), LookOf(w, 3), LookOf(w, 2)), tuple(false, Look::Plain, Look::Breakpoint));
    }

    void keysMoveTheRowThenThePageAndWrapAtTheEndsOfMemory()
    {
        SetRows(4);
        QTest::keyClick(w, Qt::Key_Up);   // back over the 3-byte load above
        QCOMPARE(tuple(w->TopAddress, w->CurRow), tuple(0xE000, 1));
        for (int press = 0; press < 4; ++press)
            QTest::keyClick(w, Qt::Key_Down);   // the last press scrolls by one instruction
        QCOMPARE(tuple(w->TopAddress, w->CurRow, LookOf(w, 4)), tuple(0xE003, 4, Look::Current));
        SetRows(2);

        for (std::int32_t a = 0xFFF0; a <= 0xFFFF; ++a)
            TargetMemory[a] = 0x01;
        GoTo(0xFFFE);
        QTest::keyClick(w, Qt::Key_PageDown);
        QCOMPARE(tuple(w->TopAddress, w->RowCaption(2).left(8)), tuple(0xFFFF, " $0000: "));
        GoTo(0x0002);
        for (std::int32_t top : {0x0001, 0x0000, 0xFFFF, 0xFFFE}) {
            QTest::keyClick(w, Qt::Key_Up);
            QCOMPARE(w->TopAddress, top);
        }
        QTest::keyClick(w, Qt::Key_PageUp);
        QCOMPARE(tuple(w->TopAddress, w->RowCaption(2)), tuple(0xFFFD, " $FFFE: 01               NOP"));
    }

    void aFailedReadClearsTheScreenAndARefreshBringsItBack()
    {
        AddBreakpoint(0xE005);
        TargetMode = BoardMode;
        f->line.SetCTS(false);
        f->form->Menu("mnuDebugRefresh")->trigger();
        QVERIFY(!BoardConnected && !f->boxes.boxes.isEmpty() && w->CurRow == 0);
        for (int row = 1; row <= 50; ++row)
            QVERIFY(w->RowCaption(row).isEmpty() && LookOf(w, row) == Look::Plain);
        QCOMPARE(w->TopAddress, 0xE003);
        QTest::keyClick(w, Qt::Key_PageDown);   // without a page, keys and clicks do nothing
        w->Label_DblClick(2);
        QCOMPARE(tuple(w->CurRow, BreakpointCount), tuple(0, 1));

        TargetMode = SimulatorMode;
        ProgramBase = 0xE000;
        w->mnuRefresh();
        QCOMPARE(tuple(w->TopAddress, LookOf(w, 3), w->RowBold(2)), tuple(0xE000, Look::Breakpoint, true));
    }

    void breakpointsToggleClearAndStopAtAFullTable()
    {
        f->form->Menu("mnuDebugToggleBreakpoint")->trigger();
        QCOMPARE(BreakpointTable[0], 0xE003);
        w->Label_DblClick(4);
        f->form->Menu("mnuDebugClearAllBreakpoints")->trigger();   // repaints the rows of the table
        QCOMPARE(tuple(BreakpointCount, LookOf(w, 4), LookOf(w, 1)), tuple(0, Look::Current, Look::Plain));
        QVERIFY(!f->form->Menu("mnuDebugClearAllBreakpoints")->isEnabled());

        for (int i = 0; i < MaxBreakpoints; ++i)
            AddBreakpoint(0x3000 + i);
        w->Label_DblClick(5);
        QCOMPARE(f->boxes.Texts(), QStringList{"  Can't Set Breakpoint !\n (Max. Breakpoints = 32)"});
        QVERIFY(BreakpointCount == MaxBreakpoints && !HasBreakpoint(w->PageRows[4].RowAddress) && LookOf(w, 5) == Look::Plain);

        // Run to Cursor finds no room for its stop either: the same message (that nothing runs is the stepping test's).
        f->form->Menu("mnuRunRunTo")->trigger();
        QCOMPARE(f->boxes.Texts(), QStringList(2, f->boxes.boxes[0].text));
    }
};

QTEST_MAIN(frmDisAsmTest)
#include "frmDisAsm_test.moc"
