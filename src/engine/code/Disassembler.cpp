#include "engine/code/Asm.h"
#include "engine/code/ProgramBufferAccess.h"

using hc11::Instruction;
using hc11::Mode;
using namespace program_buffer;

namespace {

void AppendHex(std::string& text, unsigned value, int digits)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        text += Digits[(value >> shift) & 0xF];
}

void AppendByte(std::string& text, std::uint8_t value)
{
    text += '$';
    AppendHex(text, value, 2);
}

void AppendWord(std::string& text, unsigned value)
{
    text += '$';
    AppendHex(text, value & 0xFFFF, 4);
}

std::int32_t RelativeTarget(std::int32_t after, std::uint8_t offset)
{
    return (after + static_cast<std::int8_t>(offset)) & 0xFFFF;
}

} // namespace

void DisAsmLine(std::int32_t& Address, std::int16_t& Length, std::string& Text)
{
    Address = Unwrapped(Address);
    const std::int32_t index = Address - ProgramBase;
    const Opcode op = OpcodeAt(index);
    Length = static_cast<std::int16_t>(op.opcodeBytes);
    if (!op.row) {
        Text = "???";
        return;
    }
    const std::string_view name = hc11::MnemonicName(op.row->mnemonic);
    const Mode mode = op.row->mode;
    Text.assign(name);
    if (mode == Mode::Inherent)
        return;

    Text.append(6 - name.size(), ' ');
    const std::int32_t p = index + op.opcodeBytes;
    const std::uint8_t b0 = BufferByte(p), b1 = BufferByte(p + 1), b2 = BufferByte(p + 2);
    const std::int32_t after = Address + LengthOf(op);
    Length = static_cast<std::int16_t>(LengthOf(op));

    switch (mode) {
    case Mode::Immediate8: Text += '#'; AppendByte(Text, b0); break;
    case Mode::Immediate16: Text += '#'; AppendWord(Text, b0 << 8 | b1); break;
    case Mode::Direct: AppendByte(Text, b0); break;
    case Mode::Extended: AppendWord(Text, b0 << 8 | b1); break;
    case Mode::IndexedX: AppendByte(Text, b0); Text += ",X"; break;
    case Mode::IndexedY: AppendByte(Text, b0); Text += ",Y"; break;
    case Mode::Relative: AppendWord(Text, RelativeTarget(after, b0)); break;
    case Mode::BitDirect:
    case Mode::BitIndexedX:
    case Mode::BitIndexedY:
    case Mode::BitBranchDirect:
    case Mode::BitBranchIndexedX:
    case Mode::BitBranchIndexedY:
        AppendByte(Text, b0);
        if (mode == Mode::BitIndexedX || mode == Mode::BitBranchIndexedX)
            Text += ",X";
        else if (mode == Mode::BitIndexedY || mode == Mode::BitBranchIndexedY)
            Text += ",Y";
        Text += ' ';
        AppendByte(Text, b1);
        if (IsBitBranch(mode)) {
            Text += ' ';
            AppendWord(Text, RelativeTarget(after, b2));
        }
        break;
    case Mode::Inherent: break;
    }
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
