#include "engine/code/Asm.h"
#include "engine/code/ProgramBufferAccess.h"
#include "hc11/Cpu.h"

using hc11::Mnemonic;
using hc11::Mode;
using namespace program_buffer;

namespace {

// The branch conditions test the Flag records, never CCR: whoever writes CCR
// calls SplitCCR. The core's condition table reads them packed as CCR bits.
std::uint8_t FlagsAsCcr()
{
    const CpuRegisterRecord& r = CpuRegisters;
    return std::uint8_t((r.FlagC ? 0x01 : 0) | (r.FlagV ? 0x02 : 0) | (r.FlagZ ? 0x04 : 0) |
                        (r.FlagN ? 0x08 : 0));
}

} // namespace

bool NextAddress(std::int32_t& Address, bool& FollowCalls, std::int32_t& Next, bool& Jump,
                 bool& Call, bool& Return, const TargetBytesReader& ReadTarget)
{
    Jump = Call = Return = false;
    bool result = true;
    const std::int32_t address = Unwrapped(Address);
    const std::int32_t index = address - ProgramBase;
    const Opcode op = OpcodeAt(index);
    std::int32_t operand = address + op.opcodeBytes;
    if (!op.row) {
        Next = operand & 0xFFFF;
        return true;
    }
    const Mnemonic mnemonic = op.row->mnemonic;
    const Mode mode = op.row->mode;
    const std::int32_t p = operand - address + index;   // buffer index of the operand
    const std::uint8_t b0 = BufferByte(p), b1 = BufferByte(p + 1), b2 = BufferByte(p + 2);

    if (mode == Mode::Relative)
        Jump = mnemonic != Mnemonic::BSR && hc11::BranchTaken(mnemonic, FlagsAsCcr());
    if (mnemonic == Mnemonic::JMP)
        Jump = true;
    if (mnemonic == Mnemonic::BSR || mnemonic == Mnemonic::JSR)
        Call = true;

    if (IsBitBranch(mode)) {
        std::int32_t tested = b0;
        if (mode == Mode::BitBranchIndexedX)
            tested = (CpuRegisters.IX + b0) & 0xFFFF;
        else if (mode == Mode::BitBranchIndexedY)
            tested = (CpuRegisters.IY + b0) & 0xFFFF;
        std::uint8_t value = 0;
        if (!ReadTarget || !ReadTarget(tested, {&value, 1}))
            result = false;
        // The mask is the instruction's own byte: whatever a window last read
        // at PC may belong to another instruction by now.
        const std::uint8_t mask = b1;
        Jump = mnemonic == Mnemonic::BRCLR ? (value & mask) == 0 : (~value & mask) == 0;
    }

    const bool taken = Jump || (Call && FollowCalls);
    // Behind the instruction, by the table's length; a taken flow goes elsewhere.
    const std::int32_t behind = address + LengthOf(op);
    std::int32_t next = behind;
    switch (mode) {
    case Mode::Inherent:
        if (mnemonic == Mnemonic::RTS) {
            Return = true;
            next = StackBuffer[1] << 8 | StackBuffer[2];
        } else if (mnemonic == Mnemonic::RTI) {
            // The interrupt frame keeps PC at SP + 8 and SP + 9, one byte past the
            // stack copy: read the word from the target.
            std::int32_t at = (CpuRegisters.SP + 8) & 0xFFFF;
            std::uint8_t word[2] = {};
            if (ReadTarget && ReadTarget(at, word))
                next = word[0] << 8 | word[1];
            else
                result = false;
        }
        break;
    case Mode::Direct: next = taken ? b0 : behind; break;
    case Mode::Extended: next = taken ? (b0 << 8 | b1) : behind; break;
    case Mode::IndexedX: next = taken ? CpuRegisters.IX + b0 : behind; break;
    case Mode::IndexedY: next = taken ? CpuRegisters.IY + b0 : behind; break;
    case Mode::Relative: next = behind + (taken ? static_cast<std::int8_t>(b0) : 0); break;
    case Mode::BitBranchDirect:
    case Mode::BitBranchIndexedX:
    case Mode::BitBranchIndexedY: next = behind + (taken ? static_cast<std::int8_t>(b2) : 0); break;
    default: break;
    }
    Next = next & 0xFFFF;
    return result;
}
