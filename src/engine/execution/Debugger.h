// The debugger: Step Into, Step Over, Step Out, Run to cursor, Play, Animate,
// Pause and the board's free run, over the target link. Neither back-end
// knows a PC or follows control flow: the steps work out from the
// instruction at PC what will happen, do jumps, taken branches, calls and
// returns on the host through the target's stack and save area, and leave
// only straight-line code to MakeStep. The windows hear of it through the
// DebuggerView; the state lives in engine/state/TargetState as everywhere else.
#pragma once

#include "engine/execution/ChipFreeRun.h"
#include "engine/execution/DebuggerView.h"
#include "engine/link/TargetLink.h"

#include <QElapsedTimer>

#include <cstdint>
#include <optional>

class Debugger {
public:
    Debugger(TargetLink& link, DebuggerView& view);
    Debugger(const Debugger&) = delete;
    Debugger& operator=(const Debugger&) = delete;

    void StepInto();
    void StepOver();
    void StepOut();
    // Play until PC reaches the disassembly window's cursor row, by a
    // breakpoint there or a temporary entry for this one run (none without a
    // cursor row). False, with nothing done, when the table has no room left.
    bool RunToCursor(std::optional<std::int32_t> cursor);
    // Host loops over Step Into that stop at breakpoints or on Pause; they
    // return when the run has ended.
    void Play();
    void Animate();
    void Pause();
    // The board takes the CPU until its reset report; the simulated chip
    // runs until Pause or a breakpoint, in real time or at FullSpeed.
    void RunFree();
    bool FullSpeed = false;
    // The simulated chip runs freely.
    bool ChipRunning() const { return chipRun_.Active(); }
    // The board has taken the CPU: display frozen, Pause off, panel "Running ...".
    void EnterFreeRun();
    // Runs the instruction at PC on the target as the step flags say.
    void MakeStep();
    // The serial control's event (MSComm_OnComm): a CTS change goes to the
    // panel; a block that ends in the monitor's reset report ends a free run
    // with PC at the reset vector; the user program's output goes to the terminal.
    void OnComm();
    // tmrComm's tick (tmrComm_Timer): during a free run, output shorter than
    // the receive threshold reaches the terminal after a tick without news.
    void PassQuietOutput();
    // The bytes waiting at the last tick; 0 outside a free run.
    std::int16_t TerminalPassCount = 0;

    // True until a Play or Animate loop has made its first step: no
    // breakpoint is tested before it, so a run can leave the one it stands on.
    bool PlayFirstStep = false;

private:
    // RTS on the host: PC from the stack copy, SP two up in the save area.
    // False if a target operation failed.
    // Step Into without counting a move: the steps of Play and Animate.
    void StepOne();
    bool EmulatedReturn();
    // Writes SP to the save area; false if the write failed.
    bool WriteSaveAreaSP();
    // FindBoard at the start of every command: a board that stopped answering
    // and answers again is used at once, whatever the last failure left in
    // BoardConnected. False (the failure told) when it is not there.
    bool BoardFound();
    // The decoder reads ProgramBuffer only: a PC outside it is read in first.
    bool ProgramBufferAtPC();
    // Play with a temporary entry at the end of the breakpoint table, taken
    // off again as the run stops; the caller has made sure there is room.
    void PlayUntil(std::optional<std::int32_t> temporary);
    // Simulator Step Over and Step Out: Play until the temporary breakpoint
    // at address, which a full table cannot take, then Refresh.
    void PlayToTemporaryBreakpoint(std::int32_t address);
    // The board's Step Over and Step Out: the wait for the routine's return.
    void StepOnBoardFrozen();
    // MakeStep's two back-ends; false when the step failed.
    bool StepOnBoard(std::int32_t target, std::int16_t length);
    void StepOnSimulator(std::int16_t length);
    // Step Into on the simulated chip, with the windows as after any step.
    void StepOnChip();
    // What the windows show after a step, by mode and run.
    void ShowStep();
    // CpuRegisters into the save area, and the flags derived.
    void StoreSimulatedRegisters();
    // The characters the simulated chip has sent, to the terminal.
    void PassChipOutput();
    void RunChip();
    void ChipSliceDone(std::uint64_t cycles);
    void EndChipRun();
    void BeginRun(bool play);
    void EndRun();
    // Play's event pass, with the clock panel brought up to date first.
    void LetEventsRun();

    TargetLink& link_;
    DebuggerView& view_;
    ChipFreeRun chipRun_;
    QElapsedTimer clockShown_;   // the panel during a run on the chip
    bool clockPanelStale_ = false;
    bool followCpuWindow_ = false;     // the CPU window was open as Play began
    bool stepWaitAbandoned_ = false;   // Pause during the board's Step Over or Step Out wait
    bool stepWaitRunning_ = false;
    // Step Out on the simulated chip: Play ends once a return has taken SP above this.
    std::optional<std::int32_t> outAboveSP_;
};

