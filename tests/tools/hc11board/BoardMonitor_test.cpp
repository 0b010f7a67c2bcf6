// The monitor in-process: frames in, exact reply bytes out, the flash as real
// flash behaves, the byte stream's faults, and the code buffer stepped.
#include <QtTest>

#include "BoardFrames.h"
#include "hc11board/Monitor.h"

#include <random>

using namespace hc11board;
using namespace boardtest;

namespace {

Bytes Send(Monitor& monitor, const Bytes& bytes, std::uint64_t nowMs = 0)
{
    monitor.Receive(bytes, nowMs);
    return monitor.TakeOutput();
}

Bytes AckOnly() { return {Ack}; }

bool SumsToZero(const Bytes& reply)
{
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < reply.size(); ++i)
        sum = std::uint8_t(sum + reply[i]);
    return sum == 0;
}

} // namespace

class BoardMonitorTest : public QObject {
    Q_OBJECT
private slots:
    void readRepliesWithDataAndChecksum()
    {
        Monitor monitor;
        monitor.Memory().Poke(0x2000, 0x12);
        monitor.Memory().Poke(0x2001, 0xF0);
        QCOMPARE(Send(monitor, ReadFrame(0x2000, 2)), (Bytes{6, 0x12, 0xF0, 0xFE}));

        // The host's own example: one byte at $1000 is 52 10 00 01 EF.
        QCOMPARE(ReadFrame(0x1000, 1), (Bytes{0x52, 0x10, 0x00, 0x01, 0xEF}));
        const Bytes reply = Send(monitor, {0x52, 0x10, 0x00, 0x01, 0xEF});
        QCOMPARE(reply.size(), std::size_t(3));
        QVERIFY(SumsToZero(reply));
    }

    void readOfCountZeroIsAPageAndWrapsAtTheTop()
    {
        Monitor monitor;
        monitor.Memory().Poke(0x0000, 0xAB);   // lands behind $FFFF
        const Bytes reply = Send(monitor, ReadFrame(0xFF80, 0));
        QCOMPARE(reply.size(), std::size_t(258));
        QVERIFY(SumsToZero(reply));
        QCOMPARE(reply[1], std::uint8_t(0xFF));            // erased flash at $FF80
        QCOMPARE(reply[1 + 0x80], std::uint8_t(0xAB));     // $0000
    }

    void saveAreaHoldsTheResetRegisters()
    {
        Monitor monitor;
        const Bytes reply = Send(monitor, ReadFrame(0x0000, 9));
        QCOMPARE(reply, StepReply(Regs{0, 0, 0, 0, ResetStackPointer, 0xD0}));
    }

    void writeChangesRamRegistersAndPiaButNotFlash()
    {
        Monitor monitor;
        QCOMPARE(Send(monitor, DataFrame('W', 0x4000, {1, 2, 3})), AckOnly());
        QCOMPARE(Send(monitor, DataFrame('W', 0x1004, {0x5A})), AckOnly());
        QCOMPARE(Send(monitor, DataFrame('W', 0x1809, {0x77})), AckOnly());
        QCOMPARE(Send(monitor, DataFrame('W', 0xDFFF, {0x11, 0x22})), AckOnly());   // RAM, then flash
        QCOMPARE(Send(monitor, ReadFrame(0x4000, 3)), (Bytes{6, 1, 2, 3, 0xFA}));
        BoardMemory& memory = monitor.Memory();
        QCOMPARE(memory.Peek(0x1004), std::uint8_t(0x5A));
        QCOMPARE(memory.Peek(0x1809), std::uint8_t(0x77));
        QCOMPARE(memory.Peek(0xDFFF), std::uint8_t(0x11));
        QCOMPARE(memory.Peek(0xE000), std::uint8_t(0xFF));

        // A write of no bytes is still a frame, and acknowledged.
        QCOMPARE(Send(monitor, DataFrame('W', 0x4000, {})), AckOnly());
    }

    void programOnlyClearsFlashBitsAndEraseSetsThemAgain()
    {
        Monitor monitor;
        BoardMemory& memory = monitor.Memory();
        QCOMPARE(Send(monitor, DataFrame('P', 0xFFFE, {0xE0, 0x00})), AckOnly());
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0xE0));
        // Programming again can only clear: $E0 AND $0F is 0, not $0F.
        QCOMPARE(Send(monitor, DataFrame('P', 0xFFFE, {0x0F})), AckOnly());
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0x00));

        // Outside the flash "P" is a plain write, in both directions.
        memory.Poke(0x3000, 0x0F);
        QCOMPARE(Send(monitor, DataFrame('P', 0x3000, {0xF0})), AckOnly());
        QCOMPARE(memory.Peek(0x3000), std::uint8_t(0xF0));

        memory.Poke(0xDFFF, 0x42);
        QCOMPARE(Send(monitor, EraseFrame()), AckOnly());
        QCOMPARE(memory.Peek(0xE000), std::uint8_t(0xFF));
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0xFF));
        QCOMPARE(memory.Peek(0xFFFF), std::uint8_t(0xFF));
        QCOMPARE(memory.Peek(0xDFFF), std::uint8_t(0x42));
        QCOMPARE(memory.Peek(0x3000), std::uint8_t(0xF0));
    }

    void programStoreCannotChangeFlashEither()
    {
        Monitor monitor;
        Send(monitor, DataFrame('P', 0xE000, {0x00}));
        Regs r;
        // STAA $E000 with A = $FF: the store reaches flash and changes nothing.
        r.a = 0xFF;
        Send(monitor, StepFrame(r, {0xB7, 0xE0, 0x00}));
        QCOMPARE(monitor.Memory().Peek(0xE000), std::uint8_t(0x00));
    }

    void failingEraseAnswersNakAndKeepsTheFlash()
    {
        Monitor monitor(MonitorSettings{.eraseFails = true});
        Send(monitor, DataFrame('P', 0xE100, {0x12}));
        QCOMPARE(Send(monitor, EraseFrame()), (Bytes{Nak}));
        QCOMPARE(monitor.Memory().Peek(0xE100), std::uint8_t(0x12));
    }

    void slowEraseAnswersWhenDoneAndIgnoresBytesMeanwhile()
    {
        Monitor monitor(MonitorSettings{.eraseMs = 2900});
        QVERIFY(Send(monitor, EraseFrame(), 1000).empty());
        QCOMPARE(monitor.NextDeadlineMs().value_or(0), std::uint64_t(3900));
        QVERIFY(Send(monitor, ReadFrame(0x0000, 1), 2000).empty());   // busy: lost
        monitor.Service(3899);
        QVERIFY(monitor.TakeOutput().empty());
        monitor.Service(3900);
        QCOMPARE(monitor.TakeOutput(), AckOnly());
        QVERIFY(!monitor.NextDeadlineMs());
        QCOMPARE(Send(monitor, ReadFrame(0xE000, 1), 4000), (Bytes{6, 0xFF, 0x01}));
    }

    void malformedFramesGetNoReplyAndTheNextFrameIsAnswered()
    {
        Monitor monitor;
        const Bytes good = ReadFrame(0xE000, 1);
        const Bytes goodReply{6, 0xFF, 0x01};

        Bytes badSum = ReadFrame(0xE000, 1);
        badSum.back() ^= 0x01;
        QVERIFY(Send(monitor, badSum).empty());
        QCOMPARE(Send(monitor, good), goodReply);

        // Noise between frames: not command letters, so nothing starts.
        QVERIFY(Send(monitor, {0x00, 0xFF, 'r', 0x0D, 0x0A}).empty());
        QCOMPARE(Send(monitor, good), goodReply);

        // An erase frame with the right sum but not "EEE" is no erase.
        Send(monitor, DataFrame('P', 0xE000, {0x00}));
        QVERIFY(Send(monitor, {'E', 'E', 'D', 0x77}).empty());
        QCOMPARE(monitor.Memory().Peek(0xE000), std::uint8_t(0x00));
        QVERIFY(monitor.Parser().Rejected() >= 2);
    }

    void incompleteFrameIsDroppedAfterSilence()
    {
        Monitor monitor;
        const Bytes good = ReadFrame(0x4000, 1);
        // Half a write, then a pause: the next bytes start afresh.
        QVERIFY(Send(monitor, {'W', 0x40, 0x00, 0x05, 0xAA}, 100).empty());
        QCOMPARE(Send(monitor, good, 100 + FrameParser::SilenceMs + 1), (Bytes{6, 0, 0}));
        QCOMPARE(monitor.Memory().Peek(0x4000), std::uint8_t(0));

        // Without the pause the same bytes are data of the frame: no reply
        // until its checksum, and the read's bytes were swallowed.
        QVERIFY(Send(monitor, {'W', 0x40, 0x00, 0x05}, 500).empty());
        QVERIFY(Send(monitor, good, 500 + FrameParser::SilenceMs).empty());
        QVERIFY(monitor.Parser().InFrame());
    }

    void randomByteStreamsNeverBreakTheMonitor()
    {
        std::mt19937 random(20261123);
        MonitorSettings settings;
        settings.stepBudget = 20000;
        for (int round = 0; round < 200; ++round) {
            Monitor monitor(settings);
            std::uint64_t now = 0;
            // Streams rich in command letters, so that many frames start.
            const std::uint8_t letters[] = {'R', 'W', 'P', 'E', 'S', 'X'};
            for (int i = 0; i < 2000; ++i) {
                const std::uint8_t byte = (random() % 4 == 0) ? letters[random() % 6] : std::uint8_t(random());
                now += random() % 8 == 0 ? random() % 80 : 0;
                monitor.Receive(&byte, 1, now);
                if (monitor.CurrentMode() == Monitor::Mode::Running)
                    monitor.Run(5000);
            }
            monitor.TakeOutput();
            if (monitor.CurrentMode() == Monitor::Mode::Running)
                monitor.Reset();
            monitor.Service(now + 1000);
            monitor.TakeOutput();
            now += 1000;
            QCOMPARE(Send(monitor, DataFrame('W', 0x7000, {0x5A, 0xA5}), now), AckOnly());
            QCOMPARE(Send(monitor, ReadFrame(0x7000, 2), now), (Bytes{6, 0x5A, 0xA5, 0x01}));
        }
    }

    void stepRunsTheCodeBufferAndRepliesWithTheRegisters()
    {
        Monitor monitor;
        Regs r{0x11, 0x22, 0x3344, 0x5566, 0x01FF, 0xD0};
        // LDAA #$80: A becomes $80, N set, Z and V clear.
        Regs after = r;
        after.a = 0x80;
        after.ccr = 0xD8;
        QCOMPARE(Send(monitor, StepFrame(r, {0x86, 0x80})), StepReply(after));
        // The save area and the code buffer hold what the frame and the step left.
        QCOMPARE(Send(monitor, ReadFrame(0x0000, 13)),
                 WithChecksum({6, 0x80, 0x22, 0x33, 0x44, 0x55, 0x66, 0x01, 0xFF, 0xD8, 0x86, 0x80, 0x01, 0x01}));
    }

    void stepStoresThroughTheBusAndKeepsThePrefixedForms()
    {
        Monitor monitor;
        Regs r;
        r.a = 0x9C;
        r.iy = 0x4000;
        Send(monitor, StepFrame(r, {0x18, 0xA7, 0x05}));   // STAA 5,Y
        QCOMPARE(monitor.Memory().Peek(0x4005), std::uint8_t(0x9C));
    }

    void stepOverACallReturnsThroughTheNopAtTheEnd()
    {
        Monitor monitor;
        // $3000: LDAB #7, INCB, RTS
        Send(monitor, DataFrame('W', 0x3000, {0xC6, 0x07, 0x5C, 0x39}));
        Regs r;
        r.sp = 0x01FF;
        Regs after = r;
        after.b = 0x08;
        after.ccr = 0xD0;
        QCOMPARE(Send(monitor, StepFrame(r, {0xBD, 0x30, 0x00, 0x01})), StepReply(after));
        // The return address the JSR pushed is $000C, behind the three bytes.
        QCOMPARE(monitor.Memory().Peek(0x01FE), std::uint8_t(0x00));
        QCOMPARE(monitor.Memory().Peek(0x01FF), std::uint8_t(0x0C));
    }

    void runawayStepIsGivenUpAndTheMonitorListensAgain()
    {
        MonitorSettings settings;
        settings.stepBudget = 100000;
        Monitor monitor(settings);
        Regs r;
        QVERIFY(Send(monitor, StepFrame(r, {0x20, 0xFE})).empty());   // BRA *
        QCOMPARE(monitor.AbandonedSteps(), 1);
        QVERIFY(monitor.Cpu().cycles >= settings.stepBudget);

        // A walk through illegal opcodes counts cycles too, so it ends as well.
        Bytes illegal(203, 0x41);
        illegal[200] = 0x7E;   // and round again: JMP $5000
        illegal[201] = 0x50;
        illegal[202] = 0x00;
        Send(monitor, DataFrame('W', 0x5000, illegal));
        QVERIFY(Send(monitor, StepFrame(r, {0x7E, 0x50, 0x00})).empty());
        QCOMPARE(monitor.AbandonedSteps(), 2);

        // WAI with nothing to wake it waits out the budget.
        QVERIFY(Send(monitor, StepFrame(r, {0x3E})).empty());
        QCOMPARE(monitor.AbandonedSteps(), 3);
        QCOMPARE(Send(monitor, ReadFrame(0x5000, 1)), (Bytes{6, 0x41, 0xBF}));
    }

    void stepThatPrintsSendsItsOutputBeforeTheReply()
    {
        Monitor monitor;
        Regs r;
        r.a = 'k';
        Regs after = r;
        after.ccr = 0xD0;
        Bytes expected{'k'};
        const Bytes reply = StepReply(after);
        expected.insert(expected.end(), reply.begin(), reply.end());
        QCOMPARE(Send(monitor, StepFrame(r, {0xB7, 0x10, 0x2F})), expected);   // STAA SCDR
    }
};

QTEST_APPLESS_MAIN(BoardMonitorTest)
#include "BoardMonitor_test.moc"
