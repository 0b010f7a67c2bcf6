// The disassembly page: how long one redraw of the open window takes (what
// Animate and every single step pay), and the decode alone, in simulator
// mode with the code column on.
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QAction>
#include <cstdio>

#include "HeadlessApp.h"
#include "engine/code/DisAsmPage.h"
#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "ui/main/frmMain.h"

namespace {
// A mixed program: loads, stores, branches, a call and a loop, repeated.
void LoadProgram()
{
    const std::uint8_t pattern[] = {0x86, 0x05, 0xB7, 0x60, 0x01, 0x4A, 0x26, 0xFA, 0xBD, 0xE0, 0x40,
                                    0x18, 0xCE, 0x12, 0x34, 0x1A, 0xB3, 0x00, 0x10, 0x20, 0xEB};
    for (int a = 0xE000; a < 0xF000; ++a)
        TargetMemory[a] = pattern[(a - 0xE000) % sizeof(pattern)];
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    frmMain window;
    window.MDIForm_Load();
    window.show();
    window.resize(1000, 900);
    TargetMode = SimulatorMode;
    LoadProgram();
    CpuRegisters.PC = 0xE000;
    window.Menu("mnuDebugCodeOn")->setChecked(true);
    frmDisAsm* disAsm = frmDisAsm::Open();
    QCoreApplication::processEvents();

    // PC walks down the page as a step would move it; the page stays.
    constexpr int Rounds = 5000;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < Rounds; ++i) {
        CpuRegisters.PC = disAsm->PageRows[i % 20].RowAddress;
        disAsm->mnuGoToPCAddress();
    }
    const double redrawUs = clock.nsecsElapsed() / 1000.0 / Rounds;

    PageRowArray rows;
    const PageSwitches switches{true, false, {}};
    clock.restart();
    for (int i = 0; i < Rounds; ++i) {
        CpuRegisters.PC = 0xE000 + (i % 20);
        DecodePage(0xE000, switches, rows);
    }
    const double decodeUs = clock.nsecsElapsed() / 1000.0 / Rounds;
    std::printf("disasm_goto_pc_redraw: %.1f us\n", redrawUs);
    std::printf("disasm_page_decode: %.1f us\n", decodeUs);
    return 0;
}
