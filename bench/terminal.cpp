// The serial terminal during a free run on hc11board: a program on the board
// writes the alphabet and a line feed without end, and the terminal window
// shows it. Unpaced (--fast, the line at the host's speed) this gives the
// sustained rate the terminal takes; at the wire's pace (--paced) it checks
// that every line arrives whole and in order.
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "core/TargetState.h"
#include "platform/MsgBox.h"
#include "platform/QtSerialDevice.h"
#include "workspace/frmMain.h"
#include "workspace/frmSerial.h"

#include <QPlainTextEdit>

namespace {
constexpr std::int32_t ProgramAddress = 0x2000;
// LDS #$00FF; LDX #$1000; NEXT LDAA #'A'; WAIT BRCLR $2E,X,$80,WAIT;
// STAA $2F,X; INCA; CMPA #'Z'+1; BNE WAIT; LDAA #10; BRCLR $2E,X,$80,*;
// STAA $2F,X; BRA NEXT
const std::vector<std::uint8_t> Writer = {0x8E, 0x00, 0xFF, 0xCE, 0x10, 0x00, 0x86, 0x41, 0x1F, 0x2E,
                                          0x80, 0xFC, 0xA7, 0x2F, 0x4C, 0x81, 0x5B, 0x26, 0xF5, 0x86,
                                          0x0A, 0x1F, 0x2E, 0x80, 0xFC, 0xA7, 0x2F, 0x20, 0xE9};
const QString Alphabet = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ");

struct Run {
    double bytesPerSecond = 0;
    int brokenLines = -1;   // lines between the first and the last that are not the alphabet
};

Run FreeRun(const QStringList& arguments, int seconds)
{
    Run result;
    QProcess board;
    board.start(BoardProgram(), arguments);
    if (!board.waitForStarted(5000))
        return result;
    while (!board.canReadLine() && board.waitForReadyRead(5000)) {
    }
    const QString path = QString::fromLocal8Bit(board.readLine()).trimmed();
    {
        frmMain form;
        form.MSComm.SetDeviceFactory(
            [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
        form.MDIForm_Load();
        form.show();
        std::int32_t at = ProgramAddress;
        form.OutBytes(at, Writer, static_cast<std::int16_t>(Writer.size()));
        if (!BoardConnected)
            return result;
        auto* terminal = qobject_cast<frmSerial*>(form.LoadWindow(QStringLiteral("frmSerial")));
        qint64 received = 0;
        const auto display = form.SerialTerminalDisplay;
        form.SerialTerminalDisplay = [&](const QByteArray& bytes) {
            received += bytes.size();
            display(bytes);
        };
        CpuRegisters.PC = ProgramAddress;
        form.RunHC11();
        if (!BoardRunning)
            return result;
        QElapsedTimer clock;
        clock.start();
        QEventLoop loop;
        QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
        loop.exec();
        result.bytesPerSecond = static_cast<double>(received) / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
        QStringList lines = terminal->RichText->toPlainText().split(QLatin1Char('\n'));
        // The first line may have lost its head to the cap, the last is unfinished.
        lines = lines.mid(1, lines.size() - 2);
        result.brokenLines = static_cast<int>(std::count_if(lines.begin(), lines.end(),
                                                            [](const QString& l) { return l != Alphabet; }));
        form.MSComm.SetPortOpen(false);
    }
    board.terminate();
    board.waitForFinished(5000);
    return result;
}
// The window alone: Display fed with 256-byte blocks of alphabet lines, as
// fast as it takes them.
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
    for (qint64 sent = 0; sent < total; sent += block.size())
        terminal->Display(block);
    return static_cast<double>(total) / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    int failures = 0;
    CountMessageBoxesAsFailures(failures);
    const Run fast = FreeRun({QStringLiteral("--fast")}, 5);
    const Run paced = FreeRun({QStringLiteral("--paced")}, 10);
    const double display = DisplayOnly(4 << 20);
    if (failures != 0 || fast.brokenLines < 0 || paced.brokenLines < 0)
        return 1;
    Print("terminal_bytes_per_s", fast.bytesPerSecond, "bytes/s");
    Print("terminal_broken_lines", fast.brokenLines, "lines");
    Print("terminal_paced_bytes_per_s", paced.bytesPerSecond, "bytes/s");
    Print("terminal_display_bytes_per_s", display, "bytes/s");
    Print("terminal_paced_broken_lines", paced.brokenLines, "lines");
    return 0;
}
