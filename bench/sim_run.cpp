// The free run on the simulated chip at full speed, through the main window
// with the serial terminal open: a program that keeps the SCI sending lines
// to the terminal from its TDRE interrupt and takes an output compare
// interrupt every 1000 E cycles, around a main loop of mixed work. Pause
// comes from a timer after two seconds. sim_run_realtime is the E cycles run
// over the wall time, as a multiple of a 2 MHz board; sim_run_event_latency_ms
// the worst lateness of a 10 ms timer meanwhile.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "platform/SettingsStore.h"
#include "ui/main/frmMain.h"

namespace {
const char* const Program = R"(
        ORG     $2000
START   LDS     #$01FF
        LDX     #$1000
        LDAA    #$30            9600 baud
        STAA    $2B,X
        LDAA    #$88            TIE, TE
        STAA    $2D,X
        LDAA    #$40            OC2I
        STAA    $22,X
        CLI
OUTER   LDY     #$0100
LOOP    LDAA    0,Y
        ADDA    #3
        STAA    0,Y
        LDD     $40
        ADDD    #$0101
        STD     $40
        INY
        CPY     #$0180
        BNE     LOOP
        BRA     OUTER
SCIH    LDAA    $102E           status read, then the data write clears TDRE
        LDY     $42
        LDAA    0,Y
        BNE     SEND
        LDY     #TEXT
        LDAA    0,Y
SEND    STAA    $102F
        INY
        STY     $42
        RTI
OC2H    LDD     $1018
        ADDD    #1000
        STD     $1018
        LDAA    #$40
        STAA    $1023
        RTI
TEXT    FCC     "The quick brown fox jumps over the lazy dog"
        FCB     13,10,0
        ORG     $FFD6
        FDB     SCIH
        ORG     $FFE6
        FDB     OC2H
)";
constexpr int RunMs = 2000;
constexpr double EClockHz = 2'000'000.0;

void LoadS19(const std::string& s19)
{
    std::size_t at = 0;
    while ((at = s19.find("S1", at)) != std::string::npos) {
        const auto byte = [&](std::size_t i) { return std::uint8_t(std::stoul(s19.substr(i, 2), nullptr, 16)); };
        const int count = byte(at + 2);
        const unsigned address = unsigned(byte(at + 4)) << 8 | byte(at + 6);
        for (int i = 0; i < count - 3; ++i)
            TargetMemory[(address + i) & 0xFFFF] = byte(at + 8 + 2 * i);
        at += 2;
    }
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
    const auto assembled = hc11::as11::AssembleSource(Program);
    if (!assembled.errors.empty()) {
        std::fputs(assembled.ErrorFileText().c_str(), stderr);
        return 1;
    }
    LoadS19(assembled.s19);
    TargetMemory[0x42] = 0x00;   // the text pointer starts at a zero byte: the text from its start
    TargetMemory[0x43] = 0x00;
    window.Menu("mnuViewSerialTerminal")->trigger();
    if (!window.IsOpen("frmSerial")) {
        std::fprintf(stderr, "sim_run: the terminal did not open\n");
        return 1;
    }
    CpuRegisters.PC = 0x2000;
    ClockCount = 0;

    QEventLoop loop;
    QElapsedTimer clock;
    QTimer::singleShot(RunMs, &window, [&window, &loop] {
        window.mnuRunPause_Click();
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
    return 0;
}
