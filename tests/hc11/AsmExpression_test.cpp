#include <map>
#include <string>

#include "hc11/asm/AsmExpression.h"

using namespace hc11::as11;

namespace {

class Table final : public SymbolSource {
public:
    std::map<std::string, int, std::less<>> known = {{"PORT", 0x6000}, {"n.1_x", 3}, {"Loop", 0x1234}};
    SymbolValue Lookup(std::string_view name) override
    {
        const auto it = known.find(name);
        return it == known.end() ? SymbolValue{} : SymbolValue{it->second, true};
    }
};

} // namespace

class AsmExpressionTest : public QObject {
    Q_OBJECT
private:
    Table symbols;

private slots:
    void valuesInEveryNotationAndPrecedence()
    {
        const struct { const char* text; int here; int value; } rows[] = {
            {"$ff", 0, 0xFF}, {"%1010", 0, 10}, {"@17", 0, 15}, {"65535", 0, 65535},
            {"'A", 0, 'A'}, {"' '", 0, ' '}, {"'''", 0, '\''}, {"'A'+1", 0, 'B'},   // closing quote optional
            {"2+3*4", 0, 14}, {"(2+3)*4", 0, 20}, {"10-4-3", 0, 3}, {"100/7%3", 0, 2}, {"1|6&3", 0, 3},
            {"1|2^3", 0, 1 | (2 ^ 3)}, {"PORT+3&$FF", 0, (0x6000 + 3) & 0xFF}, {"~0&$FFFF", 0, 0xFFFF},
            {"--5", 0, 5}, {"-7/2", 0, -3},
            // '*' is the location counter where a value stands, else a product;
            // '%' a binary number where a value stands, else the remainder.
            {"*", 0xE000, 0xE000}, {"*+2", 0xE000, 0xE002}, {"**2", 0x10, 0x20}, {"2**", 0x10, 0x20},
            {"%11%2", 0, 1}, {"7%%11", 0, 1}, {"n.1_x*2", 0, 6},
            // Overflow wraps in 32 bits.
            {"$FFFFFFFF+1", 0, 0}, {"-2147483647-1", 0, std::numeric_limits<int>::min()},
            {"(-2147483647-1)/-1", 0, std::numeric_limits<int>::min()}, {"$123456789", 0, int(0x23456789)},
        };
        for (const auto& row : rows) {
            const ExprResult r = Evaluate(row.text, row.here, symbols);
            QVERIFY2(r.error == ExprError::None && r.known && r.value == row.value, row.text);
        }
    }

    void unknownSymbolsAreNamedAndBadExpressionsAreErrors()
    {
        // Case-sensitive; the first unknown one is named; an unknown divisor is no error yet.
        const std::pair<const char*, const char*> unknowns[] = {{"loop+PORT", "loop"}, {"PORT/Later+Other", "Later"}};
        for (const auto& [text, unknown] : unknowns) {
            const ExprResult r = Evaluate(text, 0, symbols);
            QVERIFY(r.error == ExprError::None && !r.known);
            QCOMPARE(r.where, std::string_view(unknown));
        }
        const std::string deep = std::string(100000, '(') + "1" + std::string(100000, ')');
        const std::string negations = std::string(100000, '-') + "1";
        const std::pair<std::string, ExprError> rows[] = {
            {"", ExprError::Syntax}, {"1+", ExprError::Syntax}, {"1 +2", ExprError::Syntax},   // a blank ends an operand
            {"1+2)", ExprError::Syntax}, {"'", ExprError::Syntax}, {"$", ExprError::BadNumber},
            {"12AB", ExprError::BadNumber}, {"@8", ExprError::BadNumber}, {"(1+2", ExprError::Unbalanced},
            {"5/0", ExprError::DivideByZero}, {"5%(3-3)", ExprError::DivideByZero},
            {deep, ExprError::TooDeep}, {negations, ExprError::TooDeep}};
        for (const auto& [text, error] : rows)
            QVERIFY2(Evaluate(text, 0, symbols).error == error, text.substr(0, 20).c_str());
        QCOMPARE(Evaluate("PORT+#3", 0, symbols).where, std::string_view("#3"));
    }
};

QTEST_APPLESS_MAIN(AsmExpressionTest)
#include "AsmExpression_test.moc"
