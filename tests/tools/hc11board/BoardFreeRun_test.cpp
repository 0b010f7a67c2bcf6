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

void Load(Monitor& monitor, std::uint16_t address, const Bytes& code)
{
    QCOMPARE(Send(monitor, DataFrame('W', address, code)), Bytes{Ack});
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

Monitor StartPrinting(const std::string& text)
{
    Monitor monitor;
    Load(monitor, 0x2000, PrintProgram);
    Bytes zeroTerminated(text.begin(), text.end());
    zeroTerminated.push_back(0);
    Load(monitor, 0x2020, zeroTerminated);
    return monitor;
}

} // namespace

class BoardFreeRunTest : public QObject {
    Q_OBJECT
private slots:
    void executeAcknowledgesThenTheProgramTalks()
    {
        Monitor monitor = StartPrinting("Hi!");
        // Only the ACK comes back with the frame: the program has not run yet.
        QCOMPARE(Send(monitor, ExecuteFrame(Regs{}, 0x2000)), Bytes{Ack});
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Running);
        QCOMPARE(RunUntilOutput(monitor, 3), (Bytes{'H', 'i', '!'}));
        // The code buffer held the jump, and the registers came from the frame.
        QCOMPARE(monitor.Memory().Peek(0x0009), std::uint8_t(0x7E));
        QCOMPARE(monitor.Cpu().regs.sp, std::uint16_t(0x01FF));
    }

    void polledOutputKeepsTheSpeedOfTheWire()
    {
        const std::string text = "0123456789";
        Monitor monitor = StartPrinting(text);
        Send(monitor, ExecuteFrame(Regs{}, 0x2000));
        const std::uint64_t start = monitor.Cpu().cycles;
        QCOMPARE(RunUntilOutput(monitor, text.size()), Bytes(text.begin(), text.end()));
        // Each byte waits for the one before to leave the shifter.
        QVERIFY(monitor.Cpu().cycles - start >= (text.size() - 1) * CyclesPerCharacter);
    }

    void framesDuringARunAreTheProgramsInput()
    {
        Monitor monitor;
        Load(monitor, 0x2100, EchoProgram);
        Send(monitor, ExecuteFrame(Regs{}, 0x2100));
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
        Monitor monitor = StartPrinting("x");
        Send(monitor, ExecuteFrame(Regs{0x55, 0x66, 0x1234, 0x5678, 0x0180, 0xC0}, 0x2000));
        RunUntilOutput(monitor, 1);
        monitor.Reset();
        QCOMPARE(monitor.TakeOutput(), Bytes(ResetReport.begin(), ResetReport.end()));
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Listening);
        QCOMPARE(monitor.Run(1000), std::uint64_t(0));

        // RAM survives a reset; the monitor starts its save area afresh.
        QCOMPARE(Send(monitor, ReadFrame(0x2000, 1)), (Bytes{Ack, PrintProgram[0], std::uint8_t(-PrintProgram[0])}));
        QCOMPARE(Send(monitor, ReadFrame(0x0000, 9)), StepReply(Regs{0, 0, 0, 0, ResetStackPointer, 0xD0}));
    }

    void resetReportEndsInThreeLetters()
    {
        QVERIFY(ResetReport.size() >= 6);
        QCOMPARE(std::string(ResetReport.end() - 3, ResetReport.end()), std::string("BBB"));
        // Exactly six bytes: a host that waits for six sees it whole in one block.
        QCOMPARE(ResetReport.size(), std::size_t(6));
    }

    void runThatReachesTheReturnPointRepliesAsAStep()
    {
        Monitor monitor;
        // $2000: LDAA #$31, JMP $000D
        Load(monitor, 0x2000, {0x86, 0x31, 0x7E, 0x00, 0x0D});
        Send(monitor, ExecuteFrame(Regs{}, 0x2000));
        monitor.Run(1000);
        Regs after;
        after.a = 0x31;
        QCOMPARE(monitor.TakeOutput(), StepReply(after));
        QCOMPARE(monitor.CurrentMode(), Monitor::Mode::Listening);
    }

    void receiveInterruptRunsTheHandlerThroughTheSciVector()
    {
        Monitor monitor;
        // Handler at $2200: LDAA SCSR, LDAA SCDR, STAA $50, RTI.
        Load(monitor, 0x2200, {0xB6, 0x10, 0x2E, 0xB6, 0x10, 0x2F, 0x97, 0x50, 0x3B});
        // Main at $2300: CLI, BRA *.
        Load(monitor, 0x2300, {0x0E, 0x20, 0xFE});
        QCOMPARE(Send(monitor, DataFrame('P', SciVector, {0x22, 0x00})), Bytes{Ack});
        Load(monitor, Sccr2Address, {0x2C});   // RIE, TE, RE
        Send(monitor, ExecuteFrame(Regs{}, 0x2300));
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
        QVERIFY(sci.Status() & scsr::RDRF);
        // Data alone does not clear RDRF; status then data does.
        QCOMPARE(sci.ReadData(), std::uint8_t('a'));
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

    void transmitterHoldsOneByteBehindTheShifter()
    {
        Sci sci;
        sci.Advance(1000);
        QCOMPARE(sci.Status(), std::uint8_t(scsr::TDRE | scsr::TC));
        sci.WriteData('1');
        QCOMPARE(sci.lineOutput, Bytes{'1'});
        QCOMPARE(sci.Status(), scsr::TDRE);   // shifting, data register free
        sci.WriteData('2');
        QCOMPARE(sci.Status(), std::uint8_t(0));
        QCOMPARE(sci.lineOutput.size(), std::size_t(1));
        sci.Advance(1000 + CyclesPerCharacter);
        QCOMPARE(sci.lineOutput, (Bytes{'1', '2'}));
        QCOMPARE(sci.Status(), scsr::TDRE);
        sci.Advance(1000 + 2 * CyclesPerCharacter);
        QCOMPARE(sci.Status(), std::uint8_t(scsr::TDRE | scsr::TC));
    }

    void monitorAccessHasNoSciSideEffects()
    {
        Monitor monitor;
        monitor.Memory().sci.Receive('q');
        monitor.Memory().sci.Advance(0);
        // The host reads status and data (a register window's refresh) ...
        QCOMPARE(Send(monitor, ReadFrame(ScsrAddress, 2)),
                 WithChecksum({Ack, scsr::TDRE | scsr::TC | scsr::RDRF, 'q'}));
        // ... and the program still finds its byte; a host write to SCDR sends nothing.
        QVERIFY(monitor.Memory().Peek(ScsrAddress) & scsr::RDRF);
        QCOMPARE(Send(monitor, DataFrame('W', ScdrAddress, {'!'})), Bytes{Ack});
        QCOMPARE(monitor.Memory().Peek(ScdrAddress), std::uint8_t('q'));
    }
};

QTEST_APPLESS_MAIN(BoardFreeRunTest)
#include "BoardFreeRun_test.moc"
