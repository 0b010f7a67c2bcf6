#include "engine/code/DisAsmPage.h"

#include "engine/code/Asm.h"
#include "engine/code/ProgramBufferAccess.h"
#include "engine/code/SymbolTable.h"
#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"

#include <algorithm>
#include <string>

namespace {
constexpr int CodePlaces = 5;
constexpr char16_t HexDigits[] = u"0123456789ABCDEF";

void AppendHex(QString& out, unsigned value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        out += QChar(HexDigits[(value >> shift) & 0xF]);
}

// The instruction's bytes as the page reads them: from the buffer, behind the wrap.
const std::uint8_t* CodeAt(std::int32_t address)
{
    return ProgramBuffer.data() + (program_buffer::Unwrapped(address) - ProgramBase);
}
}  // namespace

QChar BranchMark(const TargetBytesReader& readTarget)
{
    std::int32_t pc = CpuRegisters.PC;
    bool followCalls = false;
    std::int32_t next = 0;
    bool jump = false, call = false, ret = false;
    NextAddress(pc, followCalls, next, jump, call, ret, readTarget);
    if (!jump)
        return QLatin1Char(' ');
    const std::int32_t at = CpuRegisters.PC & 0xFFFF;
    if (next == at)
        return QChar(PlusMinusMark);
    return QLatin1Char(next > at ? '+' : '-');
}

void BuildRowText(QString& out, std::int32_t address, const std::uint8_t* code, int length, QChar mark,
                  QStringView instruction)
{
    out.resize(0);   // keeps the capacity: the page is rebuilt at every step
    out += QLatin1String(" $");
    AppendHex(out, static_cast<unsigned>(address) & 0xFFFF, 4);
    out += QLatin1String(": ");
    if (code) {
        for (int i = 0; i < CodePlaces; ++i) {
            if (i < length) {
                AppendHex(out, code[i], 2);
                out += QLatin1Char(' ');
            } else {
                out += QLatin1String("   ");
            }
        }
    }
    out += mark;
    out += QLatin1Char(' ');
    out += instruction;
}

const QString* MatchingSource(std::int32_t address, int length, const std::uint8_t* code)
{
    const QString* source = nullptr;
    const int count = std::min<int>(SymbolCount, static_cast<int>(SymbolTable.size()));
    for (int i = 0; i < count; ++i) {
        const SymbolEntry& entry = SymbolTable[i];
        // No early exit: the last entry that matches is the one shown.
        if (entry.SymbolAddress == address && entry.SymbolCodeSize == length &&
            std::equal(code, code + length, entry.SymbolCode.begin()))
            source = &entry.SymbolSource;
    }
    return source;
}

void DecodePage(std::int32_t top, const PageSwitches& switches, PageRowArray& rows)
{
    CpuRegisters.PC &= 0xFFFF;
    std::int32_t a = top;
    std::int16_t length = 0;
    std::string text;
    QString instruction;
    for (PageRow& row : rows) {
        const std::int32_t address = a & 0xFFFF;
        row.RowAddress = address;
        row.AtPC = false;
        row.Breakpoint = false;
        if (!InstructionInBuffer(a)) {
            // Its bytes were never read: an empty row rather than a guess.
            DisAsmLine(a, length, text);
            row.RowText.resize(0);
        } else {
            DisAsmLine(a, length, text);
            const std::uint8_t* code = CodeAt(a);
            const QString* source = switches.IncludeSym ? MatchingSource(address, length, code) : nullptr;
            if (!source) {
                instruction.resize(static_cast<qsizetype>(text.size()));
                std::transform(text.begin(), text.end(), instruction.begin(),
                               [](char c) { return QChar(QLatin1Char(c)); });
            }
            row.Breakpoint = HasBreakpoint(address);
            row.AtPC = address == CpuRegisters.PC;
            const QChar mark = row.AtPC ? BranchMark(switches.ReadTarget) : QLatin1Char(' ');
            BuildRowText(row.RowText, address, switches.CodeOn ? code : nullptr, length, mark,
                         source ? QStringView(*source) : QStringView(instruction));
        }
        a = (a + length) & 0xFFFF;
    }
}

std::int32_t ScrollUpTop(std::int32_t base)
{
    std::int16_t length = 0;
    std::string text;
    for (std::int32_t top = base; top <= base + 3; ++top) {
        std::int32_t at = top;
        DisAsmLine(at, length, text);
        if (length == 5 - (top - base))
            return top & 0xFFFF;
    }
    return (base + 4) & 0xFFFF;
}

std::int32_t PageUpTop(std::int32_t base, std::int32_t oldTop, int visibleRows)
{
    // Reaching the old top is judged on the unwrapped scale of the buffer.
    const std::int32_t goal = oldTop >= base ? oldTop : oldTop + 65536;
    std::int16_t length = 0;
    std::string text;
    int start = 0;
    int count = 0;
    for (; start <= 3; ++start) {
        std::int32_t a = base + start;
        count = 0;
        while (a < goal) {
            DisAsmLine(a, length, text);
            a += length;
            ++count;
        }
        if ((a & 0xFFFF) == oldTop)
            break;
    }
    // start is 4 when no start hit the old top exactly; count is then that of start 3.
    std::int32_t a = base + start;
    while (count >= visibleRows) {
        DisAsmLine(a, length, text);
        a += length;
        --count;
    }
    return a & 0xFFFF;
}
