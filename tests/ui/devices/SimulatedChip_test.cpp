// The main window on the simulated chip: the example echo program answers
// in the serial terminal during Run, Pause gives the windows back where it
// stopped, the IO unit's IRQ and XIRQ buttons hold the pins, the A/D and
// ports windows set the input levels, and the SPI window's device answers. With ORVANE_SCREENSHOT set to a folder,
// simulator-run.png (the terminal and the timer window during a run) is
// saved there.
#include "engine/state/TargetState.h"
#include "support/ChipHarness.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ui/ShownWindow.h"
#include "ui/devices/frmIOBOard.h"
#include "ui/devices/frmSerial.h"
#include "ui/views/RegisterWindow.h"

#include <QPlainTextEdit>

class SimulatedChipTest : public QObject {
    Q_OBJECT
private slots:
    void echoRunsUntilPauseAndTheUnitAndAdWindowReachTheChip()
    {
        MainFormFixture f;
        frmMain& form = StartInSimulator(f, true);
        QVERIFY(SimulatePeripherals && form.Menu("mnuRunRun")->isEnabled() == false);
        QVERIFY(ShowAt(form, {1000, 640}));
        QVERIFY(AssembleExampleInto(TargetMemory, "echo.asm"));
        CpuRegisters.PC = 0xE000;
        form.Menu("mnuViewDisassembler")->trigger();
        form.Menu("mnuViewRegTimer")->trigger();
        auto* terminal = OpenByMenu<frmSerial>(form, "mnuViewSerialTerminal", "frmSerial");
        Activate(form, terminal);

        form.Menu("mnuRunRun")->trigger();
        QVERIFY(BoardRunning && form.Menu("mnuRunPause")->isEnabled());
        QCOMPARE(form.PanelText(1), QString("Simulator: Running ..."));
        QTRY_COMPARE(terminal->RichText->toPlainText(), QString("Echo ready\n"));
        QTest::keyClicks(terminal->RichText, "hi");
        QTest::keyClick(terminal->RichText, Qt::Key_Return);
        // Return sends CR and LF: the CR comes back with a line feed, the LF as itself.
        QTRY_COMPARE(terminal->RichText->toPlainText(), QString("Echo ready\nhi\n\n"));
        // The clock panel and the timer window follow the run.
        QTRY_VERIFY(form.PanelText(4) != QString("Clock= 00000000"));
        auto* timer = qobject_cast<RegisterWindow*>(form.Window("frmRegTimer"));
        QTRY_VERIFY(timer->Cell(0) != QString("$0000"));
        timer->parentWidget()->move(0, 0);
        const QRect beside = timer->parentWidget()->geometry();
        terminal->parentWidget()->setGeometry(beside.right() + 1, 0, 560, beside.height());
        QCoreApplication::processEvents();
        SaveScreenshot(&form, "simulator-run.png");

        form.Menu("mnuRunPause")->trigger();
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(form.Menu("mnuRunStepInto")->isEnabled() && !form.Menu("mnuRunPause")->isEnabled());

        // Get Reset Vector resets the chip: the SCI the program set up is off again.
        QCOMPARE(TargetByte(form, 0x102D), std::uint8_t(0x0C));
        form.Menu("mnuDebugGetResVec")->trigger();
        QCOMPARE(TargetByte(form, 0x102D), std::uint8_t(0));
        QCOMPARE(CpuRegisters.PC, 0xE000);

        // The unit's interrupt buttons hold the pins while it is open; the A/D window sets the input levels.
        auto* unit = OpenByMenu<frmIOBOard>(form, "mnuViewIOunit", "frmIOBOard");
        QVERIFY(unit && unit->CommandIrq->isEnabled());
        const hc11::chip::Chip& chip = form.Link().ChipSim.Chip();
        unit->CommandXirq->click();
        QVERIFY(!chip.Inputs().irqAsserted && chip.Inputs().xirqAsserted);
        unit->CommandClose->click();   // the unit goes: its button no longer holds XIRQ low
        QTRY_VERIFY(!form.Window("frmIOBOard"));
        QVERIFY(!chip.Inputs().xirqAsserted);

        auto* ad = OpenByMenu<RegisterWindow>(form, "mnuViewRegAD", "frmRegAD");
        constexpr int Pe3Level = 8;
        EnterValue(ad, Pe3Level, "$A5");
        QCOMPARE(chip.Inputs().analog[3], std::uint8_t(0xA5));
        QCOMPARE(ad->Cell(Pe3Level), QString("$A5"));

        // The ports window's input rows drive the pins the program reads: port C, then a
        // rising edge on STRA (PIOC's EGA at reset) latches it into PORTCL with STAF.
        auto* ports = OpenByMenu<RegisterWindow>(form, "mnuViewRegPorts", "frmRegPorts");
        constexpr int PortC = 2, PortCL = 3, Pioc = 8, PcInputs = 10, StraInput = 12;
        EnterValue(ports, PcInputs, "$5A");
        EnterValue(ports, StraInput, "0");
        QCOMPARE(tuple(ports->Cell(PortC), ports->Cell(PortCL)), tuple("%01011010", "%00000000"));
        EnterValue(ports, StraInput, "1");
        QCOMPARE(tuple(ports->Cell(PortCL), ports->Cell(Pioc)), tuple("%01011010", "%10000011"));

        // The SPI window's device answers the example's transfer and shows the byte it got.
        QVERIFY(AssembleExampleInto(TargetMemory, "spi.asm"));
        auto* spi = OpenByMenu<RegisterWindow>(form, "mnuViewRegSPI", "frmRegSPI");
        constexpr int SpiAnswer = 3, SpiSent = 4;
        EnterValue(spi, SpiAnswer, "$3C");
        TargetMemory[0x6001] = 0xA5, TargetMemory[0x6000] = 1;   // a value entered on the unit
        ChipSimulator& sim = form.Link().ChipSim;
        CpuRegisters.PC = 0xE000;
        sim.LoadRegisters(CpuRegisters);
        sim.RunUntil(sim.Chip().Cycles() + 1000, {}, false);
        spi->mnuRefresh();
        QCOMPARE(tuple(int(TargetMemory[0x6003]), spi->Cell(SpiSent)), tuple(0x3C, "$A5"));
    }
};

QTEST_MAIN(SimulatedChipTest)
#include "SimulatedChip_test.moc"
