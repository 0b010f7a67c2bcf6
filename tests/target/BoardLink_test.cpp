// The target operations through the real serial control against hc11board on
// a pseudo-terminal, in one session: memory, flash, a step's registers through
// an "S" frame, a free run whose output reaches the terminal, and the reset
// report that ends it.
#include <QtTest>

#include "core/TargetState.h"
#include "support/BoardProcess.h"
#include "support/MainFormFixture.h"
#include "target/MonitorFrames.h"
#include "tools/hc11board/BoardFrames.h"

class BoardLinkTest : public QObject {
    Q_OBJECT
private slots:
    void memoryFlashStepAndFreeRunThroughTheMonitor()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        MainFormFixture f;
        frmMain& form = f.StartOn(board.DevicePath());
        QByteArray shown;
        form.Menu("mnuViewSerialTerminal")->setChecked(true);
        form.SerialTerminalDisplay = [&shown](const QByteArray& bytes) { shown += bytes; };

        std::int32_t address = 0x20FE;
        std::vector<std::uint8_t> bytes(200), back;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = std::uint8_t(i * 3 + 1);
        form.OutBytes(address, bytes, 200);
        form.InBytes(address, back, 200);
        QCOMPARE(back, bytes);
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
        form.Programm(address, {0x86, 0x42, 0x39}, 3);
        address = 0xFFFE;
        form.Programm(address, {0xE0, 0x40}, 2);
        ProgramBase = 0xE000;
        form.InProgram();
        QVERIFY(ProgramBuffer[0] == 0x86 && ProgramBuffer[2] == 0x39 && ProgramBuffer[3] == 0xFF);
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0xE040);

        // A step of ABA, INX: A = $8F with N and V, IX one up, in the reply and the save area.
        form.InCPU();
        QCOMPARE(CpuRegisters.SP, 0x00FF);   // the monitor's stack after its reset
        CpuRegisters = {.A = 0x7F, .B = 0x10, .IX = 0x1234, .IY = 0xBEEF, .SP = 0x01F0, .CCR = 0xD0};
        form.FindBoard();
        QByteArray reply;
        QVERIFY(form.Exchange(monitor::StepFrame(CpuRegisters, {0x1B, 0x08, monitor::Nop, monitor::Nop}),
                              {monitor::StepReplySize, ReplyCheck::Checksum, 1000, false}, reply));
        form.MSComm.SetRThreshold(6);
        QCOMPARE(reply.mid(1, 9), QByteArray::fromHex("8F10 1235 BEEF 01F0 DA"));
        CpuRegisters = CpuRegisterRecord{};
        form.InCPU();
        QVERIFY(CpuRegisters.A == 0x8F && CpuRegisters.IX == 0x1235);
        QVERIFY(CpuRegisters.FlagN && CpuRegisters.FlagV && !CpuRegisters.FlagZ);

        // The run: "X" with a jump to PC, one byte of acknowledgement, then only listening.
        address = 0x2000;
        form.OutBytes(address, boardtest::PrintProgram, std::int16_t(boardtest::PrintProgram.size()));
        const QByteArray text = "Hello, board\r\n";
        bytes.assign(text.begin(), text.end());
        bytes.push_back(0);
        address = 0x2020;
        form.OutBytes(address, bytes, std::int16_t(bytes.size()));
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
        QTRY_COMPARE(shown, text);
        QVERIFY(BoardRunning);

        board.Reset();
        QTRY_VERIFY(!BoardRunning);
        QVERIFY(BoardConnected);
        QCOMPARE(CpuRegisters.PC, 0xE040);   // read from the vector after the report
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready (Reset)"));
        QCOMPARE(shown, text + "\r\n>");     // the report's first three bytes are user output
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(BoardLinkTest)
#include "BoardLink_test.moc"
