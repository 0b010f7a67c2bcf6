// The free run: the board gets the CPU with an "X" frame and the host only
// listens until the monitor's reset report (OnComm) ends the run; breakpoints
// do not exist there, they are compared on the host only. The simulated chip
// runs in slices (ChipFreeRun) until Pause or a breakpoint, and every window
// then shows where it stopped.
#include "engine/state/TargetState.h"
#include "engine/execution/Debugger.h"

namespace {
// The monitor announces a reset with three "B"s at the end of a block.
const QByteArray ResetReport = QByteArrayLiteral("BBB");
// The clock panel follows a run on the chip this often.
constexpr qint64 ClockPanelMs = 200;
}  // namespace

Debugger::Debugger(TargetLink& link, DebuggerView& view) : link_(link), view_(view), chipRun_(link.ChipSim)
{
    chipRun_.sliceDone = [this](std::uint64_t cycles) { ChipSliceDone(cycles); };
    chipRun_.breakpointReached = [this] { EndChipRun(); };
}

void Debugger::RunFree()
{
    if (ChipSimulated()) {
        RunChip();
        return;
    }
    link_.FindBoard();
    if (!BoardConnected)
        return;
    if (link_.StartFreeRun()) {
        EnterFreeRun();
        link_.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
    }
    link_.BoardStatus();
    // The disassembly window's rules turn off what a running board cannot serve.
    view_.RunCommandsChanged();
}

void Debugger::EnterFreeRun()
{
    BoardConnected = true;
    BoardRunning = true;
    StatusSuffix = "";
    view_.FreezeDisplay();
    // A free run cannot be paused: only the board's reset ends it.
    view_.SetPauseEnabled(false);
}

void Debugger::OnComm()
{
    ::MSComm& comm = link_.MSComm;
    const int event = comm.CommEvent();
    if (event == ::MSComm::comEvCTS)
        link_.BoardStatus();
    if (event == ::MSComm::comEvReceive) {
        QByteArray block = comm.Input();
        if (block.endsWith(ResetReport)) {
            BoardConnected = true;
            link_.InResetVector(CpuRegisters.PC);
            view_.ThawDisplay();
            StatusSuffix = "";
            link_.BoardStatus();
            view_.LetEventsRun();
            BoardRunning = false;
            view_.RefreshRun();
            StatusSuffix = " (Reset)";
            link_.BoardStatus();
            block.chop(ResetReport.size());
        }
        if (!block.isEmpty())
            view_.PassToTerminal(block);
    }
    ClockCount = 0;
}

void Debugger::PassQuietOutput()
{
    if (TargetMode != BoardMode || !BoardRunning) {
        TerminalPassCount = 0;
        return;
    }
    // Output shorter than the receive threshold reaches the terminal after a quiet tick.
    if (link_.MSComm.InBufferCount() == TerminalPassCount && TerminalPassCount != 0)
        view_.PassToTerminal(link_.MSComm.Input());
    TerminalPassCount = static_cast<std::int16_t>(link_.MSComm.InBufferCount());
}

void Debugger::RunChip()
{
    if (chipRun_.Active())
        return;
    link_.ChipSim.LoadRegisters(CpuRegisters);
    BoardRunning = true;
    RunStopped = false;
    StatusSuffix = "";
    view_.FreezeDisplay();
    link_.BoardStatus();
    // The disassembly window's rules shut the steps; Pause is this run's own.
    view_.RunCommandsChanged();
    view_.SetPauseEnabled(true);
    clockShown_.start();
    chipRun_.Start(FullSpeed);
}

void Debugger::ChipSliceDone(std::uint64_t cycles)
{
    ClockCount += std::int64_t(cycles);
    PassChipOutput();
    if (clockShown_.elapsed() >= ClockPanelMs) {
        clockShown_.start();
        view_.ShowClockCount();
        view_.FollowPeripherals();
    }
}

void Debugger::EndChipRun()
{
    chipRun_.Stop();
    link_.ChipSim.StoreRegisters(CpuRegisters);
    StoreSimulatedRegisters();
    PassChipOutput();
    BoardRunning = false;
    RunStopped = true;
    view_.ThawDisplay();
    view_.SetPauseEnabled(false);
    link_.BoardStatus();
    view_.RunCommandsChanged();
    view_.Refresh();
    view_.ShowClockCount();
}
