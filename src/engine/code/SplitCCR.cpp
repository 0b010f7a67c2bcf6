#include "engine/code/Asm.h"
#include "engine/state/TargetState.h"

void SplitCCR()
{
    const std::uint8_t ccr = CpuRegisters.CCR;
    auto bit = [ccr](int n) { return ((ccr >> n) & 1) != 0; };
    CpuRegisters.FlagC = bit(0);
    CpuRegisters.FlagV = bit(1);
    CpuRegisters.FlagZ = bit(2);
    CpuRegisters.FlagN = bit(3);
    CpuRegisters.FlagI = bit(4);
    CpuRegisters.FlagH = bit(5);
    CpuRegisters.FlagX = bit(6);
    CpuRegisters.FlagS = bit(7);
}
