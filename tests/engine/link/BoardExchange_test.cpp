// The board back-end on a scripted line: each operation's frame bytes, and the
// faults a pseudo-terminal cannot produce (CTS low, garbage, bad sums, wrong
// ACK, short, long and late replies, a board that vanishes).

#include "engine/state/TargetState.h"
#include "platform/TickCount.h"
#include "support/DoEventsAction.h"
#include "support/DebuggerFixture.h"
#include "support/ScriptedMonitor.h"
#include "engine/link/MonitorFrames.h"

#include <optional>

// QCOMPARE shows a failure inside a tuple by its number, or "none".
static char* toString(const std::optional<LinkFailure>& f) { return f ? QTest::toString(*f) : qstrdup("none"); }

namespace {
QByteArray Hex(const char* text) { return QByteArray::fromHex(text); }

// Board mode, every reading of the tick count moving time on by 1 ms.
struct BoardFixture : DebuggerFixture {
    std::uint32_t now = 1000;
    std::function<std::uint32_t()> previousClock = SetTickCountSource([this] { return ++now; });
    BoardFixture() : DebuggerFixture(false) { line.TakeWritten(); }
    ~BoardFixture() { SetTickCountSource(previousClock); }
    std::optional<LinkFailure> LastFailure() const
    {
        return reports.failures.isEmpty() ? std::nullopt : std::optional(reports.failures.last().first);
    }
    // The receive event is back on and nothing is left in the buffer.
    bool Idle() { return link.MSComm.RThreshold() == 6 && link.MSComm.InBufferCount() == 0; }
};
} // namespace

class BoardExchangeTest : public QObject {
    Q_OBJECT
private slots:
    void framesOnTheWireAndTheCopiesTheyFill()
    {
        BoardFixture f;
        ScriptedMonitor board(f.line);
        int threshold = -1;   // the highest during an exchange; the erase leaves it as it was
        f.line.SetResponder([&](const QByteArray& frame) {
            if (!frame.startsWith('E'))
                threshold = std::max(threshold, f.link.MSComm.RThreshold());
            return board.Answer(frame);
        });
        const std::uint8_t saved[9] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x01, 0xF0, 0xC4};
        std::copy(std::begin(saved), std::end(saved), board.memory.begin());
        for (auto [at, byte] : {std::pair{0x1000, 0x5A}, {0x01F1, 0xE1}, {0xFF80, 0x86}, {0x007F, 0x39}})
            board.memory[at] = std::uint8_t(byte);

        std::int32_t address = 0x1000;
        std::uint8_t byte = 0;
        f.link.InByte(address, byte);
        f.link.InCPU();
        f.link.InStack();
        ProgramBase = 0xFF80;
        f.link.InProgram();
        MemoryPageAddress = 0xFE40;
        f.link.InMemory();                        // four pages, the page number wrapping at 8 bits
        address = 0x1004;
        f.link.OutByte(address, 0xA5);
        address = 0x0006;
        f.link.OutBytes(address, {0x01, 0xE0, 0x99}, 2);
        address = 0xE000;
        f.link.Programm(address, {0x7E, 0xE0, 0x00}, 3);
        f.link.FlashErase();
        QCOMPARE(board.frames, (QList<QByteArray>{Hex("52100001EF"), Hex("52000009F7"), Hex("5201F00906"),
                                                  Hex("52FF800081"), Hex("52FE4000C2"), Hex("52FF4000C1"),
                                                  Hex("52004000C0"), Hex("52014000BF"), Hex("57100401A546"),
                                                  Hex("570006 02 01E0 17"), Hex("50E000 03 7EE000 BF"),
                                                  Hex("45454576")}));
        QCOMPARE(tuple(byte, CpuRegisters.A, CpuRegisters.IX, CpuRegisters.SP), tuple(0x5A, 0x11, 0x3344, 0x01F0));
        QVERIFY(CpuRegisters.FlagZ && CpuRegisters.FlagS && !CpuRegisters.FlagC);
        // $0040 starts the memory page's third block.
        QCOMPARE(tuple(StackBuffer[1], ProgramBuffer[0], ProgramBuffer[255], MemoryPage[0x23F]), tuple(0xE1, 0x86, 0x39, 0x39));
        QVERIFY(BoardConnected && f.reports.failures.isEmpty() && f.reports.state == LinkState::Ready);
        QCOMPARE(tuple(threshold, f.link.MSComm.RThreshold()), tuple(0, 6));   // no receive event during an exchange

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
        f.link.InCPU();
        std::int32_t address = 0x2000;
        f.link.OutBytes(address, {1, 2}, 2);
        QVERIFY(f.line.TakeWritten().isEmpty());
        QCOMPARE(f.reports.failures.size(), 2);   // a warning every time
        QCOMPARE(tuple(f.reports.failures[0].first, f.LastFailure(), CpuRegisters.A, BoardConnected, f.reports.state),
                 tuple(LinkFailure::NotConnected, LinkFailure::NotConnected, 0x42, false, LinkState::NotConnected));

        f.link.FlashErase();                     // no FindBoard: the frame goes out regardless
        QCOMPARE(tuple(f.line.TakeWritten(), BoardConnected), tuple(Hex("45454576"), true));
        f.link.MSComm.SetPortOpen(false);        // but not on a closed port
        f.link.FlashErase();
        QVERIFY(!BoardConnected && f.line.TakeWritten().isEmpty());
        QCOMPARE(tuple(f.reports.failures.size(), f.LastFailure()), tuple(3, LinkFailure::PortNotOpen));
    }

    void badRepliesLeaveTheCopyAloneAndLockNothing()
    {
        const QByteArray good = ScriptedMonitor::ReadReply(Hex("010203040506070809"));
        using F = LinkFailure;
        const struct { const char* operation; QByteArray reply; int delay; LinkFailure failure; } rows[] = {
            {"InStack", QByteArray(good).replace(3, 1, "\x55"), 0, F::InvalidData},   // bad sum
            {"InStack", "hello world", 0, F::InvalidData},
            {"InStack", good + "x", 0, F::NoResponse},                                 // one byte too long
            {"InStack", good.left(10), 0, F::NoResponse},                              // one byte short
            {"InStack", good, 150, F::NoResponse},                                     // past the time-out
            {"OutByte", Hex("15"), 0, F::InvalidData},                                 // NAK
            {"OutByte", Hex("0606"), 0, F::NoResponse},                                // two ACKs
            {"Programm", Hex("07"), 0, F::InvalidData},                                // some other byte
        };
        for (const auto& [operation, reply, delay, failure] : rows) {
            BoardFixture f;
            f.line.SetReplyDelay(std::uint32_t(delay));
            f.line.SetResponder([&](const QByteArray&) { return reply; });
            CpuRegisters.SP = 0x01F0;
            StackBuffer.fill(0x33);
            const std::uint32_t start = f.now;
            std::int32_t address = 0x2000;
            if (operation == QString("InStack"))
                f.link.InStack();
            else
                operation == QString("OutByte") ? f.link.OutByte(address, 1) : f.link.Programm(address, {1, 2}, 2);
            QVERIFY(failure != LinkFailure::NoResponse || f.now - start >= 100);   // the whole time-out was given
            QCOMPARE(tuple(StackBuffer[0], StackBuffer[8], BoardConnected, f.Idle()), tuple(0x33, 0x33, false, true));
            QCOMPARE(tuple(f.reports.failures.size(), f.LastFailure()), tuple(1, failure));
            QCOMPARE(f.reports.state, LinkState::NotResponding);

            // The next operation starts afresh, and empties away a reply that came too late.
            f.now += 100;
            f.line.SetReplyDelay(0);
            ScriptedMonitor board(f.line);
            board.memory[0x01F8] = 0xAA;
            f.link.InStack();
            QCOMPARE(tuple(BoardConnected, StackBuffer[8], f.reports.state), tuple(true, 0xAA, LinkState::Ready));
        }
    }

    void failedBlockEndsTheMemoryReadKeepingTheBlocksBefore()
    {
        BoardFixture f;
        int block = 0;
        f.line.SetResponder([&block](const QByteArray&) {
            QByteArray reply = ScriptedMonitor::ReadReply(QByteArray(256, char(++block)));
            if (block == 3)
                reply[5] = 0;
            return reply;
        });
        MemoryPage.fill(0xEE);
        f.link.InMemory();
        QCOMPARE(block, 3);                       // the fourth is never asked
        QCOMPARE(tuple(MemoryPage[511], MemoryPage[512]), tuple(2, 0xEE));
        QCOMPARE(tuple(f.reports.failures.size(), f.LastFailure()), tuple(1, LinkFailure::InvalidData));
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
        f.link.OutByte(address, 1);               // its poll lets the line's loss be handled
        QCOMPARE(tuple(f.line.IsOpen(), BoardConnected, f.LastFailure()), tuple(false, false, LinkFailure::NoResponse));
        QCOMPARE(f.reports.state, LinkState::NotConnected);

        // The next operation opens the port again.
        ScriptedMonitor board(f.line);
        board.memory[0x2000] = 0x77;
        std::uint8_t byte = 0;
        f.link.InByte(address, byte);
        QCOMPARE(tuple(byte, BoardConnected, f.line.OpenCount()), tuple(0x77, true, 2));
    }

    void eraseReplies()
    {
        using F = LinkFailure;
        const struct { QByteArray reply; int delay; std::optional<LinkFailure> failure; } rows[] = {
            {Hex("06"), 2900, {}},               // an ACK in time
            {Hex("06"), 3100, F::NoResponse},    // too late
            {Hex("15"), 0, F::EraseFailed},
            {Hex("42"), 0, F::EraseInvalidData},
        };
        for (const auto& [reply, delay, failure] : rows) {
            BoardFixture f;
            int passes = 0;
            DoEventsAction events([&passes] { ++passes; });
            f.line.SetReplyDelay(std::uint32_t(delay));
            f.line.SetResponder([&](const QByteArray&) { return reply; });
            BoardConnected = failure.has_value();
            f.link.FlashErase();
            QCOMPARE(tuple(BoardConnected, f.LastFailure(), f.Idle()), tuple(!failure, failure, true));
            QCOMPARE(f.reports.stateReports, 0);   // no BoardStatus on either path
            QVERIFY(delay == 0 || passes > 100);      // the window stays alive during a long erase
        }
    }
};

QTEST_MAIN(BoardExchangeTest)
#include "BoardExchange_test.moc"
