// The serial terminal during a free run on hc11board: a program on the board
// writes the alphabet and a line feed without end, and echoes at once every
// byte it receives. The terminal window shows what comes.
//
// Unpaced (--fast, the line at the host's speed) this gives the sustained rate
// the terminal takes, how late a 10 ms timer is served meanwhile and the
// processor time the program spends: the flood must leave the rest of the
// program responsive. At the wire's pace (--paced) every byte is checked to
// come once and in order, and keys typed into the window during the run are
// timed until their echo is back (median and maximum): the round trip is an
// upper bound of the time a key takes to reach the board. The paced run lasts
// 10 s, or the seconds in ORVANE_BENCH_PACED_S (60 for the one-minute run).
#include <QEventLoop>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <deque>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "platform/QtSerialDevice.h"
#include "ui/main/frmMain.h"
#include "ui/devices/frmSerial.h"

namespace {
constexpr std::int32_t ProgramAddress = 0x2000;
//       LDS #$00FF; LDX #$1000
// NEXT  LDAA #'A'
// LOOP  BRCLR $2E,X,$20,SEND      nothing received
//       LDAB $2F,X
// ECHO  BRCLR $2E,X,$80,ECHO; STAB $2F,X
// SEND  BRCLR $2E,X,$80,SEND; STAA $2F,X
//       CMPA #10; BEQ NEXT
//       INCA; CMPA #'Z'+1; BNE LOOP
//       LDAA #10; BRA LOOP
const std::vector<std::uint8_t> Writer = {
    0x8E, 0x00, 0xFF, 0xCE, 0x10, 0x00, 0x86, 0x41, 0x1F, 0x2E, 0x20, 0x08, 0xE6, 0x2F,
    0x1F, 0x2E, 0x80, 0xFC, 0xE7, 0x2F, 0x1F, 0x2E, 0x80, 0xFC, 0xA7, 0x2F, 0x81, 0x0A,
    0x27, 0xE8, 0x4C, 0x81, 0x5B, 0x26, 0xE5, 0x86, 0x0A, 0x20, 0xE1};
const QString Alphabet = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
constexpr int KeyEveryMs = 250;

bool IsEcho(char c)
{
    return c >= 'a' && c <= 'z';
}

// The writer's stream as it arrives: every byte that is not the one due
// counts, so a lost byte counts once and two swapped bytes twice.
struct StreamCheck {
    char due = 'A';
    qint64 faults = 0;

    void Take(char c)
    {
        if (c != due)
            ++faults;
        due = c == '\n' ? 'A' : c == 'Z' ? '\n' : static_cast<char>(c + 1);
    }
};

// Keys typed into the window, and the time until each one's echo is back.
struct Keys {
    std::deque<std::pair<char, QElapsedTimer>> pending;
    std::vector<double> latenciesMs;
    int wrongEchoes = 0;
    int typed = 0;

    void Type(QWidget* target)
    {
        const char key = static_cast<char>('a' + typed++ % 26);
        QElapsedTimer clock;
        clock.start();
        pending.emplace_back(key, clock);
        // Posted, so the key waits behind whatever the window is busy with.
        QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, Qt::Key_A + (key - 'a'),
                                                           Qt::NoModifier, QString(QLatin1Char(key))));
    }
    void Echoed(char c)
    {
        if (pending.empty() || pending.front().first != c) {
            ++wrongEchoes;
            return;
        }
        latenciesMs.push_back(static_cast<double>(pending.front().second.nsecsElapsed()) / 1e6);
        pending.pop_front();
    }
    double MedianMs()
    {
        if (latenciesMs.empty())
            return -1;
        std::sort(latenciesMs.begin(), latenciesMs.end());
        return latenciesMs[latenciesMs.size() / 2];
    }
    double MaxMs() const
    {
        return latenciesMs.empty() ? -1 : *std::max_element(latenciesMs.begin(), latenciesMs.end());
    }
};

struct Run {
    bool ok = false;
    double bytesPerSecond = 0;
    qint64 streamFaults = 0;
    int brokenLines = 0;   // lines on the screen that are not the alphabet
    int screenLines = 0;
    int backlog = 0;       // bytes still in the receive buffer at the end
    double worstTimerLatenessMs = 0;
    double cpuSecondsPerSecond = 0;
    Keys keys;
};

Run FreeRun(const QStringList& arguments, int seconds, bool typeKeys)
{
    Run result;
    QProcess board;
    const QString path = StartBoard(board, arguments);
    if (board.state() == QProcess::NotRunning)
        return result;
    {
        frmMain form;
        form.MSComm.SetDeviceFactory(
            [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
        form.MDIForm_Load();
        form.show();
        std::int32_t at = ProgramAddress;
        form.Link().OutBytes(at, Writer, static_cast<std::int16_t>(Writer.size()));
        if (!BoardConnected)
            return result;
        auto* terminal = qobject_cast<frmSerial*>(form.LoadWindow(QStringLiteral("frmSerial")));
        qint64 received = 0;
        StreamCheck stream;
        const auto display = form.SerialTerminalDisplay;
        form.SerialTerminalDisplay = [&](const QByteArray& bytes) {
            received += bytes.size();
            for (const char c : bytes) {
                if (IsEcho(c))
                    result.keys.Echoed(c);
                else
                    stream.Take(c);
            }
            display(bytes);
        };
        CpuRegisters.PC = ProgramAddress;
        form.mnuRunRun_Click();
        if (!BoardRunning)
            return result;
        QTimer typing;
        QObject::connect(&typing, &QTimer::timeout, [&] { result.keys.Type(terminal->RichText); });
        if (typeKeys)
            typing.start(KeyEveryMs);
        QElapsedTimer clock;
        clock.start();
        const TimerLateness lateness;
        const std::clock_t cpuStart = std::clock();
        QEventLoop loop;
        // The last key has half a second for its echo.
        QTimer::singleShot(seconds * 1000 - 500, &typing, &QTimer::stop);
        QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
        loop.exec();
        result.bytesPerSecond = static_cast<double>(received) / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
        result.worstTimerLatenessMs = lateness.WorstMs();
        result.cpuSecondsPerSecond = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC /
                                     (static_cast<double>(clock.nsecsElapsed()) / 1e9);
        result.streamFaults = stream.faults;
        result.backlog = form.MSComm.InBufferCount();
        QStringList lines = terminal->RichText->toPlainText().split(QLatin1Char('\n'));
        result.screenLines = static_cast<int>(lines.size());
        // The first line may have lost its head to the cap, the last is unfinished.
        lines = lines.mid(1, lines.size() - 2);
        result.brokenLines = static_cast<int>(std::count_if(lines.begin(), lines.end(), [](QString l) {
            l.removeIf([](QChar c) { return IsEcho(c.toLatin1()); });
            return l != Alphabet;
        }));
        // A line that closed on its own would leave a run that merely looks slow.
        result.ok = form.MSComm.PortOpen();
        if (!result.ok)
            std::fprintf(stderr, "terminal: the port closed during the free run\n");
        form.MSComm.SetPortOpen(false);
    }
    board.terminate();
    board.waitForFinished(5000);
    return result;
}

// The window alone: Display fed with 256-byte blocks of alphabet lines, as
// fast as it takes them, with the events (and so the window's redraws) let
// run after each block, until the control shows the last of them.
double DisplayOnly(qint64 total)
{
    frmMain form;
    form.MDIForm_Load();
    form.show();
    auto* terminal = qobject_cast<frmSerial*>(form.LoadWindow(QStringLiteral("frmSerial")));
    QByteArray block;
    while (block.size() < 256)
        block += Alphabet.toLatin1() + '\n';
    block.truncate(256);
    QElapsedTimer clock;
    clock.start();
    for (qint64 sent = 0; sent < total; sent += block.size()) {
        terminal->Display(block);
        QCoreApplication::processEvents();
    }
    // The document counts one position more than the text: its last block's end.
    while (terminal->RichText->document()->characterCount() != terminal->Screen().Text().size() + 1 &&
           clock.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return static_cast<double>(total) / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    int failures = 0;
    CountMessageBoxesAsFailures(failures);
    bool pacedSet = false;
    const int pacedSeconds = qEnvironmentVariableIntValue("ORVANE_BENCH_PACED_S", &pacedSet);
    Run fast = FreeRun({QStringLiteral("--fast")}, 5, false);
    Run paced = FreeRun({QStringLiteral("--paced")}, pacedSet && pacedSeconds > 0 ? pacedSeconds : 10, true);
    const double display = DisplayOnly(4 << 20);
    if (failures != 0 || !fast.ok || !paced.ok)
        return 1;
    Print("terminal_bytes_per_s", fast.bytesPerSecond, "bytes/s");
    Print("terminal_lost_or_reordered", static_cast<double>(fast.streamFaults), "bytes");
    Print("terminal_broken_lines", fast.brokenLines, "lines");
    Print("terminal_screen_lines", fast.screenLines, "lines");
    Print("terminal_flood_event_latency_ms", fast.worstTimerLatenessMs, "ms");
    Print("terminal_flood_cpu_s_per_s", fast.cpuSecondsPerSecond, "s/s");
    Print("terminal_paced_bytes_per_s", paced.bytesPerSecond, "bytes/s");
    Print("terminal_paced_lost_or_reordered", static_cast<double>(paced.streamFaults), "bytes");
    Print("terminal_paced_broken_lines", paced.brokenLines, "lines");
    Print("terminal_paced_screen_lines", paced.screenLines, "lines");
    Print("terminal_paced_backlog", paced.backlog, "bytes");
    Print("terminal_keystrokes", static_cast<double>(paced.keys.latenciesMs.size()), "keys");
    Print("terminal_keystrokes_unanswered",
          static_cast<double>(paced.keys.pending.size()) + paced.keys.wrongEchoes, "keys");
    Print("terminal_keystroke_latency_ms", paced.keys.MedianMs(), "ms");
    Print("terminal_keystroke_latency_max_ms", paced.keys.MaxMs(), "ms");
    Print("terminal_display_bytes_per_s", display, "bytes/s");
    return 0;
}
