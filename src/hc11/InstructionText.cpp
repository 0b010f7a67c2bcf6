#include "hc11/InstructionText.h"

namespace hc11 {
namespace {

constexpr int MnemonicColumns = 6;

void AppendHex(std::string& text, unsigned value, int digits)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    text += '$';
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        text += Digits[(value >> shift) & 0xF];
}

} // namespace

void AppendInstructionText(std::string& text, const Instruction& row, const std::uint8_t* operand,
                           std::uint16_t next)
{
    const std::string_view name = MnemonicName(row.mnemonic);
    text += name;
    const OperandFormat format = FormatOf(row.mode);
    if (format.fields[0] == Field::None)
        return;
    text.append(MnemonicColumns - name.size(), ' ');
    if (format.immediate)
        text += '#';
    for (std::size_t i = 0; i < format.fields.size(); ++i) {
        switch (format.fields[i]) {
        case Field::None: return;
        case Field::Byte:
        case Field::Mask: AppendHex(text, *operand++, 2); break;
        case Field::Word:
            AppendHex(text, unsigned(operand[0]) << 8 | operand[1], 4);
            operand += 2;
            break;
        case Field::Offset: AppendHex(text, BranchTarget(next, *operand++), 4); break;
        }
        if (i == 0 && format.index) {
            text += ',';
            text += format.index;
        }
        if (i + 1 < format.fields.size() && format.fields[i + 1] != Field::None)
            text += ' ';
    }
}

} // namespace hc11
