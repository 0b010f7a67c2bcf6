// The free run: the board gets the CPU with an "X" frame and the host only
// listens until the monitor's reset report (OnComm) ends the run.
// Breakpoints do not exist here; they are compared on the host only.
#include "engine/state/TargetState.h"
#include "engine/execution/Debugger.h"

namespace {
// The monitor announces a reset with three "B"s at the end of a block.
const QByteArray ResetReport = QByteArrayLiteral("BBB");
}  // namespace

void Debugger::RunFree()
{
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
