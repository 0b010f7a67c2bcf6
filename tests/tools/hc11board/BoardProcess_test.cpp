// The real hc11board program on a pseudo-terminal: its first line, frames
// over the line, the free run, resets by signal and by standard input, pacing,
// and how it ends.
#include <QtTest>

#include "BoardFrames.h"

#include <QProcess>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

using namespace boardtest;

namespace {

const Bytes Report{'\r', '\n', '>', 'B', 'B', 'B'};
// Bounds for a missing answer; no test measures time with them.
constexpr int WaitMs = 5000;

QString ProgramPath()
{
    return qEnvironmentVariable("ORVANE_PROGRAM_DIR") + "/hc11board";
}

int OpenRaw(const QString& path)
{
    const int fd = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    if (fd >= 0) {
        termios settings{};
        tcgetattr(fd, &settings);
        cfmakeraw(&settings);
        tcsetattr(fd, TCSANOW, &settings);
    }
    return fd;
}

// Reads until count bytes came or the line stayed quiet for quietMs.
Bytes ReadBytes(int fd, std::size_t count, int quietMs = WaitMs)
{
    Bytes in;
    while (in.size() < count) {
        pollfd p{fd, POLLIN, 0};
        if (poll(&p, 1, quietMs) <= 0 || !(p.revents & POLLIN))
            break;
        std::uint8_t buffer[512];
        const ssize_t n = ::read(fd, buffer, std::min(sizeof buffer, count - in.size()));
        if (n <= 0)
            break;
        in.insert(in.end(), buffer, buffer + n);
    }
    return in;
}

// One board process and the host's end of its line.
class Board {
public:
    explicit Board(const QStringList& arguments = {})
    {
        process.start(ProgramPath(), arguments);
        if (!process.waitForStarted(WaitMs))
            return;
        while (!process.canReadLine() && process.waitForReadyRead(WaitMs)) {
        }
        path = QString::fromLocal8Bit(process.readLine()).trimmed();
    }
    ~Board()
    {
        Close();
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(WaitMs);
        }
    }

    bool Connect()
    {
        fd = OpenRaw(path);
        return fd >= 0;
    }
    void Close()
    {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
    void Write(const Bytes& bytes) { QCOMPARE(::write(fd, bytes.data(), bytes.size()), ssize_t(bytes.size())); }
    Bytes Exchange(const Bytes& frame, std::size_t replySize)
    {
        Write(frame);
        return ReadBytes(fd, replySize);
    }
    // Waits until the program has seen the host: the first exchange answers.
    bool Ready() { return Exchange(ReadFrame(0xE000, 1), 3) == Bytes{6, 0xFF, 0x01}; }
    void Command(const char* line)
    {
        process.write(line);
        process.waitForBytesWritten(WaitMs);
    }
    void Signal(int number) { ::kill(pid_t(process.processId()), number); }
    bool Ended() { return process.waitForFinished(WaitMs) && process.exitStatus() == QProcess::NormalExit; }

    QProcess process;
    QString path;
    int fd = -1;
};

} // namespace

class BoardProcessTest : public QObject {
    Q_OBJECT
private slots:
    void firstLineNamesTheLineAndFramesAreAnswered()
    {
        Board board;
        QVERIFY(board.path.startsWith("/dev/pts/"));
        QVERIFY(board.Connect());
        QVERIFY(board.Ready());
        QCOMPARE(board.Exchange(DataFrame('W', 0x2000, {0xDE, 0xAD}), 1), Bytes{6});
        QCOMPARE(board.Exchange(ReadFrame(0x2000, 2), 4), (Bytes{6, 0xDE, 0xAD, 0x75}));
        const Bytes page = board.Exchange(ReadFrame(0x1F02, 0), 258);
        QCOMPARE(page.size(), std::size_t(258));
        QCOMPARE(page[0xFF], std::uint8_t(0xDE));   // $2000
        QCOMPARE(page[0x100], std::uint8_t(0xAD));
        // Nothing comes behind a reply.
        QVERIFY(ReadBytes(board.fd, 1, 100).empty());
    }

    void flashAndStepOverTheLine()
    {
        Board board;
        QVERIFY(board.Connect() && board.Ready());
        QCOMPARE(board.Exchange(DataFrame('P', 0xFFFE, {0xE0, 0x00}), 1), Bytes{6});
        QCOMPARE(board.Exchange(DataFrame('W', 0xFFFE, {0x12, 0x34}), 1), Bytes{6});
        QCOMPARE(board.Exchange(ReadFrame(0xFFFE, 2), 4), (Bytes{6, 0xE0, 0x00, 0x20}));
        QCOMPARE(board.Exchange(EraseFrame(), 1), Bytes{6});
        QCOMPARE(board.Exchange(ReadFrame(0xFFFE, 2), 4), (Bytes{6, 0xFF, 0xFF, 0x02}));

        Regs r;
        r.b = 0x7F;
        Regs after = r;
        after.b = 0x80;
        after.ccr = 0xDA;   // INCB: N and V
        QCOMPARE(board.Exchange(StepFrame(r, {0x5C}), 11), StepReply(after));
    }

    void garbageAndBrokenFramesAreSkipped()
    {
        Board board;
        QVERIFY(board.Connect() && board.Ready());
        Bytes bad = ReadFrame(0x2000, 4);
        bad.back() ^= 0x80;
        board.Write({0x00, 0xFF, 0x13, 0x37});
        board.Write(bad);
        board.Write({'W', 0x20, 0x00});   // a frame cut short ...
        QVERIFY(ReadBytes(board.fd, 1, 200).empty());   // ... and a pause
        QCOMPARE(board.Exchange(ReadFrame(0x2000, 1), 3), (Bytes{6, 0, 0}));
    }

    void freeRunEchoesAndASignalResetEndsIt()
    {
        Board board;
        QVERIFY(board.Connect() && board.Ready());
        QCOMPARE(board.Exchange(DataFrame('W', 0x2100, EchoProgram), 1), Bytes{6});
        QCOMPARE(board.Exchange(ExecuteFrame(Regs{}, 0x2100), 1), Bytes{6});
        QCOMPARE(board.Exchange({'a', 'R'}, 2), (Bytes{'b', 'S'}));

        board.Signal(SIGUSR1);
        QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
        // The monitor is back: frames are answered, not echoed.
        QCOMPARE(board.Exchange(ReadFrame(0x2100, 1), 3), (Bytes{6, 0xF6, 0x0A}));
    }

    void resetLineOnStandardInputSendsTheReport()
    {
        Board board;
        QVERIFY(board.Connect() && board.Ready());
        board.Command("reset\n");
        QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
        board.Command("  reset \r\n");
        QCOMPARE(ReadBytes(board.fd, Report.size()), Report);
    }

    void pacedOutputArrivesWhole()
    {
        Board board({"--paced"});
        QVERIFY(board.Connect() && board.Ready());
        const Bytes page = board.Exchange(ReadFrame(0xE000, 0), 258);
        QCOMPARE(page.size(), std::size_t(258));
        QVERIFY(std::all_of(page.begin() + 1, page.end() - 1, [](std::uint8_t b) { return b == 0xFF; }));
    }

    void endsWhenTheHostClosesTheLine()
    {
        Board board;
        QVERIFY(board.Connect() && board.Ready());
        board.Close();
        QVERIFY(board.Ended());
        QCOMPARE(board.process.exitCode(), 0);
    }

    void stayServesTheNextHostAndSigtermEndsIt()
    {
        Board board({"--stay"});
        QVERIFY(board.Connect() && board.Ready());
        QCOMPARE(board.Exchange(DataFrame('W', 0x3000, {0x42}), 1), Bytes{6});
        board.Close();
        QVERIFY(!board.process.waitForFinished(300));
        QVERIFY(board.Connect() && board.Ready());
        QCOMPARE(board.Exchange(ReadFrame(0x3000, 1), 3), (Bytes{6, 0x42, 0xBE}));

        board.process.terminate();
        QVERIFY(board.Ended());
        QCOMPARE(board.process.exitCode(), 0);
    }

    void servesANamedDevice()
    {
        int host = -1, device = -1;
        char name[128];
        QCOMPARE(openpty(&host, &device, name, nullptr, nullptr), 0);
        termios settings{};
        tcgetattr(host, &settings);
        cfmakeraw(&settings);
        tcsetattr(host, TCSANOW, &settings);

        Board board({"--device", name});
        QCOMPARE(board.path, QString::fromLocal8Bit(name));
        QVERIFY(ReadBytes(host, 1, 200).empty());   // nothing unasked
        ::write(host, ReadFrame(0x0000, 9).data(), 5);
        QCOMPARE(ReadBytes(host, 11), StepReply(Regs{0, 0, 0, 0, 0x00FF, 0xD0}));
        board.process.terminate();
        QVERIFY(board.Ended());
        QCOMPARE(board.process.exitCode(), 0);
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
