// The peripheral and PIA register windows on the simulator and on hc11board:
// each opens from its View entry with its rows, word registers read high
// byte first, values typed in come back from the target, read-only rows
// refuse the dialog, one read of the register block serves all seven block
// windows, and the bits a step changed are marked until the next stop.
// With ORVANE_SCREENSHOT set to a folder, timer-sci-cpu.png is saved there.
#include <QtTest>

#include "core/BlockChanges.h"
#include "core/TargetState.h"
#include "platform/QtSerialDevice.h"
#include "platform/SettingsStore.h"
#include "support/BoardProcess.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "target/MonitorFrames.h"
#include "views/ChangedBitsDelegate.h"
#include "views/RegisterWindow.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTreeWidget>

namespace {
struct WindowCase {
    const char* entry;
    const char* window;
    const char* caption;
    QStringList names;
};

const WindowCase Windows[] = {
    {"mnuViewRegPorts", "frmRegPorts", "Port Registers",
     {"PORTA", "PORTB", "PORTC", "PORTCL", "DDRC", "PORTD", "DDRD", "PORTE", "PIOC"}},
    {"mnuViewRegTimer", "frmRegTimer", "Timer Registers",
     {"TCNT", "TIC1", "TIC2", "TIC3", "TOC1", "TOC2", "TOC3", "TOC4", "TOC5", "TCTL1", "TCTL2", "TMSK1", "TFLG1",
      "TMSK2", "TFLG2", "CFORC", "OC1M", "OC1D"}},
    {"mnuViewRegPulseAcc", "frmRegPA", "Pulse Acc Reg", {"PACNT", "PACTL"}},
    {"mnuViewRegSCI", "frmRegSCI", "SCI Registers", {"BAUD", "SCCR1", "SCCR2", "SCSR", "SCDR"}},
    {"mnuViewRegSPI", "frmRegSPI", "SPI Registers", {"SPCR", "SPSR", "SPDR"}},
    {"mnuViewRegAD", "frmRegAD", "A/D Registers", {"ADCTL", "ADR1", "ADR2", "ADR3", "ADR4"}},
    {"mnuViewRegOther", "frmRegOther", "Other Registers", {"OPTION", "PPROG", "HPRIO", "INIT", "CONFIG"}},
    {"mnuViewRegPIA", "frmRegPIA", "PIA Registers",
     {"DataIn A", "DataOut A", "Dir A", "DataIn B", "DataOut B", "Dir B"}},
};

// Rows that take no value: the hardware sets them, or no address takes one.
const QStringList ReadOnlyRows = {"PORTE", "TCNT", "TIC1", "TIC2", "TIC3", "SCSR", "SPSR", "ADR1",
                                  "ADR2",  "ADR3", "ADR4", "CONFIG", "DataIn A", "DataIn B"};

enum TimerRow { TCNT = 0, TOC1 = 4, TCTL1 = 9, TMSK1 = 11 };
enum SciRow { SCCR2 = 2, SCSR = 3 };

RegisterWindow* Open(frmMain& form, const WindowCase& w)
{
    form.Menu(w.entry)->trigger();
    return qobject_cast<RegisterWindow*>(form.Window(w.window));
}

QStringList Names(const RegisterWindow* w)
{
    QStringList names;
    for (int i = 0; i < w->ListView->topLevelItemCount(); ++i)
        names << w->ListView->topLevelItem(i)->text(0);
    return names;
}

std::uint32_t Marked(const RegisterWindow* w, int row)
{
    return w->ListView->topLevelItem(row)->data(1, ChangedBitsRole).toUInt();
}

// Every window opens with its caption and rows, and a value dialog opens on
// exactly the rows that take a value (each one cancelled).
void OpenEveryWindowAndTryEveryRow(frmMain& form)
{
    for (const WindowCase& w : Windows) {
        RegisterWindow* window = Open(form, w);
        QVERIFY2(window, w.window);
        QCOMPARE(window->windowTitle(), QString(w.caption));
        QCOMPARE(Names(window), w.names);
        QVERIFY2(window->ValueColumnWidth() > 0, w.window);
        QStringList offered;
        ModalPlayer player([&](QDialog& dialog) {
            offered << window->ListView->currentItem()->text(0);
            dialog.reject();
        });
        for (int row = 0; row < w.names.size(); ++row) {
            window->SelectRow(row);
            QTest::keyClick(window->ListView, Qt::Key_Return);
        }
        QStringList expected;
        for (const QString& name : w.names)
            if (!ReadOnlyRows.contains(name))
                expected << name;
        QCOMPARE(offered, expected);
    }
}

void EnterValue(RegisterWindow* w, int row, const QString& text)
{
    ModalPlayer player([&](QDialog& dialog) { TypeAndPressOK(dialog, "Text", text); });
    w->SelectRow(row);
    QTest::keyClick(w->ListView, Qt::Key_Return);
}

std::uint8_t TargetByte(frmMain& form, std::int32_t address)
{
    std::vector<std::uint8_t> bytes;
    form.InBytes(address, bytes, 1);
    return bytes.empty() ? 0 : bytes[0];
}

// The port to hc11board, keeping every byte the host sends.
class RecordingDevice : public SerialDevice {
public:
    RecordingDevice(const QString& path, QByteArray& sent) : inner_(path), sent_(sent)
    {
        inner_.DataArrived = [this] { if (DataArrived) DataArrived(); };
        inner_.LineLost = [this] { if (LineLost) LineLost(); };
    }
    bool Open(QString& error) override { return inner_.Open(error); }
    void Close() override { inner_.Close(); }
    QByteArray ReadAvailable() override { return inner_.ReadAvailable(); }
    void WaitForInput(std::chrono::milliseconds most) override { inner_.WaitForInput(most); }
    void Write(const QByteArray& bytes) override
    {
        sent_ += bytes;
        inner_.Write(bytes);
    }
    std::optional<bool> Cts() override { return inner_.Cts(); }

private:
    QtSerialDevice inner_;
    QByteArray& sent_;
};

frmMain& StartRecording(MainFormFixture& f, const QString& devicePath, QByteArray& sent)
{
    f.form = std::make_unique<frmMain>();
    f.form->MSComm.SetDeviceFactory([devicePath, &sent](int) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<RecordingDevice>(devicePath, sent);
    });
    f.form->MDIForm_Load();
    return *f.form;
}

int Reads(const QByteArray& sent, std::int32_t address, int count)
{
    return int(sent.count(monitor::ReadFrame(address, count)));
}
}  // namespace

class PeripheralRegistersTest : public QObject {
    Q_OBJECT
private slots:
    void simulator()
    {
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain& form = f.Start();
        TargetMemory[0x100E] = 0x12;   // TCNT
        TargetMemory[0x100F] = 0x34;
        TargetMemory[0x1016] = 0xAB;   // TOC1
        TargetMemory[0x1017] = 0xCD;
        OpenEveryWindowAndTryEveryRow(form);
        auto* timer = qobject_cast<RegisterWindow*>(form.Window("frmRegTimer"));
        QCOMPARE(timer->Cell(TCNT), QString("$1234"));
        QCOMPARE(timer->Cell(TOC1), QString("$ABCD"));
        QVERIFY(timer->ListView->topLevelItem(TCTL1)->toolTip(1).contains("OM2 OL2 OM3 OL3 OM4 OL4 OM5 OL5"));

        EnterValue(timer, TOC1, "$BEEF");
        QCOMPARE(TargetMemory[0x1016], 0xBE);
        QCOMPARE(TargetMemory[0x1017], 0xEF);
        QCOMPARE(timer->Cell(TOC1), QString("$BEEF"));
        auto* pia = qobject_cast<RegisterWindow*>(form.Window("frmRegPIA"));
        EnterValue(pia, 2, "$0F");   // Dir A
        QCOMPARE(TargetMemory[0x1806], 0x0F);
        QCOMPARE(pia->Cell(2), QString("%00001111"));
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    // What a step changed is marked at its stop; a value typed in between is
    // marked too, and the next step's stop is compared with this one.
    void bitsChangedSinceTheLastStopAreMarked()
    {
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain& form = f.Start();
        // LDAA #$40; STAA $1020 (TCTL1); NOP; NOP
        const std::uint8_t program[] = {0x86, 0x40, 0xB7, 0x10, 0x20, 0x01, 0x01};
        std::copy(std::begin(program), std::end(program), TargetMemory.begin() + 0x2000);
        CpuRegisters.PC = 0x2000;
        auto* timer = Open(form, Windows[1]);
        auto* pia = Open(form, Windows[7]);
        const auto markedRows = [](const RegisterWindow* w) {
            QList<int> rows;
            for (int i = 0; i < w->ListView->topLevelItemCount(); ++i)
                if (Marked(w, i))
                    rows << i;
            return rows;
        };
        form.mnuRunStepInto_Click();   // LDAA: no register changes
        QCOMPARE(markedRows(timer), QList<int>{});
        form.mnuRunStepInto_Click();   // STAA $1020
        QCOMPARE(markedRows(timer), QList<int>{TCTL1});
        QCOMPARE(Marked(timer, TCTL1), 0x40u);
        EnterValue(timer, TMSK1, "$01");
        EnterValue(timer, TOC1, "$0100");
        QCOMPARE(markedRows(timer), (QList<int>{TOC1, TCTL1, TMSK1}));
        QCOMPARE(Marked(timer, TOC1), 0x0100u);
        EnterValue(pia, 5, "$80");    // Dir B
        QCOMPARE(markedRows(pia), QList<int>{5});
        form.mnuRunStepInto_Click();   // NOP: only what was typed since the last stop
        QCOMPARE(markedRows(timer), (QList<int>{TOC1, TMSK1}));
        QCOMPARE(markedRows(pia), QList<int>{5});
        form.mnuRunStepInto_Click();   // NOP: nothing changed
        QCOMPARE(markedRows(timer), QList<int>{});
        QCOMPARE(markedRows(pia), QList<int>{});
    }

    void board()
    {
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        QByteArray sent;
        frmMain& form = StartRecording(f, emulator.DevicePath(), sent);
        QVERIFY(BoardConnected);
        OpenEveryWindowAndTryEveryRow(form);

        // The board's registers after reset, then values that come back from it.
        auto* timer = qobject_cast<RegisterWindow*>(form.Window("frmRegTimer"));
        auto* sci = qobject_cast<RegisterWindow*>(form.Window("frmRegSCI"));
        auto* pia = qobject_cast<RegisterWindow*>(form.Window("frmRegPIA"));
        QCOMPARE(timer->Cell(TOC1), QString("$FFFF"));
        QCOMPARE(sci->Cell(SCSR), QString("%11000000"));
        QCOMPARE(sci->Cell(SCCR2), QString("%00001100"));
        EnterValue(timer, TOC1, "$1234");
        QCOMPARE(TargetByte(form, 0x1016), 0x12);
        QCOMPARE(TargetByte(form, 0x1017), 0x34);
        QCOMPARE(timer->Cell(TOC1), QString("$1234"));
        EnterValue(timer, TCTL1, "%10100000");
        QCOMPARE(timer->Cell(TCTL1), QString("%10100000"));
        // The PIA's input register shows its pins: outputs driven, inputs pulled high.
        EnterValue(pia, 2, "$0F");    // Dir A
        EnterValue(pia, 1, "$05");    // DataOut A
        QCOMPARE(pia->Cell(0), QString("%11110101"));

        // One read of the block serves all seven windows; the PIA window reads its own.
        sent.clear();
        form.RefreshRun();
        QCOMPARE(Reads(sent, RegisterBlockAddress, RegisterBlockSize), 1);
        QCOMPARE(Reads(sent, PiaAddress, PiaSize), 1);
        for (const WindowCase& w : Windows)
            if (QString(w.window) != "frmRegPIA")
                form.Menu(w.entry)->trigger();   // closes it
        QCoreApplication::processEvents();
        sent.clear();
        form.RefreshRun();
        QCOMPARE(Reads(sent, RegisterBlockAddress, RegisterBlockSize), 0);
        QCOMPARE(Reads(sent, PiaAddress, PiaSize), 1);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void timerAndSciBesideTheCpuWindow()
    {
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain& form = f.Start();
        form.showNormal();
        form.resize(1000, 600);
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        // The timer counting, its compares set, the SCI as the monitor leaves it.
        for (const auto& [address, value] : {std::pair{0x100E, 0x12}, {0x100F, 0x34}, {0x1018, 0x27}, {0x1019, 0x10}}) {
            TargetMemory[address] = std::uint8_t(value);
        }
        for (std::int32_t address : {0x1016, 0x1017, 0x101A, 0x101B, 0x101C, 0x101D, 0x101E, 0x101F})
            TargetMemory[address] = 0xFF;
        TargetMemory[0x102D] = 0x0C;
        TargetMemory[0x102E] = 0xC0;
        // LDAA #$40; STAA TCTL1: the second step's change is marked.
        const std::uint8_t program[] = {0x86, 0x40, 0xB7, 0x10, 0x20, 0x01};
        std::copy(std::begin(program), std::end(program), TargetMemory.begin() + 0xE000);
        CpuRegisters.PC = 0xE000;
        form.Menu("mnuViewRegCPU")->trigger();
        auto* timer = Open(form, Windows[1]);
        auto* sci = Open(form, Windows[3]);
        QVERIFY(timer && sci);
        // Beside each other: the CPU window at its place, then the timer and the SCI.
        QWidget* cpuFrame = form.Window("frmRegCPU")->parentWidget();
        QWidget* timerFrame = timer->parentWidget();
        QWidget* sciFrame = sci->parentWidget();
        timerFrame->move(0, 0);
        sciFrame->move(timerFrame->geometry().right() + 1, 0);
        cpuFrame->move(sciFrame->geometry().right() + 1, 0);
        form.mnuRunStepInto_Click();
        form.mnuRunStepInto_Click();
        QCoreApplication::processEvents();
        QCOMPARE(timer->Cell(TCTL1), QString("%01000000"));
        QCOMPARE(Marked(timer, TCTL1), 0x40u);

        const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
        if (!folder.isEmpty() && !QTest::currentTestFailed())
            QVERIFY(form.grab().save(QDir(folder).filePath("timer-sci-cpu.png")));
    }
};

QTEST_MAIN(PeripheralRegistersTest)
#include "PeripheralRegisters_test.moc"
