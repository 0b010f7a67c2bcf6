// The board back-end on a scripted line: the bytes of each operation's frame,
// the receive event kept off during exchanges, event pumping, and every way a
// reply can go wrong (CTS low, garbage, bad sums, wrong ACK, short, long and
// late replies, a board that vanishes), each with its message and state.
#include <QtTest>

#include "core/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/TickCount.h"
#include "support/MainFormFixture.h"
#include "target/MonitorFrames.h"

namespace {
const QString CommCaption = "Orvane - Communication Error";
const QString NoResponse = "No Response from M68HC11 Board !";
const QString InvalidData = "Invalid Data from M68HC11 Board !";

// Every reading of the tick count moves it on by 1 ms, so time-outs pass
// quickly and late replies arrive at an exact point of the poll.
struct SteppingClock {
    std::uint32_t now = 1000;
    SteppingClock() { previous = SetTickCountSource([this] { return ++now; }); }
    ~SteppingClock() { SetTickCountSource(previous); }
    std::function<std::uint32_t()> previous;
};

// Counts the event passes of the polls, and runs them for real.
struct EventCounter {
    int passes = 0;
    EventCounter()
    {
        previous = SetDoEventsHook([this] {
            ++passes;
            QCoreApplication::processEvents();
        });
    }
    ~EventCounter() { SetDoEventsHook(previous); }
    std::function<void()> previous;
};

QByteArray Hex(const char* text)
{
    return QByteArray::fromHex(text);
}

QByteArray ReadReply(const QByteArray& data, char first = 6)
{
    QByteArray reply(1, first);
    reply += data;
    monitor::AppendChecksum(reply);
    return reply;
}

// A monitor over a 64 KB memory: answers R with its bytes, W and P with ACK.
struct ScriptedMonitor {
    std::array<std::uint8_t, 65536> memory{};
    QList<QByteArray> frames;
    int thresholdDuringExchange = -1;

    void Attach(MainFormFixture& f)
    {
        f.line.SetResponder([this, &f](const QByteArray& frame) {
            frames << frame;
            thresholdDuringExchange = f.form->MSComm.RThreshold();
            return Answer(frame);
        });
    }

    QByteArray Answer(const QByteArray& frame)
    {
        const int address = (std::uint8_t(frame[1]) << 8) | std::uint8_t(frame[2]);
        const int count = std::uint8_t(frame[3]) == 0 ? 256 : std::uint8_t(frame[3]);
        if (frame[0] == 'R') {
            QByteArray data;
            for (int i = 0; i < count; ++i)
                data += char(memory[(address + i) & 0xFFFF]);
            return ReadReply(data, char(0x99));   // the first byte is never examined
        }
        if (frame[0] == 'W' || frame[0] == 'P') {
            for (int i = 0; i < count; ++i)
                memory[(address + i) & 0xFFFF] = std::uint8_t(frame[4 + i]);
        }
        return QByteArray(1, monitor::Ack);
    }
};

frmMain& StartBoard(MainFormFixture& f)
{
    frmMain& form = f.Start();
    f.line.TakeWritten();
    return form;
}

QString LastMessage(const MainFormFixture& f)
{
    return f.boxes.boxes.isEmpty() ? QString() : f.boxes.boxes.last().text;
}
} // namespace

class BoardExchangeTest : public QObject {
    Q_OBJECT
private slots:
    // ---- Frames on the wire and what the replies fill --------------------------
    void readsSendTheirFramesAndFillTheirCopies()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        ScriptedMonitor board;
        board.Attach(f);
        board.memory[0x1000] = 0x5A;
        const std::uint8_t saved[9] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x01, 0xF0, 0xC4};
        std::copy(std::begin(saved), std::end(saved), board.memory.begin());
        board.memory[0x01F1] = 0xE1;
        board.memory[0x01F2] = 0x23;
        board.memory[0xFF80] = 0x86;
        board.memory[0x007F] = 0x39;

        std::int32_t address = 0x1000;
        std::uint8_t byte = 0;
        form.InByte(address, byte);
        QCOMPARE(byte, std::uint8_t(0x5A));
        QCOMPARE(board.frames.takeLast(), Hex("52100001EF"));

        form.InCPU();
        QCOMPARE(board.frames.takeLast(), Hex("52000009F7"));
        QCOMPARE(CpuRegisters.A, std::uint8_t(0x11));
        QCOMPARE(CpuRegisters.IX, 0x3344);
        QCOMPARE(CpuRegisters.SP, 0x01F0);
        QVERIFY(CpuRegisters.FlagZ && CpuRegisters.FlagS && !CpuRegisters.FlagC);

        form.InStack();
        QCOMPARE(board.frames.takeLast(), Hex("5201F00906"));
        QCOMPARE(StackBuffer[1], std::uint8_t(0xE1));
        QCOMPARE(StackBuffer[2], std::uint8_t(0x23));

        ProgramBase = 0xFF80;
        form.InProgram();
        QCOMPARE(board.frames.takeLast(), Hex("52FF800081"));
        QCOMPARE(ProgramBuffer[0], std::uint8_t(0x86));
        QCOMPARE(ProgramBuffer[255], std::uint8_t(0x39));

        // Four pages, the page number wrapping at 8 bits.
        MemoryPageAddress = 0xFE40;
        form.InMemory();
        QCOMPARE(board.frames.size(), 4);
        const int pages[] = {0xFE, 0xFF, 0x00, 0x01};
        for (int k = 0; k < 4; ++k) {
            QCOMPARE(std::uint8_t(board.frames[k][1]), std::uint8_t(pages[k]));
            QCOMPARE(std::uint8_t(board.frames[k][2]), std::uint8_t(0x40));
            QCOMPARE(std::uint8_t(board.frames[k][3]), std::uint8_t(0));
        }
        QCOMPARE(MemoryPage[0x200 + 0x3F], board.memory[0x007F]);   // $0040 starts the third page

        QVERIFY(BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(board.thresholdDuringExchange, 0);
        QCOMPARE(form.MSComm.RThreshold(), 6);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void writesSendTheirFrames()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        ScriptedMonitor board;
        board.Attach(f);
        std::int32_t address = 0x1004;
        form.OutByte(address, 0xA5);
        QCOMPARE(board.frames.takeLast(), Hex("57100401A546"));
        address = 0x0006;
        form.OutBytes(address, {0x01, 0xE0, 0x99}, 2);
        QCOMPARE(board.frames.takeLast(), Hex("570006 02 01E0 17"));
        address = 0xE000;
        form.Programm(address, {0x7E, 0xE0, 0x00}, 3);
        QCOMPARE(board.frames.takeLast(), Hex("50E000 03 7EE000 BF"));
        QCOMPARE(board.thresholdDuringExchange, 0);
        form.FlashErase();
        QCOMPARE(board.frames.takeLast(), Hex("45454576"));
        QVERIFY(BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());
        QCOMPARE(form.MSComm.RThreshold(), 6);
    }

    void onlyTheWritesAndTheEraseLetEventsRunDuringTheirPolls()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        ScriptedMonitor board;
        board.Attach(f);
        f.line.SetReplyDelay(20);
        SteppingClock clock;
        EventCounter events;
        std::int32_t address = 0x2000;
        std::uint8_t byte = 0;
        form.InByte(address, byte);
        form.InStack();
        form.Programm(address, {1}, 1);
        QCOMPARE(events.passes, 0);
        form.InCPU();
        QCOMPARE(events.passes, 1);
        form.InProgram();
        QCOMPARE(events.passes, 2);
        form.OutByte(address, 1);
        QVERIFY(events.passes > 3);
        const int afterWrite = events.passes;
        form.FlashErase();
        QVERIFY(events.passes > afterWrite + 1);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    // ---- Faults ------------------------------------------------------------------
    void ctsLowStopsEveryOperationBeforeItsFrame()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        f.line.SetCTS(false);
        CpuRegisters.A = 0x42;
        StackBuffer.fill(0x33);
        form.InCPU();
        form.InStack();
        std::int32_t address = 0x2000;
        form.OutBytes(address, {1, 2}, 2);
        QVERIFY(f.line.TakeWritten().isEmpty());
        QCOMPARE(f.boxes.boxes.size(), 3);
        for (const auto& box : f.boxes.boxes) {
            QCOMPARE(box.text, QString("M68HC11 Board Not Connected !"));
            QCOMPARE(box.caption, CommCaption);
        }
        QCOMPARE(CpuRegisters.A, std::uint8_t(0x42));
        QCOMPARE(StackBuffer[0], std::uint8_t(0x33));
        QVERIFY(!BoardConnected);
    }

    void badReadRepliesLeaveTheCopyAlone_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("delay");
        QTest::addColumn<QString>("message");
        const QByteArray good = ReadReply(Hex("010203040506070809"));
        QTest::newRow("bad sum") << ReadReply(Hex("010203040506070809")).replace(3, 1, "\x55") << 0 << InvalidData;
        QTest::newRow("garbage") << QByteArray("hello world") << 0 << InvalidData;
        QTest::newRow("one byte too long") << good + "x" << 0 << NoResponse;
        QTest::newRow("one byte short") << good.left(10) << 0 << NoResponse;
        QTest::newRow("one byte only") << QByteArray(1, 6) << 0 << NoResponse;
        QTest::newRow("nothing") << QByteArray() << 0 << NoResponse;
        QTest::newRow("past the time-out") << good << 150 << NoResponse;
    }

    void badReadRepliesLeaveTheCopyAlone()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, delay);
        QFETCH(QString, message);
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        SteppingClock clock;
        f.line.SetReplyDelay(std::uint32_t(delay));
        f.line.SetResponder([&](const QByteArray&) { return reply; });
        CpuRegisters.SP = 0x01F0;
        StackBuffer.fill(0x33);
        const std::uint32_t start = clock.now;
        form.InStack();
        if (message == NoResponse)
            QVERIFY(clock.now - start >= 100);   // the whole time-out was given
        QCOMPARE(StackBuffer, (std::array<std::uint8_t, 9>{0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33}));
        QVERIFY(!BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, message);
        QCOMPARE(f.boxes.boxes[0].caption, CommCaption);
        QCOMPARE(f.boxes.boxes[0].style, int(MbOkOnly | MbExclamation));
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Responding !"));
        QCOMPARE(form.MSComm.RThreshold(), 6);
        QCOMPARE(form.MSComm.InBufferCount(), 0);

        // Nothing is locked: the next operation starts afresh, and empties
        // away a reply that came too late.
        clock.now += 100;
        f.line.SetReplyDelay(0);
        f.line.SetResponder([](const QByteArray&) { return ReadReply(Hex("0908070605040302AA")); });
        form.InStack();
        QVERIFY(BoardConnected);
        QCOMPARE(StackBuffer[8], std::uint8_t(0xAA));
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void writesWantExactlyOneAck()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        SteppingClock clock;
        QByteArray reply(1, monitor::Nak);
        f.line.SetResponder([&](const QByteArray&) { return reply; });
        std::int32_t address = 0x2000;
        form.OutByte(address, 1);
        QCOMPARE(LastMessage(f), InvalidData);
        reply = Hex("0606");
        form.OutBytes(address, {1, 2}, 2);
        QCOMPARE(LastMessage(f), NoResponse);
        reply = Hex("07");
        form.Programm(address, {1, 2}, 2);
        QCOMPARE(LastMessage(f), InvalidData);
        reply.clear();
        form.Programm(address, {1, 2}, 2);
        QCOMPARE(LastMessage(f), NoResponse);
        QCOMPARE(f.boxes.boxes.size(), 4);
        QVERIFY(!BoardConnected);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Responding !"));
        QCOMPARE(form.MSComm.RThreshold(), 6);
    }

    void failedBlockEndsTheMemoryReadKeepingTheBlocksBefore()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        int block = 0;
        f.line.SetResponder([&block](const QByteArray&) {
            ++block;
            QByteArray reply = ReadReply(QByteArray(256, char(block)));
            if (block == 3)
                reply[5] = 0;
            return reply;
        });
        MemoryPage.fill(0xEE);
        MemoryPageAddress = 0x2000;
        form.InMemory();
        QCOMPARE(block, 3);   // the fourth is never asked
        QCOMPARE(MemoryPage[0], std::uint8_t(1));
        QCOMPARE(MemoryPage[511], std::uint8_t(2));
        QCOMPARE(MemoryPage[512], std::uint8_t(0xEE));
        QCOMPARE(MemoryPage[1023], std::uint8_t(0xEE));
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(LastMessage(f), InvalidData);
    }

    void failedVectorReadKeepsThePc()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        f.line.SetResponder([](const QByteArray&) { return Hex("06E0"); });
        CpuRegisters.PC = 0x1234;
        SteppingClock clock;
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0x1234);
        QCOMPARE(LastMessage(f), NoResponse);
        f.line.SetResponder([](const QByteArray&) { return ReadReply(Hex("E010")); });
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0xE010);
    }

    void boardVanishingMidExchangeEndsInNoResponse()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        SteppingClock clock;
        EventCounter events;
        f.line.SetResponder([&f](const QByteArray&) {
            f.line.Vanish();
            return QByteArray();
        });
        std::int32_t address = 0x2000;
        form.OutByte(address, 1);   // its poll lets the line's loss be handled
        QVERIFY(!f.line.IsOpen());
        QVERIFY(!BoardConnected);
        QCOMPARE(LastMessage(f), NoResponse);
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Connected !"));

        // The next operation opens the port again.
        ScriptedMonitor board;
        board.Attach(f);
        board.memory[0x2000] = 0x77;
        std::uint8_t byte = 0;
        form.InByte(address, byte);
        QCOMPARE(byte, std::uint8_t(0x77));
        QVERIFY(BoardConnected);
        QCOMPARE(f.line.OpenCount(), 2);
    }

    // ---- Erase ---------------------------------------------------------------------
    void eraseReplies_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("delay");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("caption");
        QTest::newRow("ACK") << Hex("06") << 0 << true << QString() << QString();
        QTest::newRow("ACK after 2.9 s") << Hex("06") << 2900 << true << QString() << QString();
        QTest::newRow("ACK after 3.1 s") << Hex("06") << 3100 << false << NoResponse << CommCaption;
        QTest::newRow("NAK") << Hex("15") << 0 << false << QString("Erasing Flash failed!")
                             << QString("Orvane Integrated Development Tools");
        QTest::newRow("other byte") << Hex("42") << 0 << false << QString("Invalid data from board !") << CommCaption;
        QTest::newRow("two bytes") << Hex("0606") << 0 << false << NoResponse << CommCaption;
        QTest::newRow("nothing") << QByteArray() << 0 << false << NoResponse << CommCaption;
    }

    void eraseReplies()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, delay);
        QFETCH(bool, connected);
        QFETCH(QString, message);
        QFETCH(QString, caption);
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        SteppingClock clock;
        EventCounter events;
        f.line.SetReplyDelay(std::uint32_t(delay));
        f.line.SetResponder([&](const QByteArray&) { return reply; });
        form.SetPanelText(1, "untouched");
        BoardConnected = !connected;
        form.FlashErase();
        QCOMPARE(BoardConnected, connected);
        QCOMPARE(LastMessage(f), message);
        if (!message.isEmpty())
            QCOMPARE(f.boxes.boxes.last().caption, caption);
        QCOMPARE(form.PanelText(1), QString("untouched"));   // no BoardStatus on either path
        QCOMPARE(form.MSComm.RThreshold(), 6);
        QCOMPARE(form.MSComm.InBufferCount(), 0);
        if (delay > 0)
            QVERIFY(events.passes > 100);   // the window stays alive during a long erase
    }

    void eraseGoesOutEvenWithoutCtsButNotOnAClosedPort()
    {
        MainFormFixture f;
        frmMain& form = StartBoard(f);
        f.line.SetResponder([](const QByteArray&) { return Hex("06"); });
        f.line.SetCTS(false);
        form.FlashErase();   // no FindBoard: the frame goes out regardless
        QCOMPARE(f.line.TakeWritten(), Hex("45454576"));
        QVERIFY(BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());

        form.MSComm.SetPortOpen(false);
        form.FlashErase();
        QVERIFY(!BoardConnected);
        QVERIFY(f.line.TakeWritten().isEmpty());
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].caption, CommCaption);
    }
};

QTEST_MAIN(BoardExchangeTest)
#include "BoardExchange_test.moc"
