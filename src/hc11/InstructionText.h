// An instruction as text, the way the disassembler shows it and the assembler
// reads it back: the mnemonic, padded to six places when an operand follows,
// then the operand in hexadecimal as the table's format lays it out:
// "LDAA  #$05", "STAA  $12,X", "BRSET $10,Y $80 $1000".
#pragma once

#include <cstdint>
#include <string>

#include "hc11/InstructionSet.h"

namespace hc11 {

// Where a branch offset leads from next, the address behind the branch.
constexpr std::uint16_t BranchTarget(std::uint16_t next, std::uint8_t offset)
{
    return static_cast<std::uint16_t>(next + static_cast<std::int8_t>(offset));
}

// How far target lies from next, modulo 65536: a branch reaches it when the
// distance is from -128 to 127.
constexpr int BranchDistance(std::uint16_t next, std::uint16_t target)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(target - next));
}

// Appends the instruction of `row`. operand points at the bytes behind the
// opcode (as many as the row's format has); next is the address behind the
// instruction.
void AppendInstructionText(std::string& text, const Instruction& row, const std::uint8_t* operand,
                           std::uint16_t next);

} // namespace hc11
