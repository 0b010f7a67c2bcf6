// The free run on the simulated chip through the main window with the serial
// terminal open, on the program of ChipProgram.h (the SCI sends to the
// terminal all the while), each run ended by Pause from a timer after two
// seconds. At full speed: sim_run_realtime is the E cycles run over the wall
// time, as a multiple of a 2 MHz board; sim_run_event_latency_ms the worst
// lateness of a 10 ms timer meanwhile; sim_run_pause_latency_ms how long
// after its time the Pause timer ended the run. Paced:
// sim_run_paced_realtime, which the wall clock holds at 1.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>
#include <memory>
#include <utility>

#include "BenchFigures.h"
#include "ChipProgram.h"
#include "HeadlessApp.h"
#include "engine/execution/ChipFreeRun.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "platform/SettingsStore.h"
#include "ui/main/frmMain.h"

namespace {
constexpr int RunMs = 2000;

// Runs the program from its start for ms, Pause from a timer: the E cycles
// run over the wall time as a multiple of 2 MHz, and how long after its time
// the Pause timer ended the run.
std::pair<double, double> RunFor(frmMain& window, int ms)
{
    CpuRegisters.PC = 0xE000;
    ClockCount = 0;
    QEventLoop loop;
    QElapsedTimer clock;
    double pauseLateMs = 0;
    QTimer::singleShot(ms, Qt::PreciseTimer, &window, [&] {
        window.mnuRunPause_Click();
        pauseLateMs = clock.nsecsElapsed() / 1e6 - ms;
        loop.quit();
    });
    clock.start();
    window.mnuRunRun_Click();
    loop.exec();
    const double seconds = clock.nsecsElapsed() / 1e9;
    return {double(ClockCount) / seconds / ChipFreeRun::EClockHz, pauseLateMs};
}
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

    auto lateness = std::make_unique<TimerLateness>();
    const auto [fullSpeed, pauseLateMs] = RunFor(window, RunMs);
    const double eventLateMs = lateness->WorstMs();
    lateness.reset();
    if (BoardRunning) {
        std::fprintf(stderr, "sim_run: Pause did not stop the run\n");
        return 1;
    }
    window.mnuRunFullSpeed_Click();
    std::printf("sim_run_realtime: %.1f x\n", fullSpeed);
    Print("sim_run_event_latency_ms", eventLateMs, "ms");
    Print("sim_run_pause_latency_ms", pauseLateMs, "ms");
    std::printf("sim_run_paced_realtime: %.3f x\n", RunFor(window, RunMs).first);
    return 0;
}
