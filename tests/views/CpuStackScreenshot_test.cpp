// The CPU and stack windows at their default places after a load into the
// simulator. With ORVANE_SCREENSHOT set to a folder, cpu-stack.png is saved there.
#include <QtTest>

#include "code/frmStack.h"
#include "core/TargetState.h"
#include "source/hc11/Assembler.h"
#include "support/MainFormFixture.h"
#include "support/S19Image.h"
#include "views/RegisterWindow.h"

#include <QLabel>
#include <QTreeWidget>

namespace {
const char* const Program = R"(        ORG  $E000
START   LDS  #$00FF
        LDAA #$12
        LDX  #$1234
        JSR  SUB
        BRA  START
SUB     PSHA
        RTS
        ORG  $FFFE
        FDB  START
)";
}  // namespace

class CpuStackScreenshotTest : public QObject {
    Q_OBJECT
private slots:
    void cpuAndStackWindowsAfterALoad()
    {
        const asmtest::S19Image image = asmtest::ReadS19(hc11::as11::AssembleSource(Program, "SUB").s19);
        QVERIFY(image.problem.empty());
        MainFormFixture f;
        frmMain& form = f.Start();
        form.showNormal();
        form.resize(1000, 560);
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        TargetMode = SimulatorMode;
        for (const auto& [address, byte] : image.bytes)
            TargetMemory[address] = byte;
        // Stopped after the PSHA in SUB: the return address and A lie on the stack.
        const std::uint8_t saved[] = {0x12, 0x00, 0x12, 0x34, 0x00, 0x00, 0x00, 0xFC, 0xC4};
        std::copy(std::begin(saved), std::end(saved), TargetMemory.begin());
        TargetMemory[0x00FD] = 0x12;
        TargetMemory[0x00FE] = 0xE0;
        TargetMemory[0x00FF] = 0x0B;
        CpuRegisters.PC = 0xE00E;
        form.InCPU();

        form.Menu("mnuViewRegCPU")->trigger();
        form.Menu("mnuViewStack")->trigger();
        auto* cpu = qobject_cast<RegisterWindow*>(form.Window("frmRegCPU"));
        auto* stack = qobject_cast<frmStack*>(form.Window("frmStack"));
        QVERIFY(cpu && stack);
        QCoreApplication::processEvents();

        // Every row is in sight, and no value is cut by the window's edge.
        const QRect view = cpu->ListView->viewport()->rect();
        QVERIFY(view.contains(cpu->ListView->visualItemRect(cpu->ListView->topLevelItem(7))));
        QVERIFY(cpu->ListView->columnWidth(0) + cpu->ValueColumnWidth() <= view.width());
        QCOMPARE(cpu->Cell(7), QString("%SX000Z00"));
        QCOMPARE(cpu->Cell(5), QString("$E00E"));

        QVERIFY(stack->VisibleRows > 3);
        QCOMPARE(stack->Label[stack->VisibleRows]->text(), QString(" $00FC:   $00"));
        QVERIFY(stack->Label[stack->VisibleRows]->font().bold() && stack->Label[stack->VisibleRows]->isVisible());
        // The pushed bytes lie below SP and come into view by scrolling down.
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(stack, Qt::Key_Down);
        const int spRow = stack->VisibleRows - 3;
        QVERIFY(stack->Label[spRow]->font().bold());
        QCOMPARE(stack->Label[spRow + 1]->text(), QString(" $00FD:   $12"));
        QCOMPARE(stack->Label[spRow + 3]->text(), QString(" $00FF:   $0B"));

        const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
        QVERIFY(folder.isEmpty() || form.grab().save(QDir(folder).filePath("cpu-stack.png")));
    }
};

QTEST_MAIN(CpuStackScreenshotTest)
#include "CpuStackScreenshot_test.moc"
