// Programs generated from the instruction table, written twice: in the
// assembler's own syntax and in the MRI syntax of the GNU HC11 assembler
// (which wants '*' before a direct operand and commas between bit operands).
// Used by the cross-check test and the assembler benchmark. Header-only and
// Qt-free so the benchmark can include it too.
#pragma once

#include <cstdio>
#include <string>

#include "code/hc11/InstructionSet.h"

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
    int row = 0;
    char ours[96], gnu[96];
    for (const hc11::Instruction& ins : hc11::AllInstructions()) {
        ++row;
        const std::string name(hc11::MnemonicName(ins.mnemonic));
        std::string label = std::to_string(row);
        label.insert(0, 1, 'L');
        label += suffix;
        const unsigned b = (row * 37 + 5) & 0xFF;         // an 8-bit value
        const unsigned m = (row * 11 + 1) & 0xFF;         // a bit mask
        const unsigned w = 0x1000 + ((row * 263) & 0xEFFF); // a 16-bit value above $FF
        const char* l = label.c_str();
        const char* n = name.c_str();
        switch (ins.mode) {
        case hc11::Mode::Inherent:
            std::snprintf(ours, sizeof ours, "        %s", n);
            std::snprintf(gnu, sizeof gnu, "        %s", n);
            break;
        case hc11::Mode::Immediate8:
            std::snprintf(ours, sizeof ours, "        %s #$%02X", n, b);
            std::snprintf(gnu, sizeof gnu, "        %s #$%02X", n, b);
            break;
        case hc11::Mode::Immediate16:
            std::snprintf(ours, sizeof ours, "        %s #$%04X", n, w);
            std::snprintf(gnu, sizeof gnu, "        %s #$%04X", n, w);
            break;
        case hc11::Mode::Direct:
            std::snprintf(ours, sizeof ours, "        %s $%02X", n, b);
            std::snprintf(gnu, sizeof gnu, "        %s *$%02X", n, b);
            break;
        case hc11::Mode::Extended:
            std::snprintf(ours, sizeof ours, "        %s $%04X", n, w);
            std::snprintf(gnu, sizeof gnu, "        %s $%04X", n, w);
            break;
        case hc11::Mode::IndexedX:
        case hc11::Mode::IndexedY: {
            const char r = ins.mode == hc11::Mode::IndexedX ? 'X' : 'Y';
            std::snprintf(ours, sizeof ours, "        %s $%02X,%c", n, b, r);
            std::snprintf(gnu, sizeof gnu, "        %s $%02X,%c", n, b, r);
            break;
        }
        case hc11::Mode::BitDirect:
            std::snprintf(ours, sizeof ours, "        %s $%02X $%02X", n, b, m);
            std::snprintf(gnu, sizeof gnu, "        %s *$%02X,#$%02X", n, b, m);
            break;
        case hc11::Mode::BitIndexedX:
        case hc11::Mode::BitIndexedY: {
            const char r = ins.mode == hc11::Mode::BitIndexedX ? 'X' : 'Y';
            std::snprintf(ours, sizeof ours, "        %s $%02X,%c,#$%02X", n, b, r, m);
            std::snprintf(gnu, sizeof gnu, "        %s $%02X,%c,#$%02X", n, b, r, m);
            break;
        }
        case hc11::Mode::BitBranchDirect:
            std::snprintf(ours, sizeof ours, "%s %s $%02X,#$%02X %s", l, n, b, m, l);
            std::snprintf(gnu, sizeof gnu, "%s %s *$%02X,#$%02X,%s", l, n, b, m, l);
            break;
        case hc11::Mode::BitBranchIndexedX:
        case hc11::Mode::BitBranchIndexedY: {
            const char r = ins.mode == hc11::Mode::BitBranchIndexedX ? 'X' : 'Y';
            std::snprintf(ours, sizeof ours, "%s %s $%02X,%c $%02X %s", l, n, b, r, m, l);
            std::snprintf(gnu, sizeof gnu, "%s %s $%02X,%c,#$%02X,%s", l, n, b, r, m, l);
            break;
        }
        case hc11::Mode::Relative:
            std::snprintf(ours, sizeof ours, "%s %s %s", l, n, l);
            std::snprintf(gnu, sizeof gnu, "%s %s %s", l, n, l);
            break;
        }
        out.ours += ours;
        out.ours += '\n';
        out.gnu += gnu;
        out.gnu += '\n';
        ++out.lines;
    }
}

// The instruction block repeated until the source has at least `lines`
// lines. Our copy starts each block at `origin` again, so a long source
// never runs past the top of memory; the GNU copy has a comment there.
inline TwinSource RepeatedProgram(int lines, unsigned origin)
{
    TwinSource out;
    char org[32];
    std::snprintf(org, sizeof org, "        ORG $%04X\n", origin);
    for (int block = 0; out.lines < lines; ++block) {
        out.ours += org;
        out.gnu += "* block\n";
        ++out.lines;
        std::string suffix = std::to_string(block);
        suffix.insert(0, 1, '_');
        AppendEveryInstruction(out, suffix);
    }
    return out;
}

} // namespace asmtest
