// The target operations through the real serial control against hc11board on
// a pseudo-terminal, in one session: memory across a page boundary, the reset
// vector in flash, a free run whose output reaches the terminal, and the reset
// report that ends it. Each frame's bytes are the exchange test's, the
// monitor's answers its own test's, and steps on the board the debugger's.
#include <QtTest>

#include "core/TargetState.h"
#include "support/BoardProcess.h"
#include "support/MainFormFixture.h"
#include "target/MonitorFrames.h"
#include "tools/hc11board/BoardFrames.h"

class BoardLinkTest : public QObject {
    Q_OBJECT
private slots:
    void memoryFlashAndAFreeRunThroughTheMonitor()
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

        address = 0xFFFE;   // the flash starts erased
        form.Programm(address, {0xE0, 0x40}, 2);

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
