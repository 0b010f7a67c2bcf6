// The board back-end on a scripted line: each operation's frame bytes, and the
// faults a pseudo-terminal cannot produce (CTS low, garbage, bad sums, wrong
// ACK, short, long and late replies, a board that vanishes).
#include <QtTest>

#include "engine/state/TargetState.h"
#include "platform/TickCount.h"
#include "support/DoEventsAction.h"
#include "support/MainFormFixture.h"
#include "support/ScriptedMonitor.h"
#include "engine/link/MonitorFrames.h"

namespace {
const QString CommCaption = "Orvane - Communication Error";
const QString NoResponse = "No Response from M68HC11 Board !";
const QString InvalidData = "Invalid Data from M68HC11 Board !";

QByteArray Hex(const char* text) { return QByteArray::fromHex(text); }

QByteArray ReadReply(const QByteArray& data)
{
    QByteArray reply(1, char(monitor::Ack));
    reply += data;
    monitor::AppendChecksum(reply);
    return reply;
}

// Board mode, every reading of the tick count moving time on by 1 ms.
struct BoardFixture : MainFormFixture {
    std::uint32_t now = 1000;
    std::function<std::uint32_t()> previousClock = SetTickCountSource([this] { return ++now; });
    BoardFixture()
    {
        Start();
        line.TakeWritten();
    }
    ~BoardFixture() { SetTickCountSource(previousClock); }
    QString LastMessage() const { return boxes.boxes.isEmpty() ? QString() : boxes.boxes.last().text; }
};
} // namespace

class BoardExchangeTest : public QObject {
    Q_OBJECT
private slots:
    void framesOnTheWireAndTheCopiesTheyFill()
    {
        BoardFixture f;
        ScriptedMonitor board(f);
        int threshold = -1;   // the highest during an exchange; the erase leaves it as it was
        f.line.SetResponder([&](const QByteArray& frame) {
            if (!frame.startsWith('E'))
                threshold = std::max(threshold, f.form->MSComm.RThreshold());
            return board.Answer(frame);
        });
        const std::uint8_t saved[9] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x01, 0xF0, 0xC4};
        std::copy(std::begin(saved), std::end(saved), board.memory.begin());
        board.memory[0x1000] = 0x5A;
        board.memory[0x01F1] = 0xE1;
        board.memory[0xFF80] = 0x86;
        board.memory[0x007F] = 0x39;

        std::int32_t address = 0x1000;
        std::uint8_t byte = 0;
        f.form->InByte(address, byte);
        f.form->InCPU();
        f.form->InStack();
        ProgramBase = 0xFF80;
        f.form->InProgram();
        MemoryPageAddress = 0xFE40;
        f.form->InMemory();                        // four pages, the page number wrapping at 8 bits
        address = 0x1004;
        f.form->OutByte(address, 0xA5);
        address = 0x0006;
        f.form->OutBytes(address, {0x01, 0xE0, 0x99}, 2);
        address = 0xE000;
        f.form->Programm(address, {0x7E, 0xE0, 0x00}, 3);
        f.form->FlashErase();
        QCOMPARE(board.frames, (QList<QByteArray>{Hex("52100001EF"), Hex("52000009F7"), Hex("5201F00906"),
                                                  Hex("52FF800081"), Hex("52FE4000C2"), Hex("52FF4000C1"),
                                                  Hex("52004000C0"), Hex("52014000BF"), Hex("57100401A546"),
                                                  Hex("570006 02 01E0 17"), Hex("50E000 03 7EE000 BF"),
                                                  Hex("45454576")}));
        QCOMPARE(byte, std::uint8_t(0x5A));
        QVERIFY(CpuRegisters.A == 0x11 && CpuRegisters.IX == 0x3344 && CpuRegisters.SP == 0x01F0);
        QVERIFY(CpuRegisters.FlagZ && CpuRegisters.FlagS && !CpuRegisters.FlagC);
        QCOMPARE(StackBuffer[1], std::uint8_t(0xE1));
        QCOMPARE(ProgramBuffer[0], std::uint8_t(0x86));
        QCOMPARE(ProgramBuffer[255], std::uint8_t(0x39));
        QCOMPARE(MemoryPage[0x200 + 0x3F], std::uint8_t(0x39));   // $0040 starts the third page
        QVERIFY(BoardConnected && f.boxes.boxes.isEmpty());
        QCOMPARE(threshold, 0);                   // no receive event during an exchange
        QCOMPARE(f.form->MSComm.RThreshold(), 6);
        QCOMPARE(f.form->PanelText(1), QString("HC11 Board: Ready"));

        // The frames that carry registers: "S" with its code, "X" with a jump to the host's PC.
        const CpuRegisterRecord r{.A = 0x12, .B = 0x34, .IX = 0x5678, .IY = 0x9ABC, .PC = 0xE123, .SP = 0x01F0, .CCR = 0xD5};
        QCOMPARE(monitor::StepFrame(r, {0x86, 0x42, 0x01, 0x01}), Hex("53 1234 5678 9ABC 01F0 D5 86420101 06"));
        QCOMPARE(monitor::ExecuteFrame(r), Hex("58 1234 5678 9ABC 01F0 D5 7EE123 4E"));
    }

    void ctsLowStopsEveryOperationButTheErase()
    {
        BoardFixture f;
        f.line.SetResponder([](const QByteArray&) { return Hex("06"); });
        f.line.SetCTS(false);
        CpuRegisters.A = 0x42;
        f.form->InCPU();
        std::int32_t address = 0x2000;
        f.form->OutBytes(address, {1, 2}, 2);
        QVERIFY(f.line.TakeWritten().isEmpty());
        QCOMPARE(f.boxes.boxes.size(), 2);        // a warning every time
        for (const auto& box : f.boxes.boxes)
            QVERIFY(box.text == "M68HC11 Board Not Connected !" && box.caption == CommCaption);
        QCOMPARE(CpuRegisters.A, std::uint8_t(0x42));
        QVERIFY(!BoardConnected);
        QCOMPARE(f.form->PanelText(1), QString("HC11 Board: Not Connected !"));

        f.form->FlashErase();                     // no FindBoard: the frame goes out regardless
        QCOMPARE(f.line.TakeWritten(), Hex("45454576"));
        QVERIFY(BoardConnected);
        f.form->MSComm.SetPortOpen(false);        // but not on a closed port
        f.form->FlashErase();
        QVERIFY(!BoardConnected);
        QVERIFY(f.line.TakeWritten().isEmpty());
        QCOMPARE(f.boxes.boxes.size(), 3);
        QCOMPARE(f.boxes.boxes[2].caption, CommCaption);
    }

    void badRepliesLeaveTheCopyAloneAndLockNothing()
    {
        const QByteArray good = ReadReply(Hex("010203040506070809"));
        const struct { const char* operation; QByteArray reply; int delay; QString message; } rows[] = {
            {"InStack", QByteArray(good).replace(3, 1, "\x55"), 0, InvalidData},   // bad sum
            {"InStack", "hello world", 0, InvalidData},
            {"InStack", good + "x", 0, NoResponse},                                 // one byte too long
            {"InStack", good.left(10), 0, NoResponse},                              // one byte short
            {"InStack", good, 150, NoResponse},                                     // past the time-out
            {"OutByte", Hex("15"), 0, InvalidData},                                 // NAK
            {"OutByte", Hex("0606"), 0, NoResponse},                                // two ACKs
            {"Programm", Hex("07"), 0, InvalidData},                                // some other byte
        };
        for (const auto& [operation, reply, delay, message] : rows)
            BadReply(operation, reply, delay, message);
    }

private:
    void BadReply(const QString& operation, const QByteArray& reply, int delay, const QString& message)
    {
        BoardFixture f;
        f.line.SetReplyDelay(std::uint32_t(delay));
        f.line.SetResponder([&](const QByteArray&) { return reply; });
        CpuRegisters.SP = 0x01F0;
        StackBuffer.fill(0x33);
        const std::uint32_t start = f.now;
        std::int32_t address = 0x2000;
        if (operation == "InStack")
            f.form->InStack();
        else
            operation == "OutByte" ? f.form->OutByte(address, 1) : f.form->Programm(address, {1, 2}, 2);
        if (message == NoResponse)
            QVERIFY(f.now - start >= 100);        // the whole time-out was given
        QVERIFY(StackBuffer[0] == 0x33 && StackBuffer[8] == 0x33);
        QVERIFY(!BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, message);
        QCOMPARE(f.boxes.boxes[0].caption, CommCaption);
        QCOMPARE(f.boxes.boxes[0].style, int(MbOkOnly | MbExclamation));
        QCOMPARE(f.form->PanelText(1), QString("HC11 Board: Not Responding !"));
        QCOMPARE(f.form->MSComm.RThreshold(), 6);
        QCOMPARE(f.form->MSComm.InBufferCount(), 0);

        // The next operation starts afresh, and empties away a reply that came too late.
        f.now += 100;
        f.line.SetReplyDelay(0);
        ScriptedMonitor board(f);
        board.memory[0x01F8] = 0xAA;
        f.form->InStack();
        QVERIFY(BoardConnected);
        QCOMPARE(StackBuffer[8], std::uint8_t(0xAA));
        QCOMPARE(f.form->PanelText(1), QString("HC11 Board: Ready"));
    }

private slots:
    void failedBlockEndsTheMemoryReadKeepingTheBlocksBefore()
    {
        BoardFixture f;
        int block = 0;
        f.line.SetResponder([&block](const QByteArray&) {
            QByteArray reply = ReadReply(QByteArray(256, char(++block)));
            if (block == 3)
                reply[5] = 0;
            return reply;
        });
        MemoryPage.fill(0xEE);
        f.form->InMemory();
        QCOMPARE(block, 3);                       // the fourth is never asked
        QCOMPARE(MemoryPage[511], std::uint8_t(2));
        QCOMPARE(MemoryPage[512], std::uint8_t(0xEE));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.LastMessage(), InvalidData);
    }

    void boardVanishingMidExchangeEndsInNoResponse()
    {
        BoardFixture f;
        DoEventsAction events([] {});
        f.line.SetResponder([&f](const QByteArray&) {
            f.line.Vanish();
            return QByteArray();
        });
        std::int32_t address = 0x2000;
        f.form->OutByte(address, 1);               // its poll lets the line's loss be handled
        QVERIFY(!f.line.IsOpen() && !BoardConnected);
        QCOMPARE(f.LastMessage(), NoResponse);
        QCOMPARE(f.form->PanelText(1), QString("HC11 Board: Not Connected !"));

        // The next operation opens the port again.
        ScriptedMonitor board(f);
        board.memory[0x2000] = 0x77;
        std::uint8_t byte = 0;
        f.form->InByte(address, byte);
        QCOMPARE(byte, std::uint8_t(0x77));
        QVERIFY(BoardConnected);
        QCOMPARE(f.line.OpenCount(), 2);
    }

    void eraseReplies()
    {
        const struct { QByteArray reply; int delay; QString message, caption; } rows[] = {
            {Hex("06"), 2900, {}, {}},                         // an ACK in time
            {Hex("06"), 3100, NoResponse, CommCaption},        // too late
            {Hex("15"), 0, "Erasing Flash failed!", "Orvane Integrated Development Tools"},
            {Hex("42"), 0, "Invalid data from board !", CommCaption},
        };
        for (const auto& [reply, delay, message, caption] : rows)
            EraseReply(reply, delay, message, caption);
    }

private:
    void EraseReply(const QByteArray& reply, int delay, const QString& message, const QString& caption)
    {
        BoardFixture f;
        int passes = 0;
        DoEventsAction events([&passes] { ++passes; });
        f.line.SetReplyDelay(std::uint32_t(delay));
        f.line.SetResponder([&](const QByteArray&) { return reply; });
        f.form->SetPanelText(1, "untouched");
        BoardConnected = !message.isEmpty();
        f.form->FlashErase();
        QCOMPARE(BoardConnected, message.isEmpty());
        QCOMPARE(f.LastMessage(), message);
        if (!message.isEmpty())
            QCOMPARE(f.boxes.boxes.last().caption, caption);
        QCOMPARE(f.form->PanelText(1), QString("untouched"));   // no BoardStatus on either path
        QCOMPARE(f.form->MSComm.RThreshold(), 6);
        QCOMPARE(f.form->MSComm.InBufferCount(), 0);
        QVERIFY(delay == 0 || passes > 100);      // the window stays alive during a long erase
    }
};

QTEST_MAIN(BoardExchangeTest)
#include "BoardExchange_test.moc"
