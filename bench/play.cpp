// Play as the simulator's run mode, on the simulated chip with its
// peripherals: simulated E-cycles per wall second, as a
// multiple of the board's 2 MHz E clock, on a loop that never ends by itself
// (straight-line code, a taken branch, a call and a return each round), with
// Pause from a timer after two seconds. Once with no tool window open, once
// with the CPU window, which follows every step; in that run also how late a
// 10 ms timer is served while Play keeps the program busy.
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <utility>
#include <vector>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/execution/ChipFreeRun.h"
#include "engine/state/TargetState.h"
#include "platform/SettingsStore.h"
#include "ui/main/frmMain.h"

namespace {
const std::vector<std::uint8_t> LoopProgram = {
    0x8E, 0x01, 0xFF,   // 2000 LDS  #$01FF
    0xCE, 0x00, 0x00,   // 2003 LDX  #0
    0x08,               // 2006 INX
    0x96, 0x10,         // 2007 LDAA $10
    0x8B, 0x03,         // 2009 ADDA #3
    0x97, 0x10,         // 200B STAA $10
    0xBD, 0x20, 0x20,   // 200D JSR  $2020
    0x8C, 0x00, 0x00,   // 2010 CPX  #0
    0x26, 0xF1,         // 2013 BNE  $2006
    0x20, 0xEF,         // 2015 BRA  $2006
};
const std::vector<std::uint8_t> Routine = {
    0x18, 0x08,         // 2020 INY
    0x39,               // 2022 RTS
};
constexpr int RunMs = 2000;

// Plays the loop from its start for RunMs; simulated E clock over wall time,
// and the worst lateness of a 10 ms timer meanwhile.
std::pair<double, double> PlayRealtime(frmMain& window)
{
    CpuRegisters.PC = 0x2000;
    ClockCount = 0;
    QElapsedTimer clock;
    QTimer::singleShot(RunMs, &window, [&window] { window.mnuRunPause_Click(); });
    clock.start();
    const TimerLateness lateness;
    window.mnuRunPlay_Click();
    const double seconds = clock.nsecsElapsed() / 1e9;
    return {ClockCount / seconds / ChipFreeRun::EClockHz, lateness.WorstMs()};
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    SaveSetting("Settings", "SimEnabled", "True");
    SaveSetting("Settings", "SimPeripherals", "True");
    frmMain window;
    window.MDIForm_Load();
    window.show();

    std::copy(LoopProgram.begin(), LoopProgram.end(), TargetMemory.begin() + 0x2000);
    std::copy(Routine.begin(), Routine.end(), TargetMemory.begin() + 0x2020);
    std::printf("play_realtime: %.1f x\n", PlayRealtime(window).first);
    window.Menu("mnuViewRegCPU")->trigger();
    if (!window.IsOpen("frmRegCPU")) {
        std::fprintf(stderr, "play: the CPU window did not open\n");
        return 1;
    }
    const auto [realtime, latenessMs] = PlayRealtime(window);
    std::printf("play_cpu_window_realtime: %.1f x\n", realtime);
    Print("play_event_latency_ms", latenessMs, "ms");
    return 0;
}
