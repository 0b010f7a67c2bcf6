#include "engine/code/Asm.h"
#include "engine/code/ProgramBufferAccess.h"
#include "hc11/InstructionText.h"

using hc11::Instruction;
using namespace program_buffer;

void DisAsmLine(std::int32_t& Address, std::int16_t& Length, std::string& Text)
{
    Address = Unwrapped(Address);
    const std::int32_t index = Address - ProgramBase;
    const Opcode op = OpcodeAt(index);
    Length = static_cast<std::int16_t>(LengthOf(op));
    if (!op.row) {
        Text = "???";
        return;
    }
    const std::int32_t p = index + op.opcodeBytes;
    const std::uint8_t operand[] = {BufferByte(p), BufferByte(p + 1), BufferByte(p + 2)};
    Text.clear();
    hc11::AppendInstructionText(Text, *op.row, operand, static_cast<std::uint16_t>(Address + Length));
}

bool InstructionInBuffer(std::int32_t Address)
{
    const std::int32_t index = Unwrapped(Address) - ProgramBase;
    if (index < 0 || index >= BufferSize)
        return false;
    return index + LengthOf(OpcodeAt(index)) <= BufferSize;
}

std::int16_t InstructionLength(std::int32_t Address)
{
    return static_cast<std::int16_t>(LengthOf(OpcodeAt(Unwrapped(Address) - ProgramBase)));
}

std::uint8_t ClockCycles(std::int32_t& Address)
{
    const std::int32_t index = (Unwrapped(Address) - ProgramBase) & 0xFF;
    const std::uint8_t first = ProgramBuffer[index];
    const Instruction* row = hc11::IsPrefix(first)
                                 ? hc11::FindInstruction(first, ProgramBuffer[(index + 1) & 0xFF])
                                 : hc11::FindInstruction(0, first);
    return row ? row->cycles : 0;
}
