// Download from end to end on the real windows on hc11board (the simulator's
// run is Download_test's): every byte lands, PC and SP come from the target.
// With ORVANE_SCREENSHOT set to a folder, download.png is saved there.

#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "support/BoardProcess.h"
#include "support/ui/DownloadFile.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ShownWindow.h"
#include "support/S19Image.h"
#include "ui/views/RegisterWindow.h"

namespace {
const char* const Program = " ORG $E000\n"
                            "START LDS #$00FF\n"
                            " LDX #TABLE\n"
                            "LOOP LDAA 0,X\n"
                            " STAA $1004\n"
                            " INX\n"
                            " BRA LOOP\n"
                            " ORG $FF00\n"
                            "TABLE FCB 1,2,4,8,16,32,64,128\n"
                            " ORG $FFFE\n"
                            " FDB START\n";
}  // namespace

class DownloadEndToEndTest : public QObject {
    Q_OBJECT
private slots:
    void board()
    {
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(emulator.DevicePath());
        QVERIFY(ShowAt(form, {1100, 640}));
        // An older program in the flash, which the download's erase must clear.
        std::int32_t address = 0xE800;
        form.Link().FlashErase();
        form.Link().Programm(address, {0x12, 0x34}, 2);
        const auto assembled = hc11::as11::AssembleSource(Program, "prog");
        const asmtest::S19Image image = asmtest::ReadS19(assembled.s19);
        QVERIFY(image.problem.empty());
        CpuRegisters.PC = 0x0100;
        // SP in the save area, as a program that set up its stack left it.
        std::int32_t savedSP = 6;
        form.Link().OutBytes(savedSP, {0x00, 0xFF}, 2);

        DownloadFile(form, QByteArray::fromStdString(assembled.s19));
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));
        for (const auto& [at, byte] : image.bytes)
            QCOMPARE(TargetByte(form, at), byte);
        QVERIFY(CpuRegisters.PC == 0xE000 && form.PanelText(2) == "Program: prog.s19");
        auto* cpu = qobject_cast<RegisterWindow*>(form.Window("frmRegCPU"));
        auto* disasm = qobject_cast<frmDisAsm*>(form.Window("frmDisAsm"));
        QVERIFY(cpu && disasm && form.IsOpen("frmStack") && (cpu->Cell(5) + cpu->Cell(6)) == QString("$E000$00FF"));
        QVERIFY(disasm->PageRows[0].RowAddress <= 0xE000);
        QCOMPARE(TargetByte(form, 0xE800), 0xFF);

        if (!QTest::currentTestFailed())
            SaveScreenshot(&form, "download.png");
    }

    void refusedEraseWritesNothing()
    {
        BoardProcess emulator({"--erase-fails"});
        QVERIFY(!emulator.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(emulator.DevicePath());
        std::int32_t address = 0x0100;
        form.Link().OutBytes(address, {0x11, 0x22}, 2);
        CpuRegisters.PC = 0x0100;
        DownloadFile(form, "S1050100AABB94\nS105FFFEE0001D\n");
        QVERIFY(f.boxes.boxes.size() == 2 && f.boxes.boxes[1].text == "Can't Write to Memory !");
        QVERIFY(TargetByte(form, 0x0100) == 0x11 && CpuRegisters.PC == 0x0100);
        QVERIFY(!form.IsOpen("frmRegCPU") && !form.IsOpen("frmDisAsm"));
    }
};

QTEST_MAIN(DownloadEndToEndTest)
#include "DownloadEndToEnd_test.moc"
