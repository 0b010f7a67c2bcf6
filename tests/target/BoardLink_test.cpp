// The target operations through the real serial control against hc11board on
// a pseudo-terminal: memory, flash, a step's registers through an "S" frame,
// a free run whose output reaches the terminal, and the reset report that ends it.
#include <QtTest>

#include "core/TargetState.h"
#include "support/BoardProcess.h"
#include "support/MainFormFixture.h"
#include "target/MonitorFrames.h"
#include "tools/hc11board/BoardFrames.h"

namespace {
using Bytes = std::vector<std::uint8_t>;

using boardtest::PrintProgram;   // sends the text at $2020 through the SCI

struct TerminalTap {
    QByteArray received;
    explicit TerminalTap(frmMain& form)
    {
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.SerialTerminalDisplay = [this](const QByteArray& bytes) { received += bytes; };
    }
};

QString LastMessage(const MainFormFixture& f)
{
    return f.boxes.boxes.isEmpty() ? QString() : f.boxes.boxes.last().text;
}
} // namespace

class BoardLinkTest : public QObject {
    Q_OBJECT
private slots:
    void memoryAndFlashThroughTheMonitor()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());

        std::int32_t address = 0x20FE;
        Bytes text(200);
        for (std::size_t i = 0; i < text.size(); ++i)
            text[i] = std::uint8_t(i * 3 + 1);
        form.OutBytes(address, text, 200);
        std::vector<std::uint8_t> back;
        form.InBytes(address, back, 200);
        QCOMPARE(back, text);
        MemoryPageAddress = 0x2000;
        form.InMemory();
        QCOMPARE(MemoryPage[0xFE + 199], std::uint8_t(200 * 3 - 2));

        // "W" leaves the flash alone; an erase and "P" write it.
        address = 0xE000;
        form.OutByte(address, 0x12);
        std::uint8_t byte = 0;
        form.InByte(address, byte);
        QCOMPARE(byte, std::uint8_t(0xFF));
        form.FlashErase();
        QVERIFY(BoardConnected);
        form.Programm(address, {0x86, 0x42, 0x39}, 3);
        address = 0xFFFE;
        form.Programm(address, {0xE0, 0x00}, 2);
        ProgramBase = 0xE000;
        form.InProgram();
        QCOMPARE(ProgramBuffer[0], std::uint8_t(0x86));
        QCOMPARE(ProgramBuffer[2], std::uint8_t(0x39));
        QCOMPARE(ProgramBuffer[3], std::uint8_t(0xFF));
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0xE000);

        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void stepReturnsTheRegistersAndLeavesThemInTheSaveArea()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        form.InCPU();
        QCOMPARE(CpuRegisters.SP, 0x00FF);   // the monitor's stack after its reset

        CpuRegisters.A = 0x7F;
        CpuRegisters.B = 0x10;
        CpuRegisters.IX = 0x1234;
        CpuRegisters.IY = 0xBEEF;
        CpuRegisters.SP = 0x01F0;
        CpuRegisters.CCR = 0xD0;
        form.FindBoard();
        QByteArray reply;
        // ABA, INX: A = $8F (N and V set), IX one up.
        const QByteArray frame = monitor::StepFrame(CpuRegisters, {0x1B, 0x08, monitor::Nop, monitor::Nop});
        QVERIFY(form.Exchange(frame, {monitor::StepReplySize, ReplyCheck::Checksum, 1000, false}, reply));
        form.MSComm.SetRThreshold(6);
        CpuRegisterRecord stepped;
        monitor::RegistersFromSaveArea(std::span<const std::uint8_t, 9>(
                                           reinterpret_cast<const std::uint8_t*>(reply.constData()) + 1, 9),
                                       stepped);
        QCOMPARE(stepped.A, std::uint8_t(0x8F));
        QCOMPARE(stepped.B, std::uint8_t(0x10));
        QCOMPARE(stepped.IX, 0x1235);
        QCOMPARE(stepped.IY, 0xBEEF);
        QCOMPARE(stepped.SP, 0x01F0);
        QCOMPARE(stepped.CCR, std::uint8_t(0xDA));

        CpuRegisters = CpuRegisterRecord{};
        form.InCPU();
        QCOMPARE(CpuRegisters.A, std::uint8_t(0x8F));
        QCOMPARE(CpuRegisters.IX, 0x1235);
        QVERIFY(CpuRegisters.FlagN && CpuRegisters.FlagV && !CpuRegisters.FlagZ);
    }

    void freeRunOutputReachesTheTerminalUntilTheResetReport()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        TerminalTap terminal(form);

        std::int32_t address = 0x2000;
        form.OutBytes(address, PrintProgram, std::int16_t(PrintProgram.size()));
        const QByteArray text = "Hello, board\r\n";
        Bytes textBytes(text.begin(), text.end());
        textBytes.push_back(0);
        address = 0x2020;
        form.OutBytes(address, textBytes, std::int16_t(textBytes.size()));
        form.FlashErase();
        address = 0xFFFE;
        form.Programm(address, {0xE0, 0x40}, 2);
        QVERIFY(BoardConnected);

        // The run: "X" with a jump to PC, one byte of acknowledgement, then only listening.
        CpuRegisters.PC = 0x2000;
        CpuRegisters.SP = 0x01FF;
        form.FindBoard();
        form.MSComm.SetInBufferCount(0);
        form.MSComm.Output(monitor::ExecuteFrame(CpuRegisters));
        QTRY_VERIFY(form.MSComm.InBufferCount() >= 1);
        form.MSComm.SetInputLen(1);
        QCOMPARE(form.MSComm.Input(), QByteArray(1, monitor::Ack));
        form.MSComm.SetInputLen(0);
        BoardRunning = true;
        form.MSComm.SetRThreshold(6);
        form.BoardStatus();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Running ..."));

        QTRY_COMPARE(terminal.received, text);
        QVERIFY(BoardRunning);

        board.Reset();
        QTRY_VERIFY(!BoardRunning);
        QVERIFY(BoardConnected);
        QCOMPARE(CpuRegisters.PC, 0xE040);   // read from the vector after the report
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QCOMPARE(terminal.received, text + "\r\n>");   // the report's first three bytes are shown
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    void wornFlashRefusesTheErase()
    {
        BoardProcess board({"--erase-fails"});
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        form.FlashErase();
        QVERIFY(!BoardConnected);
        QCOMPARE(LastMessage(f), QString("Erasing Flash failed!"));
        QCOMPARE(form.MSComm.RThreshold(), 6);
    }

    void portOpensAgainAfterTheHostClosedIt()
    {
        BoardProcess board({"--stay"});
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        std::int32_t address = 0x3000;
        form.OutByte(address, 0x5C);
        form.MSComm.SetPortOpen(false);
        std::uint8_t byte = 0;
        form.InByte(address, byte);
        QVERIFY(form.MSComm.PortOpen());
        QCOMPARE(byte, std::uint8_t(0x5C));
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(BoardLinkTest)
#include "BoardLink_test.moc"
