// The debugger's steps and MakeStep, which runs an instruction on the board
// ("S" frame) or on the simulator component.
#include "engine/code/Asm.h"
#include "engine/code/ProgramBufferAccess.h"
#include "engine/state/TargetMoves.h"
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "engine/execution/StepPlan.h"
#include "engine/link/MonitorFrames.h"
#include "engine/execution/Debugger.h"


using stepping::StepKind;

namespace {
constexpr std::int32_t SaveAreaSP = 6;

// The flow of the instruction at PC.
struct Flow {
    std::int32_t next = 0;     // the address behind it, or a taken jump's
    std::int32_t target = 0;   // the same with calls followed
    bool jump = false, call = false, ret = false;
    // BRSET or BRCLR: the host completes it taken or not, since it changes no
    // register and no flag (and the board's code buffer cannot hold the
    // five-byte form).
    bool bitBranch = false;
};

// NextAddress with calls followed gives the target and the flags. Only for a
// call does the address behind it differ; elsewhere the second analysis, and
// a bit branch's second read of the target, are saved. False if a bit branch
// could not read its byte.
bool FlowAtPC(Flow& flow, const TargetBytesReader& readTarget)
{
    std::int32_t pc = CpuRegisters.PC;
    bool follow = true;
    if (!NextAddress(pc, follow, flow.target, flow.jump, flow.call, flow.ret, readTarget))
        return false;
    flow.next = flow.target;
    const program_buffer::Opcode op =
        program_buffer::OpcodeAt(program_buffer::Unwrapped(pc) - ProgramBase);
    flow.bitBranch = op.row && program_buffer::IsBitBranch(op.row->mode);
    if (!flow.call)
        return true;
    follow = false;
    bool jump = false, call = false, ret = false;
    return NextAddress(pc, follow, flow.next, jump, call, ret, readTarget);
}

std::vector<std::uint8_t> Word(std::int32_t value)
{
    return {static_cast<std::uint8_t>((value >> 8) & 0xFF), static_cast<std::uint8_t>(value & 0xFF)};
}
}  // namespace

// ---- Shared pieces ----------------------------------------------------------

bool Debugger::WriteSaveAreaSP()
{
    std::int32_t address = SaveAreaSP;
    link_.OutBytes(address, Word(CpuRegisters.SP), 2);
    return BoardConnected;
}

bool Debugger::EmulatedReturn()
{
    link_.InStack();
    if (!BoardConnected)
        return false;
    CpuRegisters.SP = (CpuRegisters.SP + 2) & 0xFFFF;
    if (!WriteSaveAreaSP())
        return false;
    CpuRegisters.PC = StackBuffer[1] * 256 + StackBuffer[2];
    StepExecute = false;
    return true;
}

bool Debugger::BoardFound()
{
    link_.FindBoard();
    return BoardConnected;
}

bool Debugger::ProgramBufferAtPC()
{
    if (stepping::OutsideProgramBuffer(CpuRegisters.PC)) {
        ProgramBase = CpuRegisters.PC;
        link_.InProgram();
    }
    return BoardConnected;
}

// ---- The commands -------------------------------------------------------------

void Debugger::StepInto()
{
    // A step command is a move of its own; Play's steps belong to their run.
    NoteTargetMoves();
    if (BoardFound())
        StepOne();
}

void Debugger::StepOne()
{
    // The chip runs every instruction itself, jumps, calls and interrupts too.
    if (ChipSimulated()) {
        StepOnChip();
        return;
    }
    if (!ProgramBufferAtPC())
        return;
    // Every instruction counts, whether the target or the host runs it.
    ClockCount += ClockCycles(CpuRegisters.PC);
    Flow flow;
    if (!FlowAtPC(flow, link_.Reader()))
        return;
    if (flow.ret) {
        if (!EmulatedReturn())
            return;
    } else if (flow.call) {
        // The return address goes high byte first to SP - 1, as the processor pushes it.
        CpuRegisters.PC = flow.target;
        CpuRegisters.SP = (CpuRegisters.SP - 1) & 0xFFFF;
        std::int32_t at = CpuRegisters.SP;
        link_.OutBytes(at, Word(flow.next), 2);
        if (!BoardConnected)
            return;
        CpuRegisters.SP = (CpuRegisters.SP - 1) & 0xFFFF;
        if (!WriteSaveAreaSP())
            return;
        StepExecute = false;
    } else if (flow.jump || flow.bitBranch) {
        CpuRegisters.PC = flow.target;
        StepExecute = false;
    } else {
        // Branches not taken, RTI, SWI, WAI and STOP run on the target as they are.
        StepExecute = true;
    }
    StepPlain = true;
    StepOverActive = StepOutActive = false;
    MakeStep();
}

void Debugger::StepOver()
{
    NoteTargetMoves();
    if (!BoardFound())
        return;
    StepExecute = StepPlain = true;
    StepOverActive = StepOutActive = false;
    if (TargetMode == BoardMode) {
        if (!ProgramBufferAtPC())
            return;
        Flow flow;
        if (!FlowAtPC(flow, link_.Reader()))
            return;
        RunToAddress = flow.target;
        if (flow.ret) {
            if (!EmulatedReturn())
                return;
        } else if (flow.call) {
            StepOverActive = true;
            StepPlain = false;
        } else if (flow.jump || flow.bitBranch) {
            StepExecute = false;
            CpuRegisters.PC = RunToAddress;
        }
        StepOnBoardFrozen();
    } else if (TargetMode == SimulatorMode) {
        // With a full table there is no room for the stop: the command does nothing.
        if (BreakpointCount >= MaxBreakpoints || !ProgramBufferAtPC())
            return;
        Flow flow;
        if (!FlowAtPC(flow, link_.Reader()))
            return;
        // The chip runs returns and RTI itself: only a call needs a run to its end.
        if (ChipSimulated() && !flow.call) {
            StepOne();
            return;
        }
        const std::int32_t end = flow.ret ? stepping::TargetWord(CpuRegisters.SP + 1) : flow.next;
        PlayToTemporaryBreakpoint(end);
    }
}

void Debugger::StepOut()
{
    NoteTargetMoves();
    if (!BoardFound())
        return;
    if (TargetMode == BoardMode) {
        link_.InStack();
        if (!BoardConnected)
            return;
        // The routine now returns to the monitor instead of to its caller.
        std::int32_t at = (CpuRegisters.SP + 1) & 0xFFFF;
        link_.OutBytes(at, Word(ReturnPointAddress), 2);
        if (!BoardConnected)
            return;
        view_.ShowPCRow();
        StepOutActive = StepExecute = true;
        StepPlain = StepOverActive = false;
        StepOnBoardFrozen();
    } else if (ChipSimulated()) {
        // A subroutine and an interrupt routine both end where a return
        // takes SP above the level it has now.
        outAboveSP_ = CpuRegisters.SP;
        PlayUntil(std::nullopt);
        outAboveSP_.reset();
        view_.Refresh();
    } else if (TargetMode == SimulatorMode) {
        if (BreakpointCount < MaxBreakpoints)
            PlayToTemporaryBreakpoint(stepping::TargetWord(CpuRegisters.SP + 1));
    }
}

bool Debugger::RunToCursor(std::optional<std::int32_t> cursor)
{
    // A breakpoint of the user's on the row stops the run by itself.
    const bool temporary = cursor && !HasBreakpoint(*cursor);
    if (temporary && BreakpointCount >= MaxBreakpoints)
        return false;
    view_.ShowPCRow();
    PlayUntil(temporary ? cursor : std::nullopt);
    return true;
}

void Debugger::PlayToTemporaryBreakpoint(std::int32_t address)
{
    PlayUntil(address);
    view_.Refresh();
}

void Debugger::StepOnBoardFrozen()
{
    view_.FreezeDisplay();
    MakeStep();
    if (BoardRunning) {
        // Paused in the wait: the board goes on with the routine until its reset.
        link_.BoardStatus();
        view_.RunCommandsChanged();
        return;
    }
    view_.ThawDisplay();
}

// ---- MakeStep -------------------------------------------------------------------

void Debugger::MakeStep()
{
    link_.FindBoard();
    if (!BoardConnected)
        return;
    bool stepped = true;
    if (StepExecute) {
        // Only a call stepped over on the board needs the called address.
        Flow flow;
        if (TargetMode == BoardMode && stepping::CurrentStepKind() == StepKind::OverCall)
            stepped = FlowAtPC(flow, link_.Reader());
        const std::int16_t length = InstructionLength(CpuRegisters.PC);
        if (stepped && TargetMode == BoardMode)
            stepped = StepOnBoard(flow.target, length);
        else if (stepped && TargetMode == SimulatorMode)
            StepOnSimulator(length);
    }
    if (stepped)
        ShowStep();
    // Play's event pass brings the panel up to date: nothing is painted in between.
    if (PlayActive)
        clockPanelStale_ = true;
    else
        view_.ShowClockCount();
    link_.MSComm.SetRThreshold(TargetLink::ReceiveThreshold);
}

void Debugger::ShowStep()
{
    if (TargetMode == BoardMode) {
        if (RunStopped || AnimateActive) {
            view_.Refresh();
        } else if (PlayActive) {
            // During Play only the CPU window follows each step.
            ProgramBufferAtPC();
            if (followCpuWindow_)
                view_.FollowStep(false);
        }
    } else if (PlayActive) {
        if (followCpuWindow_)
            view_.FollowStep(true);
    } else {
        view_.Refresh();
    }
}

void Debugger::StepOnChip()
{
    ClockCount += std::int64_t(link_.ChipSim.Step(CpuRegisters));
    StoreSimulatedRegisters();
    StepExecute = false;
    StepPlain = true;
    StepOverActive = StepOutActive = false;
    ShowStep();
    if (PlayActive) {
        clockPanelStale_ = true;
    } else {
        view_.ShowClockCount();
        PassChipOutput();
    }
}

bool Debugger::StepOnBoard(std::int32_t target, std::int16_t length)
{
    const StepKind kind = stepping::CurrentStepKind();
    std::array<std::uint8_t, 5> instruction{};
    const std::int32_t index = program_buffer::Unwrapped(CpuRegisters.PC) - ProgramBase;
    for (int i = 0; i < length; ++i)
        instruction[i] = program_buffer::BufferByte(index + i);
    const stepping::BoardStep plan =
        stepping::PlanBoardStep(kind, CpuRegisters.PC, std::span(instruction).first(length), target,
                                StackBuffer[1] * 256 + StackBuffer[2]);
    const QByteArray frame = monitor::StepFrame(CpuRegisters, plan.code);
    CpuRegisters.PC = plan.pc;

    ExchangeRules rules{monitor::StepReplySize, ReplyCheck::Checksum, exchange_timeout::Step, false};
    if (kind != StepKind::Plain) {
        // A called routine may run for any time: events run, and Pause gives the wait up.
        rules.timeoutMs.reset();
        rules.pumpEvents = true;
    }
    stepWaitAbandoned_ = false;
    stepWaitRunning_ = rules.pumpEvents;
    QByteArray reply;
    const bool valid = link_.Exchange(frame, rules, reply, [this] { return stepWaitAbandoned_; });
    stepWaitRunning_ = false;
    if (valid) {
        monitor::RegistersFromSaveArea(
            std::span<const std::uint8_t, SaveAreaSize>(reinterpret_cast<const std::uint8_t*>(reply.constData()) + 1,
                                                        SaveAreaSize),
            CpuRegisters);
        SplitCCR();
        return true;
    }
    if (stepWaitAbandoned_)
        EnterFreeRun();
    return false;
}

void Debugger::StepOnSimulator(std::int16_t length)
{
    const std::array<std::uint8_t, 5> code = stepping::SimulatorStepBytes(CpuRegisters.PC, length);
    CpuRegisterRecord& r = CpuRegisters;
    std::int16_t a = r.A, b = r.B, ccr = r.CCR;
    std::int32_t ix = r.IX, iy = r.IY, sp = r.SP;
    link_.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, code[0], code[1], code[2], code[3], code[4]);
    r.A = static_cast<std::uint8_t>(a);
    r.B = static_cast<std::uint8_t>(b);
    r.CCR = static_cast<std::uint8_t>(ccr);
    r.IX = ix & 0xFFFF;
    r.IY = iy & 0xFFFF;
    r.SP = sp & 0xFFFF;
    StoreSimulatedRegisters();
    r.PC = (r.PC + length) % 65536;
}

void Debugger::StoreSimulatedRegisters()
{
    // The save area is where InCPU takes the registers back from, as on the board.
    const monitor::SaveAreaBytes saved = monitor::SaveAreaOf(CpuRegisters);
    std::copy(saved.begin(), saved.end(), TargetMemory.begin() + SaveAreaAddress);
    SplitCCR();
}

void Debugger::PassChipOutput()
{
    if (!ChipSimulated())
        return;
    const QByteArray bytes = link_.ChipSim.TakeOutput();
    if (!bytes.isEmpty())
        view_.PassToTerminal(bytes);
}

