#include "ui/views/frmRegCPU.h"

#include "engine/state/TargetState.h"
#include "engine/link/TargetLink.h"
#include "ui/main/frmMain.h"

namespace {
// The written addresses are the monitor's register save area: the same calls
// change the saved registers on the board and TargetMemory in the simulator.
// SP could be written at $0006, but the row is read-only.
const RegisterRow CpuRows[] = {
    {.name = "A", .address = 0x0000},
    {.name = "B", .address = 0x0001},
    {.name = "D", .address = 0x0000, .isWord = true},
    {.name = "IX", .address = 0x0002, .isWord = true},
    {.name = "IY", .address = 0x0004, .isWord = true},
    {.name = "PC", .isWord = true, .write = RowWrite::HostPC},
    {.name = "SP", .address = 0x0006, .isWord = true, .readOnly = true},
    {.name = "CCR", .address = 0x0008, .format = '%', .flagLetters = true},
};

std::int32_t CpuValue(const RegisterRow&, int index)
{
    const CpuRegisterRecord& r = CpuRegisters;
    switch (index) {
    case 0: return r.A;
    case 1: return r.B;
    case 2: return r.A * 256 + r.B;
    case 3: return r.IX;
    case 4: return r.IY;
    case 5: return r.PC & 0xFFFF;
    case 6: return r.SP;
    default: return r.CCR;
    }
}

// InCPU also derives the flags, after a write to CCR too.
void ReadCpu(frmMain& main)
{
    main.Link().InCPU();
}
}  // namespace

const RegisterWindowKind CpuWindowKind = {"CPU Registers", "RegCPU", CpuRows, false, &ReadCpu, &CpuValue};

QWidget* CreateRegCPU(frmMain& main)
{
    return new RegisterWindow(main, CpuWindowKind);
}
