#include "engine/execution/RefreshCycle.h"

#include "engine/state/ByteHistory.h"
#include "engine/state/TargetMoves.h"
#include "engine/state/TargetState.h"

#include <algorithm>

void RefreshCycle::Refresh()
{
    if (views_.ViewShown(TargetView::Code))
        views_.RefreshView(TargetView::Code);
    if (BoardConnected)
        RefreshRun();
}

void RefreshCycle::RefreshRun()
{
    for (const TargetView view : {TargetView::CpuRegisters, TargetView::Stack, TargetView::Watches}) {
        if (views_.ViewShown(view))
            views_.RefreshView(view);
        if (!BoardConnected)
            return;
    }
    if (views_.ViewShown(TargetView::RegisterBlock)) {
        ReadRegisterBlock();
        if (!BoardConnected)
            return;
        views_.RefreshView(TargetView::RegisterBlock);
    }
    if (views_.ViewShown(TargetView::Pia))
        views_.RefreshView(TargetView::Pia);
}

void RefreshCycle::ReadRegisterBlock()
{
    if (TargetMode == SimulatorMode) {
        link_.ReadSimulated(RegisterBlockAddress, RegisterBlock);
        SeenBytes.Seen(RegisterBlockAddress, RegisterBlock);
        return;
    }
    std::int32_t address = RegisterBlockAddress;
    std::vector<std::uint8_t> block;
    link_.InBytes(address, block, RegisterBlockSize);
    if (BoardConnected && block.size() == RegisterBlock.size()) {
        std::copy(block.begin(), block.end(), RegisterBlock.begin());
        SeenBytes.Seen(RegisterBlockAddress, RegisterBlock);
    }
}

void RefreshCycle::FollowPeripherals()
{
    if (!ChipSimulated() || !views_.ViewShown(TargetView::RegisterBlock))
        return;
    link_.ChipSim.Read(RegisterBlockAddress, RegisterBlock);
    views_.RefreshView(TargetView::RegisterBlock);
}

bool RefreshCycle::AutoRefreshDue()
{
    return !BoardRunning && !AnimateActive && !PlayActive;
}
