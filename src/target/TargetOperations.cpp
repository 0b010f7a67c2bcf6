// The target operations of the main window. Each serves both back-ends: a
// framed exchange with the board's monitor, or TargetMemory in simulator mode.
#include "core/TargetState.h"
#include "workspace/frmMain.h"

void frmMain::InResetVector(std::int32_t& Vector)
{
    if (TargetMode == SimulatorMode) {
        Vector = TargetMemory[ResetVectorAddress] * 256 + TargetMemory[ResetVectorAddress + 1];
        return;
    }
    // On the board the vector comes with the monitor's read exchange, which
    // lands with the other board operations; until then Vector is left as it is.
}
