// The monitor in-process: frames in, exact reply bytes out, flash, the byte
// stream's faults, the code buffer stepped, the free run and the SCI. The
// tests with both rows hold for the built-in monitor and for the monitor
// firmware alike.
#include "BoardUnderTest.h"
#include "hc11/chip/Interrupts.h"
#include "hc11/chip/RegisterMap.h"

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

} // namespace

class BoardMonitorTest : public QObject {
    Q_OBJECT
private slots:
    void readsReplyWithDataAndChecksumAndWrapAtTheTop_data() { BothMonitors(); }
    void readsReplyWithDataAndChecksumAndWrapAtTheTop()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        board.Hardware().Poke(0x0000, 0xAB);
        const Bytes page = board.Send(ReadFrame(0xFF80, 256));   // count 0
        QCOMPARE(page.size(), std::size_t(258));
        QCOMPARE(page[1], std::uint8_t(0xFF));            // erased flash at $FF80
        QCOMPARE(page[1 + 0x80], std::uint8_t(0xAB));     // $0000
        QCOMPARE(page.back(), Reply(Bytes(page.begin() + 1, page.end() - 1)).back());
    }

    void programOnlyClearsFlashBitsAndEraseSetsThemAgain_data() { BothMonitors(); }
    void programOnlyClearsFlashBitsAndEraseSetsThemAgain()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        Board& memory = board.Hardware();
        QCOMPARE(board.Send(ProgramFrame(0xFFFE, {0xE0, 0xF0})), AckOnly);
        QCOMPARE(board.Send(ProgramFrame(0xFFFE, {0x60})), AckOnly);
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0x60));   // bit 7 cleared
        memory.Poke(0x3000, 0x0F);
        QCOMPARE(board.Send(ProgramFrame(0x3000, {0xF0})), AckOnly);   // outside: a plain write
        QCOMPARE(memory.Peek(0x3000), std::uint8_t(0xF0));
        // Bits back to 1 are beyond programming: the part keeps the AND of
        // both and gives up, the monitor says NAK and leaves the next byte.
        QCOMPARE(board.Send(ProgramFrame(0xFFFE, {0x0F, 0x00})), (Bytes{Nak}));
        QCOMPARE(memory.Peek(0xFFFE), std::uint8_t(0x00));
        QCOMPARE(memory.Peek(0xFFFF), std::uint8_t(0xF0));

        QCOMPARE(board.Send(WriteFrame(0xDFFF, {0x42, 0x22})), AckOnly);   // RAM, then flash: left alone
        QCOMPARE(memory.Peek(0xE000), std::uint8_t(0xFF));
        QCOMPARE(board.Send(ToBytes(monitor::EraseFrame())), AckOnly);
        QVERIFY(memory.Peek(0xE000) == 0xFF && memory.Peek(0xFFFE) == 0xFF && memory.Peek(0xFFFF) == 0xFF);
        QVERIFY(memory.Peek(0xDFFF) == 0x42 && memory.Peek(0x3000) == 0xF0);
    }

    void eraseThatFailsAnswersNak_data() { BothMonitors(); }
    void eraseThatFailsAnswersNak()
    {
        QFETCH(bool, firmware);
        BoardUnderTest failing(firmware, MonitorSettings{.eraseFails = true});
        failing.Send(ProgramFrame(0xE100, {0x12}));
        QCOMPARE(failing.Send(ToBytes(monitor::EraseFrame())), (Bytes{Nak}));
        QCOMPARE(failing.Hardware().Peek(0xE100), std::uint8_t(0x12));
        QCOMPARE(failing.Send(ReadFrame(0xE100, 1)), (Bytes{6, 0x12, 0xEE}));   // the part reads again
    }

    void eraseThatTakesLongAnswersWhenDone()
    {
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

    void malformedAndIncompleteFramesGetNoReply_data() { BothMonitors(); }
    void malformedAndIncompleteFramesGetNoReply()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        const Bytes good = ReadFrame(0x4000, 1);
        const Bytes goodReply{6, 0, 0};
        Bytes badSum = good;
        badSum.back() ^= 0x01;
        QVERIFY(board.Send(badSum).empty());
        QCOMPARE(board.Send(good), goodReply);
        QVERIFY(board.Send({0x00, 0xFF, 'r', 0x0D, 0x0A}).empty());   // noise: no command letters
        QCOMPARE(board.Send(good), goodReply);
        QVERIFY(board.Send({'E', 'E', 'D', 0x77}).empty());   // right sum, but not "EEE"
        QCOMPARE(board.Send(good), goodReply);

        // Half a write, then a pause (the firmware's Send waits longer than
        // that for an answer): the next bytes start afresh.
        QVERIFY(board.Send({'W', 0x40, 0x00, 0x05, 0xAA}, 100).empty());
        QCOMPARE(board.Send(good, 100 + FrameParser::SilenceMs + 1), goodReply);
        // Without the pause the same bytes are data of the frame.
        board.Feed({'W', 0x40, 0x00, 0x05}, 500);
        QVERIFY(board.Send(good, 500 + FrameParser::SilenceMs).empty());
        if (!firmware)
            QVERIFY(board.BuiltIn().Parser().InFrame() && board.BuiltIn().Parser().Rejected() >= 2);
    }

    void stepRunsTheCodeBufferAndRepliesWithTheRegisters_data() { BothMonitors(); }
    void stepRunsTheCodeBufferAndRepliesWithTheRegisters()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        // JSR to LDAB #7, INCB, RTS returns through the NOP at the buffer's end.
        board.Send(WriteFrame(0x3000, {0xC6, 0x07, 0x5C, 0x39}));
        QCOMPARE(board.Send(StepFrame(Regs(), {0xBD, 0x30, 0x00})), StepReply(Regs(0, 0x08)));
        if (!firmware)   // the firmware's way back lies over it
            QCOMPARE(board.Hardware().Peek(0x01FF), std::uint8_t(0x0C));   // pushed: $000C
        // Output of a step goes out before its reply.
        Bytes expected{'k'};
        const Bytes reply = StepReply(Regs('k'));
        expected.insert(expected.end(), reply.begin(), reply.end());
        QCOMPARE(board.Send(StepFrame(Regs('k'), {0xB7, 0x10, 0x2F})), expected);   // STAA SCDR
        // An illegal opcode is passed over; every register comes back as it went.
        const CpuRegisterRecord all = Regs(0x80, 0x7F, 0xFFFF, 0x0001, 0x0345, 0xEF);
        QCOMPARE(board.Send(StepFrame(all, {0x41})), StepReply(all));
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

    void executeRunsAtTheSpeedOfTheWireUntilAReset_data() { BothMonitors(); }
    void executeRunsAtTheSpeedOfTheWireUntilAReset()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        const std::string text = "0123456789";
        Bytes zeroTerminated(text.begin(), text.end());
        zeroTerminated.push_back(0);
        board.Send(WriteFrame(0x2000, PrintProgram));
        board.Send(WriteFrame(0x2020, zeroTerminated));
        // Only the ACK comes back with the frame: the program has not run yet.
        QCOMPARE(board.Send(ExecuteFrame(Regs(0x55, 0x66, 0x1234, 0x5678, 0x0180, 0xC0), 0x2000)), AckOnly);
        QVERIFY(board.Program().FreeRunning());
        const std::uint64_t start = board.Cpu().cycles;
        QCOMPARE(board.RunFor(text.size()), Bytes(text.begin(), text.end()));
        // Each byte waits for the one before to leave the shifter.
        QVERIFY(board.Cpu().cycles - start >= (text.size() - 1) * CyclesPerCharacter);
        QCOMPARE(board.Cpu().regs.sp, std::uint16_t(0x0180));

        QCOMPARE(board.Reset(), Bytes(ResetReport.begin(), ResetReport.end()));
        if (!firmware)
            QCOMPARE(board.Program().Run(1000), std::uint64_t(0));
        // RAM survives a reset; the monitor starts its save area afresh.
        QCOMPARE(board.Send(ReadFrame(0x2000, 1)), Reply({PrintProgram[0]}));
        QCOMPARE(board.Send(ReadFrame(0x0000, 9)), StepReply(Regs(0, 0, 0, 0, ResetStackPointer)));

        // A run that reaches the return point replies as a step and listens again.
        board.Send(WriteFrame(0x2000, {0x86, 0x31, 0x7E, 0x00, 0x0D}));   // LDAA #$31, JMP $000D
        board.Send(ExecuteFrame(Regs(), 0x2000));
        QCOMPARE(board.RunFor(monitor::StepReplySize), StepReply(Regs(0x31)));
        QCOMPARE(board.Send(ReadFrame(0x2000, 1)), Reply({0x86}));
    }

    void receiveInterruptRunsTheHandlerThroughTheSciVector_data() { BothMonitors(); }
    void receiveInterruptRunsTheHandlerThroughTheSciVector()
    {
        QFETCH(bool, firmware);
        BoardUnderTest board(firmware);
        // Handler at $2200: LDAA SCSR, LDAA SCDR, STAA $50, RTI. Main at $2300: CLI, BRA *.
        board.Send(WriteFrame(0x2200, {0xB6, 0x10, 0x2E, 0xB6, 0x10, 0x2F, 0x97, 0x50, 0x3B}));
        board.Send(WriteFrame(0x2300, {0x0E, 0x20, 0xFE}));
        board.Send(ProgramFrame(SciVector, {0x22, 0x00}));
        board.Send(WriteFrame(Sccr2Address, {0x2C}));   // RIE, TE, RE
        board.Send(ExecuteFrame(Regs(), 0x2300));
        board.Program().Run(2000);
        QCOMPARE(board.Hardware().Peek(0x0050), std::uint8_t(0));
        board.Feed(Bytes{'z'});
        board.Program().Run(2000);
        QCOMPARE(board.Hardware().Peek(0x0050), std::uint8_t('z'));
        QCOMPARE(board.Hardware().Peek(ScsrAddress) & scsr::RDRF, 0);   // the handler cleared it
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
