// Expressions of the assembler's operands: numbers in every notation of the
// language, character constants, symbols, the location counter and the usual
// operators with their precedence. Plain values: the caller owns the symbols.
#pragma once

#include <cstdint>
#include <string_view>

namespace hc11::as11 {

// The value of a symbol as the assembler knows it at the moment of asking.
struct SymbolValue {
    std::int32_t value = 0;
    bool known = false;
};

class SymbolSource {
public:
    virtual SymbolValue Lookup(std::string_view name) = 0;

protected:
    ~SymbolSource() = default;
};

enum class ExprError : std::uint8_t {
    None,
    Syntax,          // something where an operand or an operator belongs
    BadNumber,       // a digit outside its notation, or a number without digits
    Unbalanced,      // a parenthesis without its partner
    DivideByZero,
    TooDeep,         // nesting beyond what any real source needs
};

struct ExprResult {
    std::int32_t value = 0;
    bool known = true;              // false when a symbol is not (yet) defined
    ExprError error = ExprError::None;
    std::string_view where;         // the offending text, or the first unknown symbol
};

// Evaluates the whole text; text left over is a syntax error. `here` is the
// location counter that `*` stands for.
ExprResult Evaluate(std::string_view text, std::int32_t here, SymbolSource& symbols);

// Symbols: letters, digits, '.' and '_', not starting with a digit.
constexpr bool IsSymbolStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' || c == '_';
}
constexpr bool IsSymbolChar(char c) { return IsSymbolStart(c) || (c >= '0' && c <= '9'); }
bool IsSymbol(std::string_view text);

// How an error reads in a message, e.g. "division by zero".
std::string_view ExprErrorText(ExprError error);

} // namespace hc11::as11
