// The shape of an instruction's operand field, before any value is known:
// immediate, indexed, plain address, or the address-mask-target list of the
// bit instructions. Which opcode it becomes is the assembler's choice.
#pragma once

#include <cstdint>
#include <string_view>

#include "hc11/asm/AsmKeywords.h"

namespace hc11::as11 {

struct Operand {
    enum class Kind : std::uint8_t { None, Immediate, Indexed, Plain, Bit };
    enum class Index : std::uint8_t { None, X, Y };

    Kind kind = Kind::None;
    Index index = Index::None;
    char force = 0;                  // '<' direct, '>' extended, or 0
    std::string_view address;        // address, offset or immediate value; empty offset means 0
    std::string_view mask;           // bit instructions
    std::string_view target;         // BRSET and BRCLR
    std::string_view text;           // the whole field, for messages
};

// Reads the operand of `forms` at the start of `rest` (operand and comment).
// Returns an empty text on success, else the problem for the error message.
std::string_view ParseOperand(const InstructionForms& forms, std::string_view rest, Operand& out);

} // namespace hc11::as11
