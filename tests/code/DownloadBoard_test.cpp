// Download end to end through the real serial control to hc11board on a
// pseudo-terminal: the program in the board's flash, the reset vector in PC,
// panel 2 and the breakpoints; and an erase the board refuses.
#include <QtTest>

#include "core/TargetState.h"
#include "source/SourceRecords.h"
#include "source/hc11/Assembler.h"
#include "support/BoardProcess.h"
#include "support/FakeToolWindow.h"
#include "support/MainFormFixture.h"
#include "support/S19Image.h"

#include <QDir>
#include <QTemporaryDir>

namespace {
// A program across the whole flash: code at $E000, a table near the top, the vector.
const char* const Program = " ORG $E000\n"
                            "START LDS #$00FF\n"
                            " LDX #TABLE\n"
                            "LOOP LDAA 0,X\n"
                            " STAA $1004\n"
                            " INX\n"
                            " CPX #TABLE+8\n"
                            " BNE LOOP\n"
                            " BRA START\n"
                            " ORG $FF00\n"
                            "TABLE FCB 1,2,4,8,16,32,64,128\n"
                            " ORG $FFFE\n"
                            " FDB START\n";

struct WorkFolder {
    QTemporaryDir dir;
    QString previous = QDir::currentPath();
    // Start-up moves to the program's folder, so this comes after it.
    void Enter() const { QDir::setCurrent(dir.path()); }
    ~WorkFolder() { QDir::setCurrent(previous); }
};

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
        WorkFolder folder;
        const auto assembled = hc11::as11::AssembleSource(Program, "BOARD");
        QVERIFY(assembled.errors.empty());
        QFile file(folder.dir.filePath("board.s19"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(assembled.s19.data(), qint64(assembled.s19.size()));
        file.close();
        const asmtest::S19Image image = asmtest::ReadS19(assembled.s19);

        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        folder.Enter();
        PluggedWindows windows({"frmRegCPU", "frmStack", "frmDisAsm"});
        // Something of an older program that the erase must clear.
        form.FlashErase();
        std::int32_t address = 0xE800;
        form.Programm(address, {0x12, 0x34}, 2);
        form.SetPanelText(2, "Program: old.s19");
        BreakpointTable[0] = 0xE003;
        BreakpointCount = 1;
        form.BreakpointCountChanged();
        CpuRegisters.PC = 0x0100;

        S19File = "board.s19";
        form.mnuFileDownload_Click();
        QVERIFY2(f.boxes.boxes.isEmpty(), qPrintable(f.boxes.boxes.value(0).text));
        QVERIFY(BoardConnected);

        const std::vector<std::uint8_t> code = ReadBoard(form, 0xE000, 256);
        const std::vector<std::uint8_t> top = ReadBoard(form, 0xFF00, 256);
        QCOMPARE(code.size(), std::size_t(256));
        QCOMPARE(top.size(), std::size_t(256));
        for (const auto& [at, byte] : image.bytes) {
            const std::uint8_t onBoard = at < 0xFF00 ? code[std::size_t(at - 0xE000)] : top[std::size_t(at - 0xFF00)];
            QCOMPARE(onBoard, byte);
        }
        QCOMPARE(ReadBoard(form, 0xE800, 2), std::vector<std::uint8_t>({0xFF, 0xFF}));
        QCOMPARE(top[0xFE] * 256 + top[0xFF], 0xE000);
        QCOMPARE(CpuRegisters.PC, 0xE000);
        QCOMPARE(form.PanelText(2), QString("Program: board.s19"));
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QVERIFY(!form.Menu("mnuDebugClearAllBreakpoints")->isEnabled());
        QVERIFY(form.IsOpen("frmRegCPU") && form.IsOpen("frmStack") && form.IsOpen("frmDisAsm"));
        QCOMPARE(form.ActiveWindow(), form.Window("frmDisAsm"));
        QCOMPARE(ClockCount, 0);
        S19File.clear();
    }

    void refusedEraseWritesNothing()
    {
        WorkFolder folder;
        QFile file(folder.dir.filePath("prog.s19"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("S1050100AABB94\nS105FFFEE0001D\n");
        file.close();

        BoardProcess board({"--erase-fails"});
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        folder.Enter();
        std::int32_t address = 0x0100;
        form.OutBytes(address, {0x11, 0x22}, 2);
        CpuRegisters.PC = 0x0100;

        S19File = "prog.s19";
        form.mnuFileDownload_Click();
        QCOMPARE(f.boxes.boxes.size(), 2);
        QCOMPARE(f.boxes.boxes[0].text, QString("Erasing Flash failed!"));
        QCOMPARE(f.boxes.boxes[1].text, QString("Can't Write to Memory !"));
        QCOMPARE(ReadBoard(form, 0x0100, 2), std::vector<std::uint8_t>({0x11, 0x22}));
        QCOMPARE(CpuRegisters.PC, 0x0100);
        S19File.clear();
    }
};

QTEST_MAIN(DownloadBoardTest)
#include "DownloadBoard_test.moc"
