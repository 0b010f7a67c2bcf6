#include "engine/source/AsmColouring.h"

#include "hc11/asm/AsmKeywords.h"
#include "hc11/asm/AsmSourceLine.h"


using namespace hc11::as11;

namespace {
bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsNameChar(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '.';
}

// Only the inherent form: whatever follows the mnemonic is a comment.
bool TakesNoOperand(const InstructionForms& forms)
{
    for (std::size_t mode = 1; mode < forms.byMode.size(); ++mode)
        if (forms.byMode[mode])
            return false;
    return true;
}

class LineParts {
public:
    explicit LineParts(const QString& line) : bytes_(line.toLatin1()), text_(bytes_.constData(), bytes_.size()) {}

    QList<AsmSpan> Parts()
    {
        const SourceLine fields = SplitLine(text_);
        if (!fields.label.empty())
            Add(AsmPart::Label, fields.label.data(), fields.label.size());
        if (fields.mnemonic.empty()) {
            // Nothing but a label, a comment or blanks.
            const std::size_t from = fields.label.empty() ? 0 : Offset(fields.label.data()) + fields.label.size();
            const std::size_t mark = text_.find_first_not_of(" \t:", from);
            if (mark != std::string_view::npos)
                Add(AsmPart::Comment, text_.data() + mark, text_.size() - mark);
            return spans_;
        }
        const Keyword keyword = FindKeyword(fields.mnemonic);
        if (keyword.instruction)
            Add(AsmPart::Mnemonic, fields.mnemonic.data(), fields.mnemonic.size());
        else if (keyword.directive != Directive::None)
            Add(AsmPart::Directive, fields.mnemonic.data(), fields.mnemonic.size());
        std::string_view rest = fields.rest;
        std::string_view operand;
        if (keyword.instruction && TakesNoOperand(*keyword.instruction))
            operand = {};
        else if (keyword.directive == Directive::Fcc)
            operand = DelimitedString(rest);
        else
            operand = OperandField(rest);
        if (keyword.directive == Directive::Fcc)
            Add(AsmPart::String, operand.data(), operand.size());
        else
            Operand(operand);
        const std::size_t commentAt = rest.find_first_not_of(" \t", operand.size());
        if (commentAt != std::string_view::npos)
            Add(AsmPart::Comment, rest.data() + commentAt, rest.size() - commentAt);
        return spans_;
    }

private:
    // FCC's text runs from its first character to the next one like it.
    static std::string_view DelimitedString(std::string_view rest)
    {
        if (rest.empty())
            return rest;
        const std::size_t close = rest.find(rest[0], 1);
        return rest.substr(0, close == std::string_view::npos ? rest.size() : close + 1);
    }

    void Operand(std::string_view operand)
    {
        std::size_t i = 0;
        while (i < operand.size()) {
            const char c = operand[i];
            const bool tokenStart = i == 0 || !IsNameChar(operand[i - 1]);
            const char next = i + 1 < operand.size() ? operand[i + 1] : '\0';
            std::size_t end = i;
            if (c == '\'') {
                end = std::min(operand.size(), i + (i + 2 < operand.size() && operand[i + 2] == '\'' ? 3 : 2));
                Add(AsmPart::String, operand.data() + i, end - i);
                i = end;
                continue;
            }
            if (tokenStart && c == '$' && IsHexDigit(next))
                for (end = i + 1; end < operand.size() && IsHexDigit(operand[end]);) ++end;
            else if (tokenStart && c == '%' && (next == '0' || next == '1'))
                for (end = i + 1; end < operand.size() && (operand[end] == '0' || operand[end] == '1');) ++end;
            else if (tokenStart && c == '@' && next >= '0' && next <= '7')
                for (end = i + 1; end < operand.size() && operand[end] >= '0' && operand[end] <= '7';) ++end;
            else if (tokenStart && c >= '0' && c <= '9')
                for (end = i; end < operand.size() && operand[end] >= '0' && operand[end] <= '9';) ++end;
            if (end > i) {
                Add(AsmPart::Number, operand.data() + i, end - i);
                i = end;
            } else {
                ++i;
            }
        }
    }

    std::size_t Offset(const char* at) const { return static_cast<std::size_t>(at - text_.data()); }

    void Add(AsmPart part, const char* at, std::size_t length)
    {
        if (length > 0)
            spans_ << AsmSpan{part, static_cast<qsizetype>(Offset(at)), static_cast<qsizetype>(length)};
    }

    QByteArray bytes_;   // one byte a character, so offsets are the line's positions
    std::string_view text_;
    QList<AsmSpan> spans_;
};
}  // namespace

QList<AsmSpan> ColourParts(const QString& line)
{
    return LineParts(line).Parts();
}
