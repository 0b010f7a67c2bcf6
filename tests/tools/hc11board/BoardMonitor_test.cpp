// The monitor in-process: frames in, exact reply bytes out, flash, the byte
// stream's faults, the code buffer stepped, the free run and the SCI.
#include <QtTest>

#include "BoardFrames.h"
#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"
#include "hc11board/Monitor.h"

#include <random>

using namespace hc11board;
using namespace boardtest;

namespace {
const Bytes AckOnly{Ack};
namespace scsr = hc11::chip::scsr;
constexpr std::uint16_t Sccr2Address = 0x1000 + hc11::chip::reg::SCCR2;
constexpr std::uint16_t ScsrAddress = 0x1000 + hc11::chip::reg::SCSR;
constexpr std::uint16_t ScdrAddress = 0x1000 + hc11::chip::reg::SCDR;
constexpr std::uint16_t SciVector = hc11::chip::VectorOf(hc11::chip::Source::Sci);
// One character of ten bits at 38400 bit/s, in cycles of the 2 MHz E clock:
// the monitor's SCI is no faster than the line.
constexpr std::uint64_t CyclesPerCharacter = 521;

Bytes Send(Monitor& monitor, const Bytes& bytes, std::uint64_t nowMs = 0)
{
    monitor.Receive(bytes, nowMs);
    return monitor.TakeOutput();
}

// Runs until the program has sent count bytes (or a generous limit passes).
Bytes RunUntilOutput(Monitor& monitor, std::size_t count)
{
    Bytes out;
    for (int slice = 0; slice < 200 && out.size() < count; ++slice) {
        monitor.Run(10000);
        const Bytes more = monitor.TakeOutput();
        out.insert(out.end(), more.begin(), more.end());
    }
    return out;
}

} // namespace

class BoardMonitorTest : public QObject {
    Q_OBJECT
private slots:
    void readsReplyWithDataAndChecksumAndWrapAtTheTop()
    {
        Monitor monitor;
        monitor.Memory().Poke(0x2000, 0x12);
        monitor.Memory().Poke(0x2001, 0xF0);
        QCOMPARE(Send(monitor, ReadFrame(0x2000, 2)), (Bytes{6, 0x12, 0xF0, 0xFE}));
        monitor.Memory().Poke(0x0000, 0xAB);
        const Bytes page = Send(monitor, ReadFrame(0xFF80, 256));   // count 0
        QCOMPARE(page.size(), std::size_t(258));
        QCOMPARE(page[1], std::uint8_t(0xFF));            // erased flash at $FF80
        QCOMPARE(page[1 + 0x80], std::uint8_t(0xAB));     // $0000
        QCOMPARE(page.back(), Reply(Bytes(page.begin() + 1, page.end() - 1)).back());
    }

    void programOnlyClearsFlashBitsAndEraseSetsThemAgain()
    {
        Monitor monitor;
        Board& memory = monitor.Memory();
        QCOMPARE(Send(monitor, ProgramFrame(0xFFFE, {0xE0, 0x00})), AckOnly);
        QCOMPARE(Send(monitor, ProgramFrame(0xFFFE, {0x0F})), AckOnly);
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0x00));   // $E0 AND $0F
        memory.Poke(0x3000, 0x0F);
        QCOMPARE(Send(monitor, ProgramFrame(0x3000, {0xF0})), AckOnly);   // outside: a plain write
        QCOMPARE(memory.Peek(0x3000), std::uint8_t(0xF0));
        // A store of the CPU reaches the flash and changes nothing.
        Send(monitor, StepFrame(Regs(0xFF), {0xB7, 0xFF, 0xFE}));   // STAA $FFFE
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0x00));

        QCOMPARE(Send(monitor, WriteFrame(0xDFFF, {0x42, 0x22})), AckOnly);   // RAM, then flash: left alone
        QCOMPARE(memory.Peek(0xE000), std::uint8_t(0xFF));
        QCOMPARE(Send(monitor, ToBytes(monitor::EraseFrame())), AckOnly);
        QVERIFY(memory.Peek(0xE000) == 0xFF && memory.Peek(0xFFFE) == 0xFF && memory.Peek(0xFFFF) == 0xFF);
        QVERIFY(memory.Peek(0xDFFF) == 0x42 && memory.Peek(0x3000) == 0xF0);
    }

    void eraseThatFailsAnswersNakAndOneThatTakesLongAnswersWhenDone()
    {
        Monitor failing(MonitorSettings{.eraseFails = true});
        Send(failing, ProgramFrame(0xE100, {0x12}));
        QCOMPARE(Send(failing, ToBytes(monitor::EraseFrame())), (Bytes{Nak}));
        QCOMPARE(failing.Memory().Peek(0xE100), std::uint8_t(0x12));

        Monitor slow(MonitorSettings{.eraseMs = 2900});
        QVERIFY(Send(slow, ToBytes(monitor::EraseFrame()), 1000).empty());
        QCOMPARE(slow.NextDeadlineMs().value_or(0), std::uint64_t(3900));
        QVERIFY(Send(slow, ReadFrame(0x0000, 1), 2000).empty());   // busy: lost
        slow.Service(3899);
        QVERIFY(slow.TakeOutput().empty());
        slow.Service(3900);
        QCOMPARE(slow.TakeOutput(), AckOnly);
        QVERIFY(!slow.NextDeadlineMs());
        QCOMPARE(Send(slow, ReadFrame(0xE000, 1), 4000), (Bytes{6, 0xFF, 0x01}));
    }

    void malformedAndIncompleteFramesGetNoReply()
    {
        Monitor monitor;
        const Bytes good = ReadFrame(0x4000, 1);
        const Bytes goodReply{6, 0, 0};
        Bytes badSum = good;
        badSum.back() ^= 0x01;
        QVERIFY(Send(monitor, badSum).empty());
        QCOMPARE(Send(monitor, good), goodReply);
        QVERIFY(Send(monitor, {0x00, 0xFF, 'r', 0x0D, 0x0A}).empty());   // noise: no command letters
        QCOMPARE(Send(monitor, good), goodReply);
        QVERIFY(Send(monitor, {'E', 'E', 'D', 0x77}).empty());   // right sum, but not "EEE"
        QVERIFY(monitor.Parser().Rejected() >= 2);

        // Half a write, then a pause: the next bytes start afresh.
        QVERIFY(Send(monitor, {'W', 0x40, 0x00, 0x05, 0xAA}, 100).empty());
        QCOMPARE(Send(monitor, good, 100 + FrameParser::SilenceMs + 1), goodReply);
        // Without the pause the same bytes are data of the frame.
        QVERIFY(Send(monitor, {'W', 0x40, 0x00, 0x05}, 500).empty());
        QVERIFY(Send(monitor, good, 500 + FrameParser::SilenceMs).empty());
        QVERIFY(monitor.Parser().InFrame());
    }

    void randomByteStreamsNeverBreakTheMonitor()
    {
        std::mt19937 random(20261123);
        const std::uint8_t letters[] = {'R', 'W', 'P', 'E', 'S', 'X'};   // many frames start
        for (int round = 0; round < 200; ++round) {
            Monitor monitor(MonitorSettings{.stepBudget = 20000});
            std::uint64_t now = 0;
            for (int i = 0; i < 2000; ++i, now += random() % 8 == 0 ? random() % 80 : 0) {
                const std::uint8_t byte = (random() % 4 == 0) ? letters[random() % 6] : std::uint8_t(random());
                monitor.Receive(&byte, 1, now);
                if (monitor.CurrentMode() == Monitor::Mode::Running)
                    monitor.Run(5000);
            }
            if (monitor.CurrentMode() == Monitor::Mode::Running)
                monitor.Reset();
            monitor.Service(now += 1000);
            monitor.TakeOutput();
            QCOMPARE(Send(monitor, WriteFrame(0x7000, {0x5A, 0xA5}), now), AckOnly);
            QCOMPARE(Send(monitor, ReadFrame(0x7000, 2), now), (Bytes{6, 0x5A, 0xA5, 0x01}));
        }
    }

    void stepRunsTheCodeBufferAndRepliesWithTheRegisters()
    {
        Monitor monitor;
        Send(monitor, StepFrame(Regs(0x9C, 0, 0, 0x4000), {0x18, 0xA7, 0x05}));   // STAA 5,Y
        QCOMPARE(monitor.Memory().Peek(0x4005), std::uint8_t(0x9C));
        // JSR to LDAB #7, INCB, RTS returns through the NOP at the buffer's end.
        Send(monitor, WriteFrame(0x3000, {0xC6, 0x07, 0x5C, 0x39}));
        QCOMPARE(Send(monitor, StepFrame(Regs(), {0xBD, 0x30, 0x00})), StepReply(Regs(0, 0x08)));
        QCOMPARE(monitor.Memory().Peek(0x01FF), std::uint8_t(0x0C));   // pushed: $000C
        // Output of a step goes out before its reply.
        Bytes expected{'k'};
        const Bytes reply = StepReply(Regs('k'));
        expected.insert(expected.end(), reply.begin(), reply.end());
        QCOMPARE(Send(monitor, StepFrame(Regs('k'), {0xB7, 0x10, 0x2F})), expected);   // STAA SCDR
    }

    void runawayStepIsGivenUpAndTheMonitorListensAgain()
    {
        Monitor monitor(MonitorSettings{.stepBudget = 100000});
        QVERIFY(Send(monitor, StepFrame(Regs(), {0x20, 0xFE})).empty());   // BRA *
        QCOMPARE(monitor.AbandonedSteps(), 1);
        QVERIFY(monitor.Cpu().cycles >= 100000);
        // A walk through illegal opcodes counts cycles too, so it ends as well.
        Bytes illegal(203, 0x41);
        illegal[200] = 0x7E;   // and round again: JMP $5000
        illegal[201] = 0x50;
        illegal[202] = 0x00;
        Send(monitor, WriteFrame(0x5000, illegal));
        QVERIFY(Send(monitor, StepFrame(Regs(), {0x7E, 0x50, 0x00})).empty());
        QVERIFY(Send(monitor, StepFrame(Regs(), {0x3E})).empty());   // WAI with nothing to wake it
        QCOMPARE(monitor.AbandonedSteps(), 3);
        QCOMPARE(Send(monitor, ReadFrame(0x5000, 1)), (Bytes{6, 0x41, 0xBF}));
    }

    void executeRunsAtTheSpeedOfTheWireUntilAReset()
    {
        Monitor monitor;
        const std::string text = "0123456789";
        Bytes zeroTerminated(text.begin(), text.end());
        zeroTerminated.push_back(0);
        Send(monitor, WriteFrame(0x2000, PrintProgram));
        Send(monitor, WriteFrame(0x2020, zeroTerminated));
        // Only the ACK comes back with the frame: the program has not run yet.
        QCOMPARE(Send(monitor, ExecuteFrame(Regs(0x55, 0x66, 0x1234, 0x5678, 0x0180, 0xC0), 0x2000)), AckOnly);
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Running);
        const std::uint64_t start = monitor.Cpu().cycles;
        QCOMPARE(RunUntilOutput(monitor, text.size()), Bytes(text.begin(), text.end()));
        // Each byte waits for the one before to leave the shifter.
        QVERIFY(monitor.Cpu().cycles - start >= (text.size() - 1) * CyclesPerCharacter);
        QCOMPARE(monitor.Cpu().regs.sp, std::uint16_t(0x0180));

        monitor.Reset();
        QCOMPARE(monitor.TakeOutput(), Bytes(ResetReport.begin(), ResetReport.end()));
        QCOMPARE(monitor.Run(1000), std::uint64_t(0));
        // RAM survives a reset; the monitor starts its save area afresh.
        QCOMPARE(Send(monitor, ReadFrame(0x2000, 1)), Reply({PrintProgram[0]}));
        QCOMPARE(Send(monitor, ReadFrame(0x0000, 9)), StepReply(Regs(0, 0, 0, 0, ResetStackPointer)));

        // A run that reaches the return point replies as a step and listens again.
        Send(monitor, WriteFrame(0x2000, {0x86, 0x31, 0x7E, 0x00, 0x0D}));   // LDAA #$31, JMP $000D
        Send(monitor, ExecuteFrame(Regs(), 0x2000));
        monitor.Run(1000);
        QCOMPARE(monitor.TakeOutput(), StepReply(Regs(0x31)));
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Listening);
    }

    void receiveInterruptRunsTheHandlerThroughTheSciVector()
    {
        Monitor monitor;
        // Handler at $2200: LDAA SCSR, LDAA SCDR, STAA $50, RTI. Main at $2300: CLI, BRA *.
        Send(monitor, WriteFrame(0x2200, {0xB6, 0x10, 0x2E, 0xB6, 0x10, 0x2F, 0x97, 0x50, 0x3B}));
        Send(monitor, WriteFrame(0x2300, {0x0E, 0x20, 0xFE}));
        Send(monitor, ProgramFrame(SciVector, {0x22, 0x00}));
        Send(monitor, WriteFrame(Sccr2Address, {0x2C}));   // RIE, TE, RE
        Send(monitor, ExecuteFrame(Regs(), 0x2300));
        monitor.Run(1000);
        QCOMPARE(monitor.Memory().Peek(0x0050), std::uint8_t(0));
        monitor.Receive(Bytes{'z'}, 0);
        monitor.Run(1000);
        QCOMPARE(monitor.Memory().Peek(0x0050), std::uint8_t('z'));
        QCOMPARE(monitor.Memory().Peek(ScsrAddress) & scsr::RDRF, 0);   // the handler cleared it
    }

    void monitorAccessHasNoSciSideEffects()
    {
        Monitor monitor;
        hc11::chip::Chip& chip = monitor.Memory().Hc11();
        chip.SciReceive('q');
        chip.RunUntil(chip.Cycles() + chip.SerialInterface().FrameCycles());
        // The host reads status and data (a register window's refresh) ...
        QCOMPARE(Send(monitor, ReadFrame(ScsrAddress, 2)), Reply({scsr::TDRE | scsr::TC | scsr::RDRF, 'q'}));
        // ... and the program still finds its byte; a host write to SCDR sends nothing.
        QVERIFY(monitor.Memory().Peek(ScsrAddress) & scsr::RDRF);
        QCOMPARE(Send(monitor, WriteFrame(ScdrAddress, {'!'})), Bytes{Ack});
        QCOMPARE(monitor.Memory().Peek(ScdrAddress), std::uint8_t('q'));
    }
};

QTEST_APPLESS_MAIN(BoardMonitorTest)
#include "BoardMonitor_test.moc"
