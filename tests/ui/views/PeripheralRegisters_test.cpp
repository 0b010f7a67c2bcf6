// The peripheral and PIA register windows on hc11board and the simulator:
// each opens from its View entry, one read of the register block serves all
// seven block windows, and the bits a step changed are marked until the next
// stop. The board's registers are those of a reset.
// With ORVANE_SCREENSHOT set to a folder, timer-sci-cpu.png is saved there.

#include "engine/state/TargetState.h"
#include "support/BoardProcess.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "support/ui/ShownWindow.h"
#include "engine/link/MonitorFrames.h"
#include "ui/views/ChangedBitsDelegate.h"
#include "ui/views/RegisterWindow.h"

#include <QTreeWidget>

namespace {
struct WindowCase {
    const char* entry;
    const char* window;
};

const WindowCase Windows[] = {
    {"mnuViewRegPorts", "frmRegPorts"}, {"mnuViewRegTimer", "frmRegTimer"}, {"mnuViewRegPulseAcc", "frmRegPA"},
    {"mnuViewRegSCI", "frmRegSCI"},     {"mnuViewRegSPI", "frmRegSPI"},     {"mnuViewRegAD", "frmRegAD"},
    {"mnuViewRegOther", "frmRegOther"}, {"mnuViewRegPIA", "frmRegPIA"},
};

enum TimerRow { TOC1 = 4, TCTL1 = 9, TMSK1 = 11 };
enum SciRow { SCCR2 = 2, SCSR = 3 };

std::uint32_t Marked(const RegisterWindow* w, int row)
{
    return w->ListView->topLevelItem(row)->data(1, ChangedBitsRole).toUInt();
}
}  // namespace

class PeripheralRegistersTest : public QObject {
    Q_OBJECT
private slots:
    // What a step changed is marked, bit by bit, at its stop; a value typed
    // in between is marked too, until the next step.
    void bitsChangedSinceTheLastStopAreMarked()
    {
        MainFormFixture f;
        frmMain& form = StartInSimulator(f);
        QVERIFY(ShowAt(form, {1000, 600}));
        // LDAA #$40; STAA TCTL1; NOP; NOP
        const std::uint8_t program[] = {0x86, 0x40, 0xB7, 0x10, 0x20, 0x01, 0x01};
        std::copy(std::begin(program), std::end(program), TargetMemory.begin() + 0xE000);
        std::fill_n(TargetMemory.begin() + 0x1016, 10, 0xFF);   // TOC1 to TOC5
        TargetMemory[0x102D] = 0x0C;                             // SCCR2 and SCSR as the monitor leaves them
        TargetMemory[0x102E] = 0xC0;
        CpuRegisters.PC = 0xE000;
        auto* timer = OpenByMenu<RegisterWindow>(form, Windows[1].entry, Windows[1].window);
        auto* sci = OpenByMenu<RegisterWindow>(form, Windows[3].entry, Windows[3].window);
        form.Menu("mnuViewRegCPU")->trigger();
        const auto markedRows = [timer] {
            QList<int> rows;
            for (int i = 0; i < timer->ListView->topLevelItemCount(); ++i)
                if (Marked(timer, i))
                    rows << i;
            return rows;
        };
        form.mnuRunStepInto_Click();   // LDAA: no register changes
        QCOMPARE(markedRows(), QList<int>{});
        form.mnuRunStepInto_Click();   // STAA TCTL1
        QCOMPARE(markedRows(), QList<int>{TCTL1});
        QCOMPARE(Marked(timer, TCTL1), 0x40u);

        // The timer and SCI windows beside the CPU window, as the screenshot shows them.
        timer->parentWidget()->move(0, 0);
        sci->parentWidget()->move(timer->parentWidget()->geometry().right() + 1, 0);
        form.Window("frmRegCPU")->parentWidget()->move(sci->parentWidget()->geometry().right() + 1, 0);
        QCoreApplication::processEvents();
        SaveScreenshot(&form, "timer-sci-cpu.png");

        EnterValue(timer, TMSK1, "$01");
        EnterValue(timer, TOC1, "$FEFF");
        QCOMPARE(markedRows(), (QList<int>{TOC1, TCTL1, TMSK1}));
        QCOMPARE(Marked(timer, TOC1), 0x0100u);
        form.mnuRunStepInto_Click();   // NOP: what was typed is no change of this step
        QCOMPARE(markedRows(), QList<int>{});
    }

    void board()
    {
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(emulator.DevicePath());
        // The registers as a reset leaves them: TOC2 untouched, the SCI idle, the PIA's pins high.
        auto* timer = OpenByMenu<RegisterWindow>(form, Windows[1].entry, Windows[1].window);
        auto* sci = OpenByMenu<RegisterWindow>(form, Windows[3].entry, Windows[3].window);
        auto* pia = OpenByMenu<RegisterWindow>(form, Windows[7].entry, Windows[7].window);
        QCOMPARE(timer->Cell(TOC1 + 1), QString("$FFFF"));
        QCOMPARE(sci->Cell(SCSR), QString("%11000000"));
        QCOMPARE(sci->Cell(SCCR2), QString("%00001100"));
        QCOMPARE(pia->Cell(0), QString("%11111111"));
        // An output bit drives its pin; an input stays pulled high.
        EnterValue(pia, 2, "$0F");    // Dir A
        EnterValue(pia, 1, "$05");    // DataOut A
        QCOMPARE(pia->Cell(0), QString("%11110101"));
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    // Every window opens from its entry with values; one read of the block serves all seven, and the
    // PIA window reads its own. Which rows refuse the value dialog is the row table's readOnly flag;
    // frmRegCPU_test checks that the window honours it.
    void oneReadServesTheBlockWindows()
    {
        MainFormFixture f;
        ScriptedMonitor board(f.line);
        frmMain& form = f.Start();
        for (const WindowCase& w : Windows) {
            RegisterWindow* window = OpenByMenu<RegisterWindow>(form, w.entry, w.window);
            QVERIFY2(window && window->ValueColumnWidth() > 0, w.window);
        }
        auto* timer = qobject_cast<RegisterWindow*>(form.Window("frmRegTimer"));
        QVERIFY(timer->ListView->topLevelItem(TCTL1)->toolTip(1).contains("OM2 OL2 OM3 OL3 OM4 OL4 OM5 OL5"));
        const auto readsOfARefresh = [&] {   // of the register block, of the PIA
            board.frames.clear();
            form.RefreshRun();
            return tuple(int(board.frames.count(monitor::ReadFrame(RegisterBlockAddress, RegisterBlockSize))),
                         int(board.frames.count(monitor::ReadFrame(PiaAddress, PiaSize))));
        };
        QCOMPARE(readsOfARefresh(), tuple(1, 1));
        for (const WindowCase& w : Windows)
            if (QString(w.window) != "frmRegPIA")
                form.Menu(w.entry)->trigger();   // closes it
        QCOMPARE(readsOfARefresh(), tuple(0, 1));
    }
};

QTEST_MAIN(PeripheralRegistersTest)
#include "PeripheralRegisters_test.moc"
