#include "hc11/asm/AsmSourceLine.h"


namespace hc11::as11 {
namespace {

std::size_t SkipBlanks(std::string_view s, std::size_t i)
{
    while (i < s.size() && IsBlank(s[i]))
        ++i;
    return i;
}

std::size_t SkipWord(std::string_view s, std::size_t i)
{
    while (i < s.size() && !IsBlank(s[i]))
        ++i;
    return i;
}

} // namespace

SourceLine SplitLine(std::string_view line)
{
    SourceLine out;
    std::size_t i = 0;
    if (!line.empty() && !IsBlank(line[0])) {
        if (line[0] == '*' || line[0] == ';') {
            out.comment = true;
            return out;
        }
        i = SkipWord(line, 0);
        out.label = line.substr(0, i);
        if (out.label.size() > 1 && out.label.back() == ':')
            out.label.remove_suffix(1);
    }
    i = SkipBlanks(line, i);
    if (i < line.size() && (line[i] == ';' || line[i] == '*')) {
        out.comment = out.label.empty();
        return out;
    }
    const std::size_t end = SkipWord(line, i);
    out.mnemonic = line.substr(i, end - i);
    out.rest = line.substr(SkipBlanks(line, end));
    out.comment = out.label.empty() && out.mnemonic.empty();
    return out;
}

std::string_view OperandField(std::string_view rest)
{
    if (!rest.empty() && rest[0] == ';')
        return {};
    std::size_t i = 0;
    while (i < rest.size() && !IsBlank(rest[i])) {
        if (rest[i] == '\'' && i + 1 < rest.size()) {
            i += 2;   // the quote and its character, whatever it is
            if (i < rest.size() && rest[i] == '\'')
                ++i;
        } else {
            ++i;
        }
    }
    return rest.substr(0, i);
}

void SplitItems(std::string_view operand, std::vector<std::string_view>& items)
{
    items.clear();
    int depth = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i < operand.size(); ++i) {
        const char c = operand[i];
        if (c == '\'') {
            i += 1;   // the character after the quote is data
            if (i + 1 < operand.size() && operand[i + 1] == '\'')
                ++i;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        } else if (c == ',' && depth <= 0) {
            items.push_back(operand.substr(start, i - start));
            start = i + 1;
        }
    }
    items.push_back(operand.substr(start < operand.size() ? start : operand.size()));
}

bool LineReader::Next(std::string_view& line)
{
    if (pos_ >= text_.size())
        return false;
    std::size_t end = pos_;
    while (end < text_.size() && text_[end] != '\n' && text_[end] != '\r')
        ++end;
    line = text_.substr(pos_, end - pos_);
    pos_ = end + 1;
    if (end + 1 < text_.size() && text_[end] == '\r' && text_[end + 1] == '\n')
        ++pos_;
    return true;
}

std::size_t LineReader::Count(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        count += text[i] == '\n' || text[i] == '\r';
    }
    // A last line without an end counts too.
    return count + (!text.empty() && text.back() != '\n' && text.back() != '\r');
}

} // namespace hc11::as11
