// Round trips of the target operations over a pseudo-terminal to hc11board:
// a 256-byte read (InProgram) and a step ("S"), with the board answering at
// once and at the wire's pace, beside the time the reply takes on a 38400
// bit/s line. The difference is the host's own overhead.
#include <QElapsedTimer>
#include <QProcess>
#include <cstdio>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/MsgBox.h"
#include "platform/QtSerialDevice.h"
#include "engine/link/MonitorFrames.h"
#include "ui/main/frmMain.h"

namespace {
constexpr double WireRead256Ms = 258 * 10 * 1000.0 / 38400;

// One board process and a main window on its line.
struct Link {
    QProcess board;
    frmMain form;
    bool ready = false;

    explicit Link(const QStringList& arguments)
    {
        const QString path = StartBoard(board, arguments);
        if (board.state() == QProcess::NotRunning)
            return;
        form.MSComm.SetDeviceFactory(
            [path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
        form.MDIForm_Load();
        ProgramBase = 0xE000;
        form.InProgram();   // the first exchange also lets the board notice its host
        ready = BoardConnected;
    }
    ~Link()
    {
        form.MSComm.SetPortOpen(false);
        board.terminate();
        board.waitForFinished(5000);
    }
};

} // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    int failures = 0;
    CountMessageBoxesAsFailures(failures);

    double read256 = 0, step = 0, pacedRead256 = 0;
    {
        Link link({});
        if (!link.ready)
            return 1;
        read256 = MeanMs(200, [&] { link.form.InProgram(); });
        CpuRegisters.SP = 0x01FF;
        const ExchangeRules stepRules{monitor::StepReplySize, ReplyCheck::Checksum, 1000, false};
        step = MeanMs(200, [&] {
            link.form.FindBoard();
            QByteArray reply;
            const QByteArray frame = monitor::StepFrame(CpuRegisters, {0x08, monitor::Nop, monitor::Nop, monitor::Nop});
            link.form.Exchange(frame, stepRules, reply);
            link.form.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
        });
    }
    {
        Link link({QStringLiteral("--paced")});
        if (!link.ready)
            return 1;
        pacedRead256 = MeanMs(20, [&] { link.form.InProgram(); });
    }
    if (failures != 0)
        return 1;

    Print("board_read256_ms", read256, "ms");
    Print("board_step_ms", step, "ms");
    Print("board_paced_read256_ms", pacedRead256, "ms");
    Print("wire_read256_ms", WireRead256Ms, "ms");
    Print("board_paced_overhead_pct", (pacedRead256 - WireRead256Ms) / WireRead256Ms * 100, "%");
    return 0;
}
