// The refresh round of the views that follow the target: which open view
// reads the target anew, in which order, the one read of the register block
// that serves all of its windows, and the stop at the first view that finds
// the board gone, so that a dead board gives one message and not one a view.
// The round knows no window: the GUI implements RefreshViews.
#pragma once

#include "engine/link/TargetLink.h"

// The views of a refresh, in the order of the round.
enum class TargetView {
    Code,            // the disassembly page, put on PC
    CpuRegisters,
    Stack,
    Watches,
    RegisterBlock,   // the seven peripheral windows that draw from RegisterBlock
    Pia,             // the PIA window, which reads its own block
};

class RefreshViews {
public:
    virtual ~RefreshViews() = default;
    // The view is open; RegisterBlock: at least one of its windows is.
    virtual bool ViewShown(TargetView view) = 0;
    // The view reads its part of the target and redraws; RegisterBlock: its
    // open windows redraw from RegisterBlock, which the round has filled.
    virtual void RefreshView(TargetView view) = 0;
};

class RefreshCycle {
public:
    RefreshCycle(TargetLink& link, RefreshViews& views) : link_(link), views_(views) {}
    RefreshCycle(const RefreshCycle&) = delete;
    RefreshCycle& operator=(const RefreshCycle&) = delete;

    // The code page at PC, then, while the board answers, RefreshRun.
    void Refresh();
    // Registers, stack, watches and peripheral views that are open.
    void RefreshRun();
    // Fills RegisterBlock from the target's 64 bytes at $1000; a failed read
    // leaves it as it was.
    void ReadRegisterBlock();
    // The register block windows from the simulated chip, without moving
    // the marks' reference: they show what changed since the last stop.
    void FollowPeripherals();
    // The auto-refresh tick has nothing to do while the target is running.
    static bool AutoRefreshDue();

private:
    TargetLink& link_;
    RefreshViews& views_;
};
