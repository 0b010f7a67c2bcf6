// The host's side of a step that needs no window: which kind of step the
// flags ask for, the four code bytes that the board's code buffer gets for
// it, where PC stands afterwards, the bytes the simulator is handed, and the
// event pass of the Play loop.
#pragma once

#include "engine/state/TargetState.h"

#include <array>
#include <cstdint>
#include <span>

namespace stepping {

enum class StepKind {
    HostOnly,   // the command has done the instruction's work
    Plain,      // the instruction runs on the target, PC moves by its length
    OverCall,   // board: the called routine runs to its return
    Out,        // board: the code runs on until the current routine returns
};

// The kind that StepExecute, StepPlain, StepOverActive and StepOutActive ask for.
StepKind CurrentStepKind();

// What the board's code buffer at $0009 gets, and PC once the frame is sent.
struct BoardStep {
    std::array<std::uint8_t, 4> code;
    std::int32_t pc;
};

// instruction: the bytes at PC, four at most: the only five-byte
// instructions are the bit branches on Y, which the host completes itself. target: the called address of
// a call. returnAddress: the current routine's, from the stack copy.
BoardStep PlanBoardStep(StepKind kind, std::int32_t pc, std::span<const std::uint8_t> instruction,
                        std::int32_t target, std::int32_t returnAddress);

// The five bytes handed to the simulator: length bytes of TargetMemory from
// pc (wrapping at 65,536), the rest NOP.
std::array<std::uint8_t, 5> SimulatorStepBytes(std::int32_t pc, int length);

// The word at address in TargetMemory, high byte first, wrapping at 65,536.
std::int32_t TargetWord(std::int32_t address);

// The instruction at pc in TargetMemory is RTS or RTI.
bool ReturnAt(std::int32_t pc);

// PC has left the 252 bytes of ProgramBuffer that hold a whole instruction.
bool OutsideProgramBuffer(std::int32_t pc);

// Says when pending events should run: once intervalMs have passed since the
// last pass (0: at every call). A simulated step takes a fraction of a
// microsecond, and a pass that paints the clock panel a hundred times more
// than the screen can show it costs more than the steps. The clock itself is
// read only every stride-th call.
class EventPump {
public:
    EventPump(int stride, std::uint32_t intervalMs) : stride_(stride), interval_(intervalMs) {}
    bool Due();

private:
    int stride_;
    std::uint32_t interval_;
    int calls_ = 0;
    std::uint32_t last_ = 0;
    bool started_ = false;
};

} // namespace stepping
