// The words the assembler knows in the mnemonic field: the instructions, read
// from the shared instruction table, their aliases, and the directives.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "hc11/InstructionSet.h"

namespace hc11::as11 {

enum class Directive : std::uint8_t {
    None, Org, Equ, Set, Fcb, Fdb, Fcc, Rmb, Rmw, Bsz, Zmb, Fill, End,
    Ignored,   // OPT, PAGE, NAM, TTL, SPC: accepted, no effect on the code
};

// Every form of one mnemonic, indexed by addressing mode; nullptr where the
// processor has none.
struct InstructionForms {
    Mnemonic mnemonic;
    std::array<const Instruction*, 14> byMode{};

    const Instruction* In(Mode mode) const { return byMode[static_cast<int>(mode)]; }
};

struct Keyword {
    const InstructionForms* instruction = nullptr;
    Directive directive = Directive::None;
};

// Looks a mnemonic field up in any letter case; an unknown word gives an
// empty keyword.
Keyword FindKeyword(std::string_view word);

} // namespace hc11::as11
