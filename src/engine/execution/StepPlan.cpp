#include "engine/execution/StepPlan.h"

#include "platform/TickCount.h"
#include "engine/link/MonitorFrames.h"
#include "hc11/InstructionSet.h"

#include <algorithm>

namespace stepping {

namespace {

std::uint8_t High(std::int32_t value)
{
    return static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

std::uint8_t Low(std::int32_t value)
{
    return static_cast<std::uint8_t>(value & 0xFF);
}
} // namespace

StepKind CurrentStepKind()
{
    if (!StepExecute)
        return StepKind::HostOnly;
    if (StepOverActive)
        return StepKind::OverCall;
    if (StepOutActive)
        return StepKind::Out;
    return StepKind::Plain;
}

BoardStep PlanBoardStep(StepKind kind, std::int32_t pc, std::span<const std::uint8_t> instruction,
                        std::int32_t target, std::int32_t returnAddress)
{
    BoardStep step{{monitor::Nop, monitor::Nop, monitor::Nop, monitor::Nop}, pc};
    switch (kind) {
    case StepKind::HostOnly: break;
    case StepKind::Plain:
        std::copy_n(instruction.begin(), std::min<std::size_t>(instruction.size(), step.code.size()),
                    step.code.begin());
        step.pc = (pc + static_cast<std::int32_t>(instruction.size())) % 65536;
        break;
    case StepKind::OverCall:
        // A JSR at $0009 pushes $000C; the NOP there falls through to the return point.
        step.code = {monitor::JsrExtended, High(target), Low(target), monitor::Nop};
        step.pc = (pc + static_cast<std::int32_t>(instruction.size())) % 65536;
        break;
    case StepKind::Out:
        // The return address on the target's stack has become $000D.
        step.code = {monitor::JmpExtended, High(pc), Low(pc), monitor::Nop};
        step.pc = returnAddress;
        break;
    }
    return step;
}

std::array<std::uint8_t, 5> SimulatorStepBytes(std::int32_t pc, int length)
{
    std::array<std::uint8_t, 5> bytes;
    bytes.fill(monitor::Nop);
    for (int i = 0; i < std::min(length, 5); ++i)
        bytes[i] = TargetMemory[(pc + i) & 0xFFFF];
    return bytes;
}

std::int32_t TargetWord(std::int32_t address)
{
    return TargetMemory[address & 0xFFFF] * 256 + TargetMemory[(address + 1) & 0xFFFF];
}

bool ReturnAt(std::int32_t pc)
{
    const hc11::Instruction* row = hc11::DecodeOpcode(TargetMemory[pc & 0xFFFF], TargetMemory[(pc + 1) & 0xFFFF]);
    return row && (row->mnemonic == hc11::Mnemonic::RTS || row->mnemonic == hc11::Mnemonic::RTI);
}

bool OutsideProgramBuffer(std::int32_t pc)
{
    // 251 is 256 less the longest instruction of 5 bytes.
    return pc - ProgramBase > 251 || pc < ProgramBase;
}

bool EventPump::Due()
{
    if (started_ && ++calls_ < stride_)
        return false;
    calls_ = 0;
    if (interval_ == 0)
        return true;
    const std::uint32_t now = GetTickCount();
    if (started_ && now - last_ < interval_)
        return false;
    started_ = true;
    last_ = now;
    return true;
}

} // namespace stepping
