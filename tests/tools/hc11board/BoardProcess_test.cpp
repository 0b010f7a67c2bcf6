// The real hc11board program on a pseudo-terminal: its first line, frames,
// a reset from standard input, how it ends, and a ROM of
// our own (romtest.asm) running on the chip with the line on its SCI.
#include "BoardFrames.h"
#include "hc11/InstructionSet.h"
#include "support/BoardProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace boardtest;

namespace {
const Bytes Report{'\r', '\n', '>', 'B', 'B', 'B'};
constexpr int WaitMs = 5000;   // bounds a missing answer; no test measures time with it

void MakeRaw(int fd)
{
    termios settings{};
    tcgetattr(fd, &settings);
    cfmakeraw(&settings);
    tcsetattr(fd, TCSANOW, &settings);
}

// Reads until count bytes came or the line stayed quiet for quietMs.
Bytes ReadBytes(int fd, std::size_t count, int quietMs = WaitMs)
{
    Bytes in;
    std::uint8_t buffer[512];
    pollfd p{fd, POLLIN, 0};
    while (in.size() < count && poll(&p, 1, quietMs) > 0 && (p.revents & POLLIN)) {
        const ssize_t n = ::read(fd, buffer, std::min(sizeof buffer, count - in.size()));
        if (n <= 0)
            break;
        in.insert(in.end(), buffer, buffer + n);
    }
    return in;
}

// The host's end of a board process's line.
struct Board : BoardProcess {
    using BoardProcess::BoardProcess;
    ~Board() { Close(); }
    // Opens the line and waits until the program has seen the host: the first exchange answers.
    bool Connect() { return Open() && Exchange(ReadFrame(0xE000, 1), 3) == Bytes{6, 0xFF, 0x01}; }
    bool Open()
    {
        fd = ::open(DevicePath().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
        if (fd >= 0)
            MakeRaw(fd);
        return fd >= 0;
    }
    void Close()
    {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
    Bytes Exchange(const Bytes& frame, std::size_t replySize)
    {
        return ::write(fd, frame.data(), frame.size()) == ssize_t(frame.size()) ? ReadBytes(fd, replySize) : Bytes{};
    }
    void Command(const char* line)
    {
        Process().write(line);
        Process().waitForBytesWritten(WaitMs);
    }
    bool EndedCleanly()
    {
        return Process().waitForFinished(WaitMs) && Process().exitStatus() == QProcess::NormalExit
            && Process().exitCode() == 0;
    }
    int fd = -1;
};
} // namespace

class BoardProcessTest : public QObject {
    Q_OBJECT
private slots:
    // A free run that a reset ends, over this line, is the device windows' echo test's.
    void resetLinesOnStandardInputAndHostsThatLeave()
    {
        // With --stay, a host that leaves a reset report unread does not leave
        // it to the next, whose first frame is answered; SIGTERM ends the program.
        for (const QStringList& monitor : {QStringList{}, BoardProcess::Firmware()}) {
            Board board(monitor + QStringList{"--stay"});
            QVERIFY(board.Connect());
            QVERIFY(ReadBytes(board.fd, 1, 100).empty());   // nothing comes behind a reply
            QCOMPARE(board.Exchange(WriteFrame(0x3000, {0x42}), 1), Bytes{6});
            for (const char* line : {"reset\n", "  reset \r\n"}) {
                board.Command(line);
                QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
            }
            board.Command("reset\n");
            pollfd report{board.fd, POLLIN, 0};
            QCOMPARE(poll(&report, 1, WaitMs), 1);
            board.Close();
            QVERIFY(!board.Process().waitForFinished(300));
            QVERIFY(board.Connect());
            QCOMPARE(board.Exchange(ReadFrame(0x3000, 1), 3), (Bytes{6, 0x42, 0xBE}));
            board.Process().terminate();
            QVERIFY(board.EndedCleanly());
        }
        Board once;   // without --stay the program ends with its host
        QVERIFY(once.DevicePath().startsWith("/dev/pts/"));
        QVERIFY(once.Connect());
        once.Close();
        QVERIFY(once.EndedCleanly());
    }

    void servesANamedDevice()
    {
        int host = -1, device = -1;
        char name[128];
        QCOMPARE(openpty(&host, &device, name, nullptr, nullptr), 0);
        MakeRaw(host);
        Board board({"--device", name});
        QCOMPARE(board.DevicePath(), QString::fromLocal8Bit(name));
        QVERIFY(ReadBytes(host, 1, 200).empty());   // nothing unasked
        const Bytes frame = ReadFrame(0x0000, 9);
        QCOMPARE(::write(host, frame.data(), frame.size()), ssize_t(frame.size()));
        QCOMPARE(ReadBytes(host, 11), StepReply(Regs(0, 0, 0, 0, 0x00FF)));
        board.Process().terminate();
        QVERIFY(board.EndedCleanly());
        ::close(host);
        ::close(device);
    }

    void unusableCommandLineOrDeviceEndsTheProgram()
    {
        // Bad options exit with 2 (their reasons are the options test's), an unusable device with 1.
        const std::pair<QStringList, int> rows[] = {
            {{"--step-budget", "lots"}, 2}, {{"--rom", "/nonexistent.s19"}, 2}, {{"--device", "/nonexistent/tty"}, 1}};
        for (const auto& [arguments, code] : rows) {
            Board board(arguments);
            QVERIFY(board.DevicePath().isEmpty());
            board.Process().waitForFinished(WaitMs);   // if it has not ended already
            QCOMPARE(board.Process().state(), QProcess::NotRunning);
            QCOMPARE(board.Process().exitCode(), code);
        }
    }

    void romRunsFromItsResetVectorWithTheLineOnTheSci()
    {
        Board board({"--rom", ROMTEST_S19});
        QVERIFY(board.Open());
        // The loop from one TCNT read to the next: LDD ind,X; STD dir; LDAB imm;
        // then 100 times DECB, BNE. The E cycles of the instruction table
        // (reference manual, instruction set table), TCNT counting every E cycle.
        auto cycles = [](std::uint8_t opcode) { return int(hc11::FindInstruction(0, opcode)->cycles); };
        const int loop = cycles(0xEC) + cycles(0xDD) + cycles(0xC6) + 100 * (cycles(0x5A) + cycles(0x26));
        const std::string expected = "ROMTEST\r\nT=" + QString("%1").arg(loop, 4, 16, QChar('0')).toUpper().toStdString()
                                   + "\r\nWOKE\r\n";
        const Bytes greeting(expected.begin(), expected.end());
        // The board was on before the host came: its greeting went to no one.
        QVERIFY(ReadBytes(board.fd, 1, 200).empty());
        for (int press = 0; press < 2; ++press) {
            board.Command("reset\n");
            QCOMPARE(ReadBytes(board.fd, greeting.size()), greeting);
            // Typed characters come back from the receive interrupt, each at 9600 baud.
            QCOMPARE(board.Exchange({'a', 'Q', '!'}, 3), (Bytes{'A', 'q', 0x01}));
        }
        board.Close();
        QVERIFY(board.EndedCleanly());
    }
};

QTEST_GUILESS_MAIN(BoardProcessTest)
#include "BoardProcess_test.moc"
