// The M68HC11 instruction set: one declarative table of every legal opcode on
// page 0 and behind the prefixes $18, $1A and $CD. The CPU core, the decoder,
// the flow analysis, the cycle count and the assembler all read this table;
// nothing else lists opcodes. How each mode's operand is written and laid out
// is here too: the disassembler writes operands by it, the assembler encodes them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace hc11 {

// Addressing modes, numbered as the decoder and the flow analysis share them.
enum class Mode : std::uint8_t {
    Inherent = 0,
    Immediate8 = 1,
    Immediate16 = 2,
    Direct = 3,
    BitDirect = 4,           // address, mask
    BitBranchDirect = 5,     // address, mask, offset
    Extended = 6,
    IndexedX = 7,
    BitIndexedX = 8,
    BitBranchIndexedX = 9,
    IndexedY = 10,
    BitIndexedY = 11,
    BitBranchIndexedY = 12,
    Relative = 13,
};

// One item of an operand, in the order its bytes follow the opcode, which is
// also the order the items are written in: "$12,X $34 $1000" is an address
// byte, a mask and a branch offset.
enum class Field : std::uint8_t {
    None,
    Byte,     // an 8-bit address, index offset or immediate value
    Word,     // a 16-bit address or immediate value
    Mask,     // the bit mask of the bit instructions
    Offset,   // a branch offset, written as the address it leads to
};

// How a mode's operand is written and laid out: "#" before immediate data,
// ",X" or ",Y" behind the first item, the items apart by a blank.
struct OperandFormat {
    bool immediate = false;
    char index = 0;   // 'X', 'Y', or 0 for none
    std::array<Field, 3> fields{};
};

constexpr OperandFormat FormatOf(Mode mode)
{
    using enum Field;
    switch (mode) {
    case Mode::Inherent: return {};
    case Mode::Immediate8: return {true, 0, {Byte}};
    case Mode::Immediate16: return {true, 0, {Word}};
    case Mode::Direct: return {false, 0, {Byte}};
    case Mode::BitDirect: return {false, 0, {Byte, Mask}};
    case Mode::BitBranchDirect: return {false, 0, {Byte, Mask, Offset}};
    case Mode::Extended: return {false, 0, {Word}};
    case Mode::IndexedX: return {false, 'X', {Byte}};
    case Mode::BitIndexedX: return {false, 'X', {Byte, Mask}};
    case Mode::BitBranchIndexedX: return {false, 'X', {Byte, Mask, Offset}};
    case Mode::IndexedY: return {false, 'Y', {Byte}};
    case Mode::BitIndexedY: return {false, 'Y', {Byte, Mask}};
    case Mode::BitBranchIndexedY: return {false, 'Y', {Byte, Mask, Offset}};
    case Mode::Relative: return {false, 0, {Offset}};
    }
    return {};
}

// The 138 mnemonics, in alphabetical order. The decoder's spellings: LSL, not
// ASL; BCC and BCS, not BHS and BLO.
enum class Mnemonic : std::uint8_t {
    ABA, ABX, ABY, ADCA, ADCB, ADDA, ADDB, ADDD, ANDA, ANDB, ASR, ASRA, ASRB, BCC, BCLR, BCS,
    BEQ, BGE, BGT, BHI, BITA, BITB, BLE, BLS, BLT, BMI, BNE, BPL, BRA, BRCLR, BRN, BRSET,
    BSET, BSR, BVC, BVS, CBA, CLC, CLI, CLR, CLRA, CLRB, CLV, CMPA, CMPB, COM, COMA, COMB,
    CPD, CPX, CPY, DAA, DEC, DECA, DECB, DES, DEX, DEY, EORA, EORB, FDIV, IDIV, INC, INCA,
    INCB, INS, INX, INY, JMP, JSR, LDAA, LDAB, LDD, LDS, LDX, LDY, LSL, LSLA, LSLB, LSLD,
    LSR, LSRA, LSRB, LSRD, MUL, NEG, NEGA, NEGB, NOP, ORAA, ORAB, PSHA, PSHB, PSHX, PSHY, PULA,
    PULB, PULX, PULY, ROL, ROLA, ROLB, ROR, RORA, RORB, RTI, RTS, SBA, SBCA, SBCB, SEC, SEI,
    SEV, STAA, STAB, STD, STOP, STS, STX, STY, SUBA, SUBB, SUBD, SWI, TAB, TAP, TBA, TPA,
    TST, TSTA, TSTB, TSX, TSY, TXS, TYS, WAI, XGDX, XGDY,
};
constexpr int MnemonicCount = 138;

// Upper-case name of a mnemonic, e.g. "LDAA".
std::string_view MnemonicName(Mnemonic mnemonic);

struct Instruction {
    std::uint8_t page;      // 0 for no prefix, else the prefix byte $18, $1A or $CD
    std::uint8_t opcode;    // the byte after the prefix, or the only opcode byte
    Mnemonic mnemonic;
    Mode mode;
    std::uint8_t length;    // bytes in all, prefix included: 1 to 5
    std::uint8_t cycles;    // E-clock cycles of the published timing table (WAI counts 0)
};

// Every row, page 0 first, then the pages $18, $1A and $CD, each in opcode order.
std::span<const Instruction> AllInstructions();

// True for the three page prefixes $18, $1A and $CD.
constexpr bool IsPrefix(std::uint8_t byte) { return byte == 0x18 || byte == 0x1A || byte == 0xCD; }

// The row of an opcode on a page (0, $18, $1A, $CD), or nullptr when the page has none.
const Instruction* FindInstruction(std::uint8_t page, std::uint8_t opcode);

// The row of the instruction that starts with these bytes (first byte, and the
// second when the first is a prefix), or nullptr for an illegal sequence.
inline const Instruction* DecodeOpcode(std::uint8_t first, std::uint8_t second)
{
    return IsPrefix(first) ? FindInstruction(first, second) : FindInstruction(0, first);
}

} // namespace hc11
