// The two device windows from end to end: the LED counter example in the
// simulator with the input-output unit, and the serial echo example on
// hc11board with the terminal. With ORVANE_SCREENSHOT set to a folder,
// io-unit.png and serial-terminal.png are saved there.

#include "support/TerminalRows.h"

#include "engine/state/AppSettings.h"
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/widgets/PopupMenu.h"
#include "hc11/asm/Assembler.h"
#include "support/BoardProcess.h"
#include "support/ChipHarness.h"
#include "support/ui/DownloadFile.h"
#include "support/ui/MainFormFixture.h"
#include "support/RecordedIoUnit.h"
#include "support/ui/ShownWindow.h"
#include "ui/devices/frmIOBOard.h"
#include "ui/devices/frmSerial.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {
QByteArray Example(const QString& name)
{
    QFile file(QFINDTESTDATA(QStringLiteral("../../../examples/") + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Lit(QLabel* lamp)
{
    return lamp->palette().color(QPalette::Window) == QColor(255, 0, 0);
}

QString Leds(frmIOBOard* unit)
{
    QString lit;
    for (QLabel* led : unit->ShapeLed)
        lit += Lit(led) ? '1' : '0';
    return lit;
}

}  // namespace

class DeviceWindowsTest : public QObject {
    Q_OBJECT
private slots:
    // The LED counter counts during Play, and restarts from an entered value. The unit shows only
    // what happens while it is open (the events are the simulator operations' test's, the formats
    // the unit's own test's).
    void ledCounterOnTheUnit()
    {
        QByteArray source = Example("ledcount.asm");
        QVERIFY(!source.isEmpty());
        source.replace("DELAY   EQU     200", "DELAY   EQU     20");
        MainFormFixture f;
        frmMain& form = StartInSimulator(f);
        QVERIFY(ShowAt(form, {900, 600}));
        QVERIFY(AssembleInto(TargetMemory, source.toStdString()).isEmpty());
        CpuRegisters.PC = 0xE000;
        TargetMemory[0x6000] = 1;
        auto* unit = OpenByMenu<frmIOBOard>(form, "mnuViewIOunit", "frmIOBOard");
        QVERIFY(unit && form.Link().IoUnitWindow == unit);
        QVERIFY(!Lit(unit->ShapeInFresh));   // a flag left in memory is not shown
        TargetMemory[0x6000] = 0;            // and the program starts without input
        std::int32_t address = 0x6003;       // a host write, as from the memory window
        form.Link().OutByte(address, 0x0F);
        QCOMPARE(unit->TextOutBinary->text(), QString("00001111"));
        unit->TextIn->setText("999");
        unit->CommandInput->click();
        QCOMPARE(f.boxes.boxes.value(0).text, QString("Wrong data format or Value out of range"));
        unit->CheckLEDPower->click();
        unit->ComboFormatOut->setCurrentText("Unsigned");
        emit unit->ComboFormatOut->textActivated("Unsigned");

        RecordedIoUnit recorder;   // every byte the program writes to the unit, on its way to the window
        recorder.window = unit;
        form.Link().IoUnitWindow = &recorder;
        bool entered = false;
        SetDoEventsHook([&] {
            if (!entered && recorder.written.size() >= 5) {
                unit->ComboFormatIn->setCurrentText("Unsigned");
                emit unit->ComboFormatIn->textActivated("Unsigned");
                unit->TextIn->setText("200");
                unit->CommandInput->click();
                entered = true;
            }
            const qsizetype restart = recorder.written.indexOf(200);
            if (entered && restart >= 0 && recorder.written.size() > restart + 2)
                form.Menu("mnuRunPause")->trigger();
            QCoreApplication::processEvents();
        });
        form.mnuRunPlay_Click();
        SetDoEventsHook({});
        form.Link().IoUnitWindow = unit;
        QVERIFY2(entered, qPrintable(QString("PC %1").arg(CpuRegisters.PC, 0, 16)));
        QVERIFY(!Lit(unit->ShapeInFresh));   // the program has read the value
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(0));
        // The counter went 0, 1, 2 ... then on from the entered value (and round past 255).
        const QList<int>& w = recorder.written;
        const qsizetype restart = w.indexOf(200);
        QVERIFY(restart >= 5);
        for (qsizetype i = 0; i < w.size(); ++i)
            QCOMPARE(w[i], int(i < restart ? i : 200 + i - restart) & 0xFF);
        QCOMPARE(unit->TextOut->text(), QString(" %1").arg(w.last()));
        QCOMPARE(Leds(unit), QString::number(w.last(), 2).rightJustified(8, QLatin1Char('0')));
        SaveScreenshot(&form, "io-unit.png");
        unit->CommandClose->click();
        QCoreApplication::processEvents();
        QVERIFY(!form.Menu("mnuViewIOunit")->isChecked() && !form.Link().IoUnitWindow);
    }

    // The echo example on the board: what is typed comes back into the
    // terminal, in Ascii and in Hex, until the reset report ends the run.
    void echoOnTheBoard()
    {
        const auto assembled = hc11::as11::AssembleSource(Example("echo.asm").toStdString(), "echo");
        QVERIFY(assembled.errors.empty());
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(emulator.DevicePath());
        QVERIFY(ShowAt(form, {900, 600}));
        DownloadFile(form, QByteArray::fromStdString(assembled.s19));
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));

        auto* terminal = OpenByMenu<frmSerial>(form, "mnuViewSerialTerminal", "frmSerial");
        QVERIFY(terminal);
        Activate(form, terminal);
        form.mnuRunRun_Click();
        QVERIFY(BoardRunning);
        QTRY_COMPARE(terminal->RichText->toPlainText(), QString("Echo ready\n"));

        QTest::keyClicks(terminal->RichText, "hi");
        QTest::keyClick(terminal->RichText, Qt::Key_Return);
        // The carriage return comes back with a line feed, and the line feed
        // sent behind it comes back too.
        QTRY_COMPARE(terminal->RichText->toPlainText(), QString("Echo ready\nhi\n\n"));
        QCOMPARE(terminal->RichText->textCursor().position(), terminal->Screen().Caret());
        SaveScreenshot(&form, "serial-terminal.png");

        // A click leaves the writing position where it was.
        const int caret = terminal->RichText->textCursor().position();
        QTest::mouseClick(terminal->RichText->viewport(), Qt::LeftButton, {}, QPoint(3, 3));
        QCOMPARE(terminal->RichText->textCursor().position(), caret);

        // Hex from the popup: the screen is cleared and the echo shows in hex.
        SetPopupMenuHandler([&](QMenu* menu) {
            QCOMPARE(menu, form.MenuOf("mnuPopupSerial"));
            form.Menu("mnuPopupSerialHex")->trigger();
        });
        QTest::mouseClick(terminal->RichText->viewport(), Qt::RightButton, {}, QPoint(5, 5));
        SetPopupMenuHandler({});
        QVERIFY(form.Menu("mnuPopupSerialHex")->isChecked() && !form.Menu("mnuPopupSerialAscii")->isChecked());
        QCOMPARE(terminal->RichText->toPlainText(), QString());
        QTest::keyClicks(terminal->RichText, "A~");
        QTRY_COMPARE(terminal->RichText->toPlainText(), HexRow("41 7E", "A~"));

        // The reset report ends the run, its first three bytes shown as user
        // output (the PC from the vector is the board link test's); then keys send nothing.
        emulator.Reset();
        QTRY_VERIFY(!BoardRunning);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QTRY_COMPARE(terminal->RichText->toPlainText(), HexRow("41 7E 0D 0A 3E", "A~..>"));
        const QString shown = terminal->RichText->toPlainText();
        QTest::keyClicks(terminal->RichText, "zz");
        TargetByte(form, 0x0100);   // the monitor still answers frames cleanly
        QVERIFY(BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(terminal->RichText->toPlainText(), shown);

        // Closed, the terminal takes nothing; the Hex mark is remembered.
        form.Menu("mnuViewSerialTerminal")->trigger();
        QCoreApplication::processEvents();
        QVERIFY(!form.IsOpen("frmSerial") && !form.SerialTerminalDisplay);
        form.MDIForm_Unload();
        QVERIFY(GetFlagSetting("HexTerminal", false));
    }
};

QTEST_MAIN(DeviceWindowsTest)
#include "DeviceWindows_test.moc"
