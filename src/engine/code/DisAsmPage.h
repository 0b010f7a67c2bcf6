// The page of the disassembly window as data: the rows decoded from
// ProgramBuffer, their texts, and the searches that find where the page
// starts when it scrolls backwards. No widget is involved; frmDisAsm draws
// what these routines give.
#pragma once

#include "engine/code/Asm.h"

#include <QString>
#include <array>
#include <cstdint>
#include <string_view>

constexpr int PageRowCount = 50;

struct PageRow {
    std::int32_t RowAddress = 0;   // 0 to 65535
    QString RowText;               // empty when the instruction runs past ProgramBuffer
    bool Breakpoint = false;       // a breakpoint is set at RowAddress
    bool AtPC = false;             // the row of PC: drawn bold
};
using PageRowArray = std::array<PageRow, PageRowCount>;

struct PageSwitches {
    bool CodeOn = false;       // the machine code column (mnuDebugCodeOn)
    bool IncludeSym = false;   // source lines of the listing (mnuDebugIncludeSym)
    // The target's bytes for the PC row's mark: a bit branch reads its tested byte.
    TargetBytesReader ReadTarget;
};

constexpr char16_t PlusMinusMark = 0x00B1;

// The mark of the PC row: a blank unless the instruction at PC jumps, then
// "+" forward, "-" backward, plus-minus onto itself.
QChar BranchMark(const TargetBytesReader& readTarget);

// The text of one row into out: " $1000: ", the code bytes padded to five
// places when code is given, the mark, a blank and the instruction.
void BuildRowText(QString& out, std::int32_t address, const std::uint8_t* code, int length, QChar mark,
                  QStringView instruction);

// The source line of the last SymbolTable entry with this address, length and
// code bytes; nullptr when none matches.
const QString* MatchingSource(std::int32_t address, int length, const std::uint8_t* code);

// Decodes all 50 rows from top, which must lie in ProgramBuffer. Rows whose
// instruction needs bytes behind the buffer keep their address and stay empty.
void DecodePage(std::int32_t top, const PageSwitches& switches, PageRowArray& rows);

// With ProgramBuffer read at base, which lies 5 bytes above the old top row:
// the start of the instruction that ends at the old top row, tried 5, 4, 3
// and 2 bytes back; 1 byte back when none fits.
std::int32_t ScrollUpTop(std::int32_t base);

// With ProgramBuffer read at base, 250 bytes above the last visible row: the
// top row of the page that has oldTop as its last visible row, found by
// decoding forward from base, base + 1, ... base + 4.
std::int32_t PageUpTop(std::int32_t base, std::int32_t oldTop, int visibleRows);
