// The free run in-process: "X" hands the CPU to the user's program, whose SCI
// talks on the monitor's line, until a reset brings the monitor back.
#include <QtTest>

#include "BoardFrames.h"
#include "hc11board/Monitor.h"

using namespace hc11board;
using namespace boardtest;

namespace {
Bytes Send(Monitor& monitor, const Bytes& bytes)
{
    monitor.Receive(bytes, 0);
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

// A monitor with PrintProgram and its text loaded, started by "X".
void StartPrinting(Monitor& monitor, const std::string& text, const CpuRegisterRecord& regs = Regs())
{
    Bytes zeroTerminated(text.begin(), text.end());
    zeroTerminated.push_back(0);
    Send(monitor, WriteFrame(0x2000, PrintProgram));
    Send(monitor, WriteFrame(0x2020, zeroTerminated));
    // Only the ACK comes back with the frame: the program has not run yet.
    QCOMPARE(Send(monitor, ExecuteFrame(regs, 0x2000)), Bytes{Ack});
}
} // namespace

class BoardFreeRunTest : public QObject {
    Q_OBJECT
private slots:
    void executeRunsTheProgramAtTheSpeedOfTheWire()
    {
        Monitor monitor;
        const std::string text = "0123456789";
        StartPrinting(monitor, text);
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Running);
        const std::uint64_t start = monitor.Cpu().cycles;
        QCOMPARE(RunUntilOutput(monitor, text.size()), Bytes(text.begin(), text.end()));
        // Each byte waits for the one before to leave the shifter.
        QVERIFY(monitor.Cpu().cycles - start >= (text.size() - 1) * CyclesPerCharacter);
        // The code buffer held the jump, and the registers came from the frame.
        QCOMPARE(monitor.Memory().Peek(0x0009), std::uint8_t(0x7E));
        QCOMPARE(monitor.Cpu().regs.sp, std::uint16_t(0x01FF));
    }

    void framesDuringARunAreTheProgramsInput()
    {
        Monitor monitor;
        Send(monitor, WriteFrame(0x2100, EchoProgram));
        Send(monitor, ExecuteFrame(Regs(), 0x2100));
        // A read frame is not answered: its bytes reach the program one by one.
        const Bytes frame = ReadFrame(0x0000, 1);
        monitor.Receive(frame, 0);
        Bytes expected;
        for (std::uint8_t byte : frame)
            expected.push_back(std::uint8_t(byte + 1));
        QCOMPARE(RunUntilOutput(monitor, frame.size()), expected);
    }

    void resetEndsTheRunAndTheMonitorAnswersAgain()
    {
        Monitor monitor;
        StartPrinting(monitor, "x", Regs(0x55, 0x66, 0x1234, 0x5678, 0x0180, 0xC0));
        RunUntilOutput(monitor, 1);
        monitor.Reset();
        QCOMPARE(monitor.TakeOutput(), Bytes(ResetReport.begin(), ResetReport.end()));
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Listening);
        QCOMPARE(monitor.Run(1000), std::uint64_t(0));
        // RAM survives a reset; the monitor starts its save area afresh.
        QCOMPARE(Send(monitor, ReadFrame(0x2000, 1)), Reply({PrintProgram[0]}));
        QCOMPARE(Send(monitor, ReadFrame(0x0000, 9)), StepReply(Regs(0, 0, 0, 0, ResetStackPointer)));
    }

    void runThatReachesTheReturnPointRepliesAsAStep()
    {
        Monitor monitor;
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

    void receivedByteStaysUntilStatusThenDataAreRead()
    {
        Sci sci;
        sci.Receive('a');
        sci.Receive('b');
        sci.Advance(100);
        QCOMPARE(sci.ReadData(), std::uint8_t('a'));   // data alone does not clear RDRF
        QVERIFY(sci.Status() & scsr::RDRF);
        QVERIFY(sci.ReadStatus() & scsr::RDRF);
        QCOMPARE(sci.ReadData(), std::uint8_t('a'));
        QVERIFY(!(sci.Status() & scsr::RDRF));
        // The next byte follows a character time behind the first.
        sci.Advance(100 + CyclesPerCharacter - 1);
        QVERIFY(!(sci.Status() & scsr::RDRF));
        sci.Advance(100 + CyclesPerCharacter);
        QCOMPARE(sci.ReceivedData(), std::uint8_t('b'));
    }

    void monitorAccessHasNoSciSideEffects()
    {
        Monitor monitor;
        monitor.Memory().sci.Receive('q');
        monitor.Memory().sci.Advance(0);
        // The host reads status and data (a register window's refresh) ...
        QCOMPARE(Send(monitor, ReadFrame(ScsrAddress, 2)), Reply({scsr::TDRE | scsr::TC | scsr::RDRF, 'q'}));
        // ... and the program still finds its byte; a host write to SCDR sends nothing.
        QVERIFY(monitor.Memory().Peek(ScsrAddress) & scsr::RDRF);
        QCOMPARE(Send(monitor, WriteFrame(ScdrAddress, {'!'})), Bytes{Ack});
        QCOMPARE(monitor.Memory().Peek(ScdrAddress), std::uint8_t('q'));
    }
};

QTEST_APPLESS_MAIN(BoardFreeRunTest)
#include "BoardFreeRun_test.moc"
