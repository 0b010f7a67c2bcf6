// The debugger on its own: a target link on a scripted serial line, on a
// real port, or the simulator, fresh target records, the serial control's
// events going to the debugger, and a view that records what the debugger
// asked of the windows. No main window is built.
#pragma once

#include "engine/state/TargetState.h"
#include "engine/execution/Debugger.h"
#include "support/FakeSerialLine.h"
#include "engine/link/LinkReports.h"

#include <QList>
#include <utility>

// The link's failures in order, its last state and how often one was shown,
// and the input-output unit's window as open or closed.
struct RecordedReports : LinkReports {
    QList<std::pair<LinkFailure, QString>> failures;
    LinkState state = LinkState::NotConnected;
    int stateReports = 0;
    bool ioUnitShown = false;
    void LinkFailed(LinkFailure failure, const QString& detail) override { failures.append({failure, detail}); }
    void LinkStateChanged(LinkState s) override { state = s, ++stateReports; }
    bool IoUnitShown() const override { return ioUnitShown; }
};

// Frozen and Pause as the main window would show them, the timers as one
// switch, a count of each redraw, and what the terminal was given.
struct RecordedView : DebuggerView {
    bool frozen = false, pauseOn = false, timersOn = true, cpuWindowShown = false;
    int refreshes = 0, refreshRuns = 0, followSteps = 0, clockShown = 0;
    QByteArray terminal;
    void Refresh() override { ++refreshes; }
    void RefreshRun() override { ++refreshRuns; }
    void FollowPeripherals() override {}
    void PassToTerminal(const QByteArray& bytes) override { terminal += bytes; }
    void FreezeDisplay() override { frozen = pauseOn = true; }
    void ThawDisplay() override { frozen = false, pauseOn = !RunStopped; }
    void SetPauseEnabled(bool on) override { pauseOn = on; }
    void ShowClockCount() override { ++clockShown; }
    void RunCommandsChanged() override {}
    void ShowPCRow() override {}
    void RedrawAtPC() override {}
    bool CpuWindowShown() override { return cpuWindowShown; }
    void FollowStep(bool) override { ++followSteps; }
    void SuspendTimers() override { timersOn = false; }
    void ResumeTimers() override { timersOn = true; }
    void LetEventsRun() override;
};

struct DebuggerFixture {
    // simulator: TargetMode, else the board on the scripted line (or on the
    // device the factory makes), port open.
    explicit DebuggerFixture(bool simulator, const SerialDeviceFactory& device = {});
    // The board on the port at path (a pseudo-terminal of hc11board).
    explicit DebuggerFixture(const QString& path);
    ~DebuggerFixture();

    FakeSerialLine line;
    RecordedReports reports;
    RecordedView view;
    TargetLink link{reports};
    Debugger debugger{link, view};
};
