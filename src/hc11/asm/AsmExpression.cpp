#include "hc11/asm/AsmExpression.h"

namespace hc11::as11 {
namespace {

// Parentheses and unary operators recurse; real sources nest a few levels.
constexpr int MaxDepth = 64;

std::int32_t Wrap(std::uint32_t v) { return static_cast<std::int32_t>(v); }

class Parser {
public:
    Parser(std::string_view text, std::int32_t here, SymbolSource& symbols)
        : text_(text), here_(here), symbols_(symbols)
    {
    }

    ExprResult Run()
    {
        ExprResult result;
        result.value = Or(0);
        if (error_ == ExprError::None && pos_ < text_.size())
            Fail(ExprError::Syntax, pos_);
        if (error_ != ExprError::None) {
            result.error = error_;
            result.where = where_;
            result.value = 0;
            return result;
        }
        result.known = known_;
        result.where = unknown_;
        return result;
    }

private:
    char Peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }
    bool AtEnd() const { return pos_ >= text_.size(); }

    void Fail(ExprError error, std::size_t at)
    {
        if (error_ != ExprError::None)
            return;
        error_ = error;
        where_ = text_.substr(at < text_.size() ? at : text_.size());
        if (where_.empty())
            where_ = text_;
        pos_ = text_.size();   // stop everything above
    }

    // Lowest precedence first: | then ^ then & then + - then * / % then unary.
    std::int32_t Or(int depth)
    {
        std::int32_t v = Xor(depth);
        while (Peek() == '|') {
            ++pos_;
            v = Wrap(std::uint32_t(v) | std::uint32_t(Xor(depth)));
        }
        return v;
    }
    std::int32_t Xor(int depth)
    {
        std::int32_t v = And(depth);
        while (Peek() == '^') {
            ++pos_;
            v = Wrap(std::uint32_t(v) ^ std::uint32_t(And(depth)));
        }
        return v;
    }
    std::int32_t And(int depth)
    {
        std::int32_t v = Sum(depth);
        while (Peek() == '&') {
            ++pos_;
            v = Wrap(std::uint32_t(v) & std::uint32_t(Sum(depth)));
        }
        return v;
    }
    std::int32_t Sum(int depth)
    {
        std::int32_t v = Product(depth);
        for (char op = Peek(); op == '+' || op == '-'; op = Peek()) {
            ++pos_;
            const std::uint32_t r = std::uint32_t(Product(depth));
            v = Wrap(op == '+' ? std::uint32_t(v) + r : std::uint32_t(v) - r);
        }
        return v;
    }
    std::int32_t Product(int depth)
    {
        std::int32_t v = Unary(depth);
        for (char op = Peek(); op == '*' || op == '/' || op == '%'; op = Peek()) {
            const std::size_t at = pos_;
            ++pos_;
            const std::int32_t r = Unary(depth);
            if (op == '*') {
                v = Wrap(std::uint32_t(v) * std::uint32_t(r));
            } else if (r == 0) {
                // An unknown divisor reads as 0 in the first pass: no error yet.
                if (known_)
                    Fail(ExprError::DivideByZero, at);
                v = 0;
            } else if (r == -1) {
                v = op == '/' ? Wrap(0u - std::uint32_t(v)) : 0;   // INT_MIN / -1 wraps
            } else {
                v = op == '/' ? v / r : v % r;
            }
        }
        return v;
    }
    std::int32_t Unary(int depth)
    {
        if (depth >= MaxDepth) {
            Fail(ExprError::TooDeep, pos_);
            return 0;
        }
        switch (Peek()) {
        case '-': ++pos_; return Wrap(0u - std::uint32_t(Unary(depth + 1)));
        case '~': ++pos_; return Wrap(~std::uint32_t(Unary(depth + 1)));
        case '+': ++pos_; return Unary(depth + 1);
        default: return Primary(depth);
        }
    }
    std::int32_t Primary(int depth)
    {
        const std::size_t start = pos_;
        const char c = Peek();
        if (c == '(') {
            ++pos_;
            const std::int32_t v = Or(depth + 1);
            if (Peek() != ')') {
                Fail(AtEnd() ? ExprError::Unbalanced : ExprError::Syntax, AtEnd() ? start : pos_);
                return 0;
            }
            ++pos_;
            return v;
        }
        if (c == '*') {
            ++pos_;
            return here_;
        }
        if (c == '\'') {
            // 'c or 'c' : the character after the quote, taken as it is.
            if (pos_ + 1 >= text_.size()) {
                Fail(ExprError::Syntax, start);
                return 0;
            }
            const auto ch = static_cast<unsigned char>(text_[pos_ + 1]);
            pos_ += 2;
            if (Peek() == '\'')
                ++pos_;
            return ch;
        }
        if (c == '$')
            return Number(16, start, 1);
        if (c == '%')
            return Number(2, start, 1);
        if (c == '@')
            return Number(8, start, 1);
        if (c >= '0' && c <= '9')
            return Number(10, start, 0);
        if (IsSymbolStart(c)) {
            while (IsSymbolChar(Peek()))
                ++pos_;
            const std::string_view name = text_.substr(start, pos_ - start);
            const SymbolValue s = symbols_.Lookup(name);
            if (!s.known && known_) {
                known_ = false;
                unknown_ = name;
            }
            return s.value;
        }
        Fail(ExprError::Syntax, start);
        return 0;
    }
    std::int32_t Number(int base, std::size_t start, std::size_t prefix)
    {
        pos_ += prefix;
        std::uint32_t v = 0;
        std::size_t digits = 0;
        for (; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            int d;
            if (c >= '0' && c <= '9')
                d = c - '0';
            else if (c >= 'A' && c <= 'Z')
                d = c - 'A' + 10;
            else if (c >= 'a' && c <= 'z')
                d = c - 'a' + 10;
            else if (c == '_' || c == '.')
                d = 99;
            else
                break;
            if (d >= base) {
                Fail(ExprError::BadNumber, start);
                return 0;
            }
            v = v * std::uint32_t(base) + std::uint32_t(d);
            ++digits;
        }
        if (digits == 0)
            Fail(ExprError::BadNumber, start);
        return Wrap(v);
    }

    std::string_view text_;
    std::int32_t here_;
    SymbolSource& symbols_;
    std::size_t pos_ = 0;
    bool known_ = true;
    std::string_view unknown_;
    ExprError error_ = ExprError::None;
    std::string_view where_;
};

} // namespace

ExprResult Evaluate(std::string_view text, std::int32_t here, SymbolSource& symbols)
{
    if (text.empty()) {
        ExprResult r;
        r.error = ExprError::Syntax;
        return r;
    }
    return Parser(text, here, symbols).Run();
}

bool IsSymbol(std::string_view text)
{
    if (text.empty() || !IsSymbolStart(text[0]))
        return false;
    for (char c : text)
        if (!IsSymbolChar(c))
            return false;
    return true;
}

std::string_view ExprErrorText(ExprError error)
{
    switch (error) {
    case ExprError::None: return "no error";
    case ExprError::Syntax: return "bad expression";
    case ExprError::BadNumber: return "bad number";
    case ExprError::Unbalanced: return "missing ')'";
    case ExprError::DivideByZero: return "division by zero";
    case ExprError::TooDeep: return "expression nested too deeply";
    }
    return "bad expression";
}

} // namespace hc11::as11
