// One line of assembly source split into its fields: label in column 1,
// mnemonic, operand, comment. Only the layout is known here, not the language.
#pragma once

#include <string_view>
#include <vector>

namespace hc11::as11 {

struct SourceLine {
    std::string_view label;      // without a trailing colon; empty for none
    std::string_view mnemonic;   // as written
    std::string_view rest;       // after the mnemonic and its blanks: operand and comment
    bool comment = false;        // blank line, or '*' or ';' where a field begins
};

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

SourceLine SplitLine(std::string_view line);

// The operand field at the start of `rest`: up to the first blank that is not
// the character of a 'c constant. A ';' there starts a comment instead.
std::string_view OperandField(std::string_view rest);

// Items of an operand separated by commas at the outer level (FCB 1,',',(2)).
void SplitItems(std::string_view operand, std::vector<std::string_view>& items);

// Reads the text line by line; lines end at LF, CR LF or a lone CR, and
// come without their ends.
class LineReader {
public:
    explicit LineReader(std::string_view text) : text_(text) {}
    bool Next(std::string_view& line);

    // The number of lines Next gives for a text.
    static std::size_t Count(std::string_view text);

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

} // namespace hc11::as11
