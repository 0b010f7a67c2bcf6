// The free run on the simulated chip at full speed, through the main window
// with the serial terminal open, on the program of ChipProgram.h (the SCI
// sends to the terminal all the while). Pause comes from a timer after two
// seconds. sim_run_realtime is the E cycles run over the wall time, as a
// multiple of a 2 MHz board; sim_run_event_latency_ms the worst lateness of a
// 10 ms timer meanwhile; sim_run_pause_latency_ms how long after its time the
// Pause timer ended the run.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>

#include "BenchFigures.h"
#include "ChipProgram.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "platform/SettingsStore.h"
#include "ui/main/frmMain.h"

namespace {
constexpr int RunMs = 2000;
constexpr double EClockHz = 2'000'000.0;
} // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    SaveSetting("Settings", "SimEnabled", "True");
    SaveSetting("Settings", "SimPeripherals", "True");
    SaveSetting("Settings", "FullSpeed", "True");
    frmMain window;
    window.MDIForm_Load();
    window.show();
    const auto assembled = hc11::as11::AssembleSource(bench::Program);
    if (!assembled.errors.empty()) {
        std::fputs(assembled.ErrorFileText().c_str(), stderr);
        return 1;
    }
    bench::LoadS19(assembled.s19, TargetMemory.data());
    window.Menu("mnuViewSerialTerminal")->trigger();
    if (!window.IsOpen("frmSerial")) {
        std::fprintf(stderr, "sim_run: the terminal did not open\n");
        return 1;
    }
    CpuRegisters.PC = 0xE000;
    ClockCount = 0;

    QEventLoop loop;
    QElapsedTimer clock;
    double pauseLateMs = 0;
    QTimer::singleShot(RunMs, Qt::PreciseTimer, &window, [&] {
        window.mnuRunPause_Click();
        pauseLateMs = clock.nsecsElapsed() / 1e6 - RunMs;
        loop.quit();
    });
    const TimerLateness lateness;
    clock.start();
    window.mnuRunRun_Click();
    loop.exec();
    const double seconds = clock.nsecsElapsed() / 1e9;
    if (BoardRunning) {
        std::fprintf(stderr, "sim_run: Pause did not stop the run\n");
        return 1;
    }
    std::printf("sim_run_realtime: %.1f x\n", static_cast<std::uint32_t>(ClockCount) / seconds / EClockHz);
    Print("sim_run_event_latency_ms", lateness.WorstMs(), "ms");
    Print("sim_run_pause_latency_ms", pauseLateMs, "ms");
    return 0;
}
