// Reading instructions out of ProgramBuffer: shared by the decoder and the flow analysis.
#pragma once

#include <cstdint>

#include "hc11/InstructionSet.h"
#include "engine/state/TargetState.h"

namespace program_buffer {

constexpr std::int32_t BufferSize = static_cast<std::int32_t>(ProgramBuffer.size());

// A page near $FFFF continues at $0000: addresses below the base count from the top.
inline std::int32_t Unwrapped(std::int32_t address)
{
    return address < ProgramBase ? address + 65536 : address;
}

// Bytes past the buffer read as 0; callers check InstructionInBuffer where it matters.
inline std::uint8_t BufferByte(std::int32_t index)
{
    return index >= 0 && index < BufferSize ? ProgramBuffer[index] : 0;
}

// The table row of the instruction at a buffer index, and how many opcode bytes it has.
struct Opcode {
    const hc11::Instruction* row;   // nullptr: illegal byte or a prefix without this row
    int opcodeBytes;                // 1, or 2 behind a prefix
};

inline Opcode OpcodeAt(std::int32_t index)
{
    const std::uint8_t first = BufferByte(index);
    if (hc11::IsPrefix(first))
        return {hc11::FindInstruction(first, BufferByte(index + 1)), 2};
    return {hc11::FindInstruction(0, first), 1};
}

// Bytes of the instruction, prefix included, from the table; an illegal
// sequence counts its opcode bytes.
inline int LengthOf(const Opcode& op)
{
    return op.row ? op.row->length : op.opcodeBytes;
}

inline bool IsBitBranch(hc11::Mode mode)
{
    return mode == hc11::Mode::BitBranchDirect || mode == hc11::Mode::BitBranchIndexedX ||
           mode == hc11::Mode::BitBranchIndexedY;
}

} // namespace program_buffer
