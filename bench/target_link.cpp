// Round trips of the target operations over a pseudo-terminal to hc11board:
// a 256-byte read (InProgram) and a step ("S"), with the board answering at
// once and at the wire's pace, beside the time the reply takes on a 38400
// bit/s line. The difference is the host's own overhead. Then the monitor
// firmware (--rom monitor.s19): its image's size, and its step round trip
// against the paced built-in monitor's. The link runs on its own, without
// windows.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <cstdio>

#include "BenchFigures.h"
#include "engine/link/MonitorFrames.h"
#include "engine/link/TargetLink.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/S19Reader.h"
#include "platform/QtSerialDevice.h"

namespace {
constexpr double WireRead256Ms = 258 * 10 * 1000.0 / 38400;

// Every failure the link reports counts against the run.
struct CountedReports : LinkReports {
    int failures = 0;
    void LinkFailed(LinkFailure, const QString&) override { ++failures; }
    void LinkStateChanged(LinkState) override {}
    bool IoUnitShown() const override { return false; }
};

// One board process and the target link on its line.
struct BoardSession {
    QProcess board;
    TargetLink link;
    bool ready = false;

    BoardSession(const QStringList& arguments, CountedReports& reports) : link(reports)
    {
        const QString path = StartBoard(board, arguments);
        if (board.state() == QProcess::NotRunning)
            return;
        link.MSComm.SetDeviceFactory(
            [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
        link.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
        TargetMode = BoardMode;
        link.OpenPort(1);
        ProgramBase = 0xE000;
        link.InProgram();   // the first exchange also lets the board notice its host
        ready = BoardConnected;
    }
    ~BoardSession()
    {
        link.MSComm.SetPortOpen(false);
        board.terminate();
        board.waitForFinished(5000);
    }

    // A step of one instruction (INX) and its reply.
    void Step()
    {
        static const ExchangeRules rules{monitor::StepReplySize, ReplyCheck::Checksum, 1000, false};
        link.FindBoard();
        QByteArray reply;
        link.Exchange(monitor::StepFrame(CpuRegisters, {0x08, monitor::Nop, monitor::Nop, monitor::Nop}), rules, reply);
        link.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    }
};

QString FirmwareImage()
{
    return qEnvironmentVariable("ORVANE_PROGRAM_DIR", QStringLiteral(ORVANE_PROGRAM_DIR)) + QStringLiteral("/monitor.s19");
}

// The bytes the image puts into the board's EPROM.
int ImageBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    int bytes = 0;
    for (const hc11::as11::S19Block& block : hc11::as11::ReadS19(file.readAll().toStdString()).blocks)
        bytes += int(block.bytes.size());
    return bytes;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    CountedReports reports;

    double read256 = 0, step = 0, pacedRead256 = 0;
    {
        BoardSession session({}, reports);
        if (!session.ready)
            return 1;
        read256 = MeanMs(200, [&] { session.link.InProgram(); });
        CpuRegisters.SP = 0x01FF;
        step = MeanMs(200, [&] { session.Step(); });
    }
    double pacedStep = 0, firmwareStep = 0;
    {
        BoardSession session({QStringLiteral("--paced")}, reports);
        if (!session.ready)
            return 1;
        pacedRead256 = MeanMs(20, [&] { session.link.InProgram(); });
        pacedStep = MeanMs(100, [&] { session.Step(); });
    }
    {
        BoardSession session({QStringLiteral("--rom"), FirmwareImage()}, reports);
        if (!session.ready)
            return 1;
        firmwareStep = MeanMs(100, [&] { session.Step(); });
    }
    if (reports.failures != 0)
        return 1;

    Print("board_read256_ms", read256, "ms");
    Print("board_step_ms", step, "ms");
    Print("board_paced_read256_ms", pacedRead256, "ms");
    Print("wire_read256_ms", WireRead256Ms, "ms");
    Print("board_paced_overhead_pct", (pacedRead256 - WireRead256Ms) / WireRead256Ms * 100, "%");
    Print("board_paced_step_ms", pacedStep, "ms");
    Print("firmware_step_ms", firmwareStep, "ms");
    Print("firmware_step_ratio", firmwareStep / pacedStep, "x");
    std::printf("monitor_firmware_bytes: %d bytes\n", ImageBytes(FirmwareImage()));
    return 0;
}
