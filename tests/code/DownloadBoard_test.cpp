// Download end to end through the real serial control to hc11board on a
// pseudo-terminal: an assembled program in the board's flash, the reset
// vector in PC, panel 2, the breakpoints and the windows; and an erase that
// the board refuses.
#include <QtTest>

#include "core/TargetState.h"
#include "source/SourceRecords.h"
#include "source/hc11/Assembler.h"
#include "support/BoardProcess.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"
#include "support/S19Image.h"
#include "support/WorkFolder.h"

namespace {
std::vector<std::uint8_t> ReadBoard(frmMain& form, std::int32_t address, int count)
{
    std::vector<std::uint8_t> bytes;
    form.InBytes(address, bytes, std::int16_t(count));
    return bytes;
}
}  // namespace

class DownloadBoardTest : public QObject {
    Q_OBJECT
private slots:
    void programReachesTheBoardsFlash()
    {
        const auto assembled = hc11::as11::AssembleSource(" ORG $E000\nSTART LDS #$00FF\n LDX #TABLE\n"
                                                          "LOOP LDAA 0,X\n STAA $1004\n BRA LOOP\n"
                                                          " ORG $FF00\nTABLE FCB 1,2,4,8,16,32,64,128\n"
                                                          " ORG $FFFE\n FDB START\n");
        const asmtest::S19Image image = asmtest::ReadS19(assembled.s19);
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        WorkFolder folder;
        folder.Enter();
        QVERIFY(folder.Write("board.s19", QByteArray::fromStdString(assembled.s19)));
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        std::int32_t address = 0xE800;   // an older program that the erase must clear
        form.FlashErase();
        form.Programm(address, {0x12, 0x34}, 2);
        BreakpointCount = 1;
        CpuRegisters.PC = 0x0100;

        S19File = "board.s19";
        form.mnuFileDownload_Click();
        S19File.clear();
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));
        const std::vector<std::uint8_t> code = ReadBoard(form, 0xE000, 256);
        const std::vector<std::uint8_t> top = ReadBoard(form, 0xFF00, 256);
        QCOMPARE(code.size() + top.size(), std::size_t(512));
        for (const auto& [at, byte] : image.bytes)
            QCOMPARE(at < 0xFF00 ? code[std::size_t(at - 0xE000)] : top[std::size_t(at - 0xFF00)], byte);
        QCOMPARE(ReadBoard(form, 0xE800, 2), std::vector<std::uint8_t>({0xFF, 0xFF}));
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QCOMPARE(form.PanelText(2), QString("Program: board.s19"));
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QVERIFY(form.IsOpen("frmRegCPU") && form.IsOpen("frmStack") && form.IsOpen("frmDisAsm"));
        QCOMPARE(form.ActiveWindow(), form.Window("frmDisAsm"));
    }

    void refusedEraseWritesNothing()
    {
        BoardProcess board({"--erase-fails"});
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        WorkFolder folder;
        folder.Enter();
        QVERIFY(folder.Write("prog.s19", "S1050100AABB94\nS105FFFEE0001D\n"));
        std::int32_t address = 0x0100;
        form.OutBytes(address, {0x11, 0x22}, 2);
        CpuRegisters.PC = 0x0100;

        S19File = "prog.s19";
        form.mnuFileDownload_Click();
        S19File.clear();
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[0].text, QString("Erasing Flash failed!"));
        QCOMPARE(f.boxes.boxes[1].text, QString("Can't Write to Memory !"));
        QCOMPARE(f.boxes.boxes[1].caption, QString("Orvane - Download Error"));
        QCOMPARE(ReadBoard(form, 0x0100, 2), std::vector<std::uint8_t>({0x11, 0x22}));
        QCOMPARE(CpuRegisters.PC, 0x0100);
    }
};

QTEST_MAIN(DownloadBoardTest)
#include "DownloadBoard_test.moc"
