// The CPU and stack windows against the board emulator on a pseudo-terminal:
// a register and a stack byte changed through the value dialog reach the
// monitor, and the refresh shows what it answers.
#include <QtTest>

#include "code/frmStack.h"
#include "core/TargetState.h"
#include "support/BoardProcess.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "views/RegisterWindow.h"

#include <QLabel>

class RegisterWindowsOnBoardTest : public QObject {
    Q_OBJECT
private slots:
    void registerAndStackByteThroughTheMonitor()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        form.show();   // the default placements follow the shown client area
        form.Menu("mnuViewRegCPU")->trigger();
        auto* cpu = qobject_cast<RegisterWindow*>(form.Window("frmRegCPU"));
        QCOMPARE(cpu->Cell(6), QString("$00FF"));   // the monitor's stack after its reset

        {
            ModalPlayer player([](QDialog& dialog) { TypeAndPressOK(dialog, "Text", "$A55A"); });
            cpu->SelectRow(2);   // D: both accumulators
            cpu->mnuEnter();
        }
        QCOMPARE(cpu->Cell(0), QString("$A5"));
        QCOMPARE(cpu->Cell(1), QString("$5A"));
        std::int32_t address = 0x0000;
        std::vector<std::uint8_t> saved;
        form.InBytes(address, saved, 2);
        QCOMPARE(saved, (std::vector<std::uint8_t>{0xA5, 0x5A}));

        form.Menu("mnuViewStack")->trigger();
        auto* stack = qobject_cast<frmStack*>(form.Window("frmStack"));
        QVERIFY(stack->CurRow != 0);
        QCOMPARE(stack->Label[stack->CurRow]->text().left(7), QString(" $00FF:"));
        {
            ModalPlayer player([](QDialog& dialog) { TypeAndPressOK(dialog, "Text", "$C3"); });
            stack->mnuEnter();
        }
        QCOMPARE(stack->Label[stack->CurRow]->text(), QString(" $00FF:   $C3"));
        std::uint8_t byte = 0;
        address = 0x00FF;
        form.InByte(address, byte);
        QCOMPARE(byte, std::uint8_t(0xC3));
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(RegisterWindowsOnBoardTest)
#include "RegisterWindowsOnBoard_test.moc"
