// The real hc11board program on a pseudo-terminal: its first line, frames,
// the free run and a reset from standard input, and how it ends.
#include <QtTest>

#include "BoardFrames.h"

#include <QProcess>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace boardtest;

namespace {
const Bytes Report{'\r', '\n', '>', 'B', 'B', 'B'};
constexpr int WaitMs = 5000;   // bounds a missing answer; no test measures time with it

QString ProgramPath() { return qEnvironmentVariable("ORVANE_PROGRAM_DIR") + "/hc11board"; }

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

// One board process and the host's end of its line.
struct Board {
    explicit Board(const QStringList& arguments = {})
    {
        process.start(ProgramPath(), arguments);
        if (process.waitForStarted(WaitMs))
            while (!process.canReadLine() && process.waitForReadyRead(WaitMs)) {
            }
        path = QString::fromLocal8Bit(process.readLine()).trimmed();
    }
    ~Board()
    {
        Close();
        process.kill();
        process.waitForFinished(WaitMs);
    }
    // Opens the line and waits until the program has seen the host: the first exchange answers.
    bool Connect()
    {
        fd = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
        if (fd >= 0)
            MakeRaw(fd);
        return fd >= 0 && Exchange(ReadFrame(0xE000, 1), 3) == Bytes{6, 0xFF, 0x01};
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
        process.write(line);
        process.waitForBytesWritten(WaitMs);
    }
    bool EndedCleanly()
    {
        return process.waitForFinished(WaitMs) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    QProcess process;
    QString path;
    int fd = -1;
};
} // namespace

class BoardProcessTest : public QObject {
    Q_OBJECT
private slots:
    void writeThenAFreeRunUntilAResetLineThenTheHostCloses()
    {
        Board board;
        QVERIFY(board.path.startsWith("/dev/pts/"));
        QVERIFY(board.Connect());
        QCOMPARE(board.Exchange(WriteFrame(0x2100, EchoProgram), 1), Bytes{6});
        QVERIFY(ReadBytes(board.fd, 1, 100).empty());   // nothing comes behind a reply
        QCOMPARE(board.Exchange(ExecuteFrame(Regs(), 0x2100), 1), Bytes{6});
        QCOMPARE(board.Exchange({'a', 'R'}, 2), (Bytes{'b', 'S'}));
        board.Command("reset\n");
        QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
        // The monitor is back: frames are answered, not echoed.
        QCOMPARE(board.Exchange(ReadFrame(0x2100, 1), 3), (Bytes{6, 0xF6, 0x0A}));
        board.Command("  reset \r\n");
        QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
        board.Close();
        QVERIFY(board.EndedCleanly());
    }

    void stayServesTheNextHostAndSigtermEndsIt()
    {
        Board board({"--stay"});
        QVERIFY(board.Connect());
        QCOMPARE(board.Exchange(WriteFrame(0x3000, {0x42}), 1), Bytes{6});
        board.Close();
        QVERIFY(!board.process.waitForFinished(300));
        QVERIFY(board.Connect());
        QCOMPARE(board.Exchange(ReadFrame(0x3000, 1), 3), (Bytes{6, 0x42, 0xBE}));
        board.process.terminate();
        QVERIFY(board.EndedCleanly());
    }

    void servesANamedDevice()
    {
        int host = -1, device = -1;
        char name[128];
        QCOMPARE(openpty(&host, &device, name, nullptr, nullptr), 0);
        MakeRaw(host);
        Board board({"--device", name});
        QCOMPARE(board.path, QString::fromLocal8Bit(name));
        QVERIFY(ReadBytes(host, 1, 200).empty());   // nothing unasked
        const Bytes frame = ReadFrame(0x0000, 9);
        QCOMPARE(::write(host, frame.data(), frame.size()), ssize_t(frame.size()));
        QCOMPARE(ReadBytes(host, 11), StepReply(Regs(0, 0, 0, 0, 0x00FF)));
        board.process.terminate();
        QVERIFY(board.EndedCleanly());
        ::close(host);
        ::close(device);
    }

    void badCommandLineIsRefused()
    {
        QProcess process;
        process.start(ProgramPath(), {"--step-budget", "lots"});
        QVERIFY(process.waitForFinished(WaitMs));
        QCOMPARE(process.exitCode(), 2);
        QVERIFY(process.readAllStandardError().contains("--step-budget needs a whole number"));
        process.start(ProgramPath(), {"--device", "/nonexistent/tty"});
        QVERIFY(process.waitForFinished(WaitMs));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardOutput().isEmpty());
    }
};

QTEST_GUILESS_MAIN(BoardProcessTest)
#include "BoardProcess_test.moc"
