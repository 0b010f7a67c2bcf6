#include "hc11/asm/AsmOperand.h"

#include <vector>

#include "hc11/asm/AsmSourceLine.h"

namespace hc11::as11 {
namespace {

bool IsRegister(std::string_view t, char reg)
{
    return t.size() == 1 && (t[0] == reg || t[0] == reg - 'A' + 'a');
}

Operand::Index IndexOf(std::string_view t)
{
    return IsRegister(t, 'X') ? Operand::Index::X
         : IsRegister(t, 'Y') ? Operand::Index::Y
                              : Operand::Index::None;
}

// Bit instructions take their items separated by blanks or commas:
// "BRCLR 0,X $01 LOOP", "BSET $10,#$80". Reading stops once all items are
// in, so whatever follows is the comment.
class BitItems {
public:
    explicit BitItems(std::string_view rest) : s_(rest) {}

    // The next item; `comma` tells whether a comma stood before it.
    bool Next(std::string_view& item, bool& comma)
    {
        comma = false;
        while (i_ < s_.size() && (IsBlank(s_[i_]) || s_[i_] == ',')) {
            if (s_[i_] == ',') {
                if (comma)   // two commas: an empty item between them
                    break;
                comma = true;
            }
            ++i_;
        }
        if (i_ >= s_.size() || (s_[i_] == ';' && !comma))
            return false;
        const std::size_t start = i_;
        int depth = 0;
        while (i_ < s_.size() && !IsBlank(s_[i_]) && !(s_[i_] == ',' && depth <= 0)) {
            if (s_[i_] == '\'') {
                i_ += 2;
                if (i_ < s_.size() && s_[i_] == '\'')
                    ++i_;
                continue;
            }
            depth += s_[i_] == '(' ? 1 : s_[i_] == ')' ? -1 : 0;
            ++i_;
        }
        i_ = std::min(i_, s_.size());
        item = s_.substr(start, i_ - start);
        return true;
    }

    std::string_view Consumed() const { return s_.substr(0, i_); }
    bool StartsWithComma() const
    {
        std::size_t j = 0;
        while (j < s_.size() && IsBlank(s_[j]))
            ++j;
        return j < s_.size() && s_[j] == ',';
    }

private:
    std::string_view s_;
    std::size_t i_ = 0;
};

std::string_view ParseBit(const InstructionForms& forms, std::string_view rest, Operand& out)
{
    const bool branch = forms.In(Mode::BitBranchDirect) != nullptr;
    out.kind = Operand::Kind::Bit;
    BitItems items(rest);
    std::string_view item;
    bool comma = false;

    // ",X" alone stands for offset 0.
    if (!items.StartsWithComma()) {
        if (!items.Next(item, comma))
            return "missing operand";
        out.address = item;
    }
    if (!items.Next(item, comma))
        return "missing mask";
    if (comma && IndexOf(item) != Operand::Index::None) {
        out.index = IndexOf(item);
        if (!items.Next(item, comma))
            return "missing mask";
    } else if (out.address.empty()) {
        return "bad operand";
    }
    out.mask = item;
    if (!out.mask.empty() && out.mask[0] == '#')
        out.mask.remove_prefix(1);
    if (branch) {
        if (!items.Next(item, comma))
            return "missing branch target";
        out.target = item;
    }
    if (!out.address.empty() && out.address[0] == '<')
        out.address.remove_prefix(1);
    out.text = items.Consumed();
    while (!out.text.empty() && IsBlank(out.text.front()))
        out.text.remove_prefix(1);
    if ((!out.address.empty() && out.address[0] == '#') || out.mask.empty())
        return "bad operand";
    return {};
}

} // namespace

std::string_view ParseOperand(const InstructionForms& forms, std::string_view rest, Operand& out)
{
    out = Operand{};
    if (forms.In(Mode::Inherent))
        return {};   // all that follows is comment
    if (forms.In(Mode::BitDirect) || forms.In(Mode::BitBranchDirect))
        return ParseBit(forms, rest, out);

    const std::string_view field = OperandField(rest);
    out.text = field;
    if (field.empty())
        return "missing operand";
    if (field[0] == '#') {
        out.kind = Operand::Kind::Immediate;
        out.address = field.substr(1);
        return {};
    }
    thread_local std::vector<std::string_view> items;
    SplitItems(field, items);
    if (items.size() == 2 && IndexOf(items[1]) != Operand::Index::None) {
        out.kind = Operand::Kind::Indexed;
        out.index = IndexOf(items[1]);
        out.address = items[0];
        return {};
    }
    if (items.size() != 1)
        return "bad operand";
    out.kind = Operand::Kind::Plain;
    out.address = field;
    if (field[0] == '<' || field[0] == '>') {
        out.force = field[0];
        out.address = field.substr(1);
    }
    return {};
}

} // namespace hc11::as11
