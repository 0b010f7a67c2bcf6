// Programs generated from the instruction table, in the assembler's own syntax
// and in the GNU HC11 assembler's MRI syntax ('*' before a direct operand,
// commas between bit operands). Qt-free: the assembler benchmark uses it too.
#pragma once

#include <cstdio>
#include <string>

#include "hc11/InstructionSet.h"

namespace asmtest {

struct TwinSource {
    std::string ours;
    std::string gnu;
    int lines = 0;
};

// One line per row of the instruction table, every mnemonic in every mode,
// with operand values that differ from row to row. Labels get `suffix` so
// the block can be repeated in one source.
inline void AppendEveryInstruction(TwinSource& out, const std::string& suffix)
{
    using hc11::Mode;
    int row = 0;
    for (const hc11::Instruction& ins : hc11::AllInstructions()) {
        ++row;
        char b[8], m[8], w[8];
        std::snprintf(b, sizeof b, "$%02X", (row * 37 + 5) & 0xFF);            // an 8-bit value
        std::snprintf(m, sizeof m, "$%02X", (row * 11 + 1) & 0xFF);            // a bit mask
        std::snprintf(w, sizeof w, "$%04X", 0x1000 + ((row * 263) & 0xEFFF));  // a 16-bit value above $FF
        char label[32];
        std::snprintf(label, sizeof label, "L%d%s", row, suffix.c_str());
        const std::string n(hc11::MnemonicName(ins.mnemonic)), l = label;
        const Mode mode = ins.mode;
        const std::string x = mode == Mode::IndexedX || mode == Mode::BitIndexedX || mode == Mode::BitBranchIndexedX
            ? ",X" : ",Y";
        const std::string op = "        " + n + " ", branch = l + " " + n + " ";
        std::string ours, gnu;
        switch (mode) {
        case Mode::Inherent: ours = gnu = "        " + n; break;
        case Mode::Immediate8: ours = gnu = op + "#" + b; break;
        case Mode::Immediate16: ours = gnu = op + "#" + w; break;
        case Mode::Direct: ours = op + b, gnu = op + "*" + b; break;
        case Mode::Extended: ours = gnu = op + w; break;
        case Mode::IndexedX: case Mode::IndexedY: ours = gnu = op + b + x; break;
        case Mode::BitDirect: ours = op + b + " " + m, gnu = op + "*" + b + ",#" + m; break;
        case Mode::BitIndexedX: case Mode::BitIndexedY: ours = gnu = op + b + x + ",#" + m; break;
        case Mode::BitBranchDirect:
            ours = branch + b + ",#" + m + " " + l, gnu = branch + "*" + b + ",#" + m + "," + l;
            break;
        case Mode::BitBranchIndexedX: case Mode::BitBranchIndexedY:
            ours = branch + b + x + " " + m + " " + l, gnu = branch + b + x + ",#" + m + "," + l;
            break;
        case Mode::Relative: ours = gnu = branch + l; break;
        }
        out.ours += ours + '\n';
        out.gnu += gnu + '\n';
        ++out.lines;
    }
}

} // namespace asmtest
