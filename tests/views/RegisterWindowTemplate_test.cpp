// The template as a block window uses it: a 16-bit row written in one write,
// and the auto-refresh timer across the dialog, activation and a lost link.
#include <QtTest>

#include "core/TargetState.h"
#include "platform/TickCount.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "support/ScriptedMonitor.h"
#include "views/RegisterWindow.h"
#include "workspace/ToolWindows.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTreeWidget>

namespace {
const RegisterRow PortRows[] = {
    {.name = "TOC1", .address = 0x1016, .isWord = true},
    {.name = "PORTE", .address = 0x100A, .format = '%', .readOnly = true},
    {.name = "PACNT", .address = 0x1027},
};
const RegisterWindowKind PortsKind = {
    "Port Registers", "RegPorts", "mnuViewRegPorts", PortRows, true, &ReadRegisterBlockSource, &RegisterBlockValue,
};
// The window under test in the place of the port window.
struct PluggedPorts {
    toolwindows::Factory previous =
        toolwindows::SetFactory("frmRegPorts", [](frmMain&) -> QWidget* { return new RegisterWindow(PortsKind); });
    ~PluggedPorts() { toolwindows::SetFactory("frmRegPorts", previous); }
};

void Activate(frmMain& form, QWidget* window)
{
    form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
}
}  // namespace

class RegisterWindowTemplateTest : public QObject {
    Q_OBJECT
private slots:
    void rowsWritesAndAutoRefreshUntilTheLinkIsLost()
    {
        PluggedPorts plugged;
        MainFormFixture f;
        ScriptedMonitor board(f);
        board.memory[0x1016] = 0x12;
        board.memory[0x1017] = 0x34;
        board.memory[0x100A] = 0x81;
        frmMain& form = f.Start();
        auto* ports = qobject_cast<RegisterWindow*>(form.LoadWindow("frmRegPorts"));
        QCOMPARE(ports->Cell(0), QString("$1234"));
        QCOMPARE(ports->Cell(1), QString("%10000001"));

        // One write, high byte first, then one read of the block for the redraw.
        board.frames.clear();
        {
            ModalPlayer player([&](QDialog& dialog) { TypeAndPressOK(dialog, "Text", "$BEEF"); });
            ports->SelectRow(0);
            ports->mnuEnter();
        }
        QCOMPARE(board.Count('W'), 1);
        QCOMPARE(board.frames[0].mid(0, 6), QByteArray::fromHex("57101602BEEF"));
        QCOMPARE(board.Count('R'), 1);
        QCOMPARE(ports->Cell(0), QString("$BEEF"));

        QWidget* cpu = form.LoadWindow("frmRegCPU");
        Activate(form, ports);
        ports->mnuAutoRefresh();
        QVERIFY(form.tmrRefresh.isActive());
        QCOMPARE(form.tmrRefresh.interval(), 100);
        // A tick refreshes the active window from the target, but not while anything runs.
        board.memory[0x1027] = 0x42;
        for (bool* running : {&BoardRunning, &PlayActive, &AnimateActive}) {
            *running = true;
            form.tmrRefresh_Timer();
            *running = false;
        }
        QCOMPARE(ports->Cell(2), QString("$00"));
        form.tmrRefresh_Timer();
        QCOMPARE(ports->Cell(2), QString("$42"));

        // Off while the dialog is up; a cancelled dialog writes nothing.
        bool timerDuringDialog = true;
        {
            ModalPlayer player([&](QDialog&) { timerDuringDialog = form.tmrRefresh.isActive(); });
            ports->SelectRow(2);
            ports->mnuEnter();
        }
        QVERIFY(!timerDuringDialog);
        QCOMPARE(board.Count('W'), 1);
        QVERIFY(form.tmrRefresh.isActive());

        Activate(form, cpu);
        QVERIFY(!form.tmrRefresh.isActive());
        Activate(form, ports);
        QVERIFY(form.tmrRefresh.isActive());

        // A lost link clears the window and ends auto refresh for good.
        std::uint32_t now = 0;
        const auto clock = SetTickCountSource([&] { return now += 50; });
        board.silent = true;
        form.tmrRefresh_Timer();
        SetTickCountSource(clock);
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(ports->ValueColumnWidth(), 0);
        QVERIFY(!ports->AutoRefresh);
        QVERIFY(!form.tmrRefresh.isActive());
        board.silent = false;
        ports->mnuRefresh();
        QVERIFY(ports->ValueColumnWidth() > 0);
        QVERIFY(!form.tmrRefresh.isActive());
    }
};

QTEST_MAIN(RegisterWindowTemplateTest)
#include "RegisterWindowTemplate_test.moc"
