#include <QtTest>

#include <map>
#include <string>

#include "source/hc11/AsmExpression.h"

using namespace hc11::as11;

namespace {

class Table final : public SymbolSource {
public:
    std::map<std::string, int, std::less<>> known;
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

    int Value(const char* text, int here = 0x1000)
    {
        const ExprResult r = Evaluate(text, here, symbols);
        if (r.error != ExprError::None || !r.known)
            qWarning() << text << "gave error" << int(r.error) << "known" << r.known;
        return r.value;
    }
    ExprError ErrorOf(const char* text) { return Evaluate(text, 0, symbols).error; }

private slots:
    void init() { symbols.known = {{"PORT", 0x6000}, {"n.1_x", 3}, {"Loop", 0x1234}}; }

    void numbersInEveryNotation()
    {
        QCOMPARE(Value("$1F"), 0x1F);
        QCOMPARE(Value("$ff"), 0xFF);
        QCOMPARE(Value("%1010"), 10);
        QCOMPARE(Value("@17"), 15);
        QCOMPARE(Value("65535"), 65535);
        QCOMPARE(Value("0"), 0);
        // Character constants with and without the closing quote.
        QCOMPARE(Value("'A"), 'A');
        QCOMPARE(Value("'A'"), 'A');
        QCOMPARE(Value("' '"), ' ');
        QCOMPARE(Value("'''"), '\'');
        QCOMPARE(Value("'A'+1"), 'B');
    }

    void operatorsFollowNormalPrecedence()
    {
        QCOMPARE(Value("2+3*4"), 14);
        QCOMPARE(Value("(2+3)*4"), 20);
        QCOMPARE(Value("10-4-3"), 3);                // left to right
        QCOMPARE(Value("100/7%3"), 2);               // (100/7)%3
        QCOMPARE(Value("1|6&3"), 3);                 // & binds tighter than |
        QCOMPARE(Value("1|2^3"), 1 | (2 ^ 3));       // ^ between & and |
        QCOMPARE(Value("$F0|$0F^$FF"), 0xF0 | (0x0F ^ 0xFF));
        QCOMPARE(Value("PORT+3&$FF"), (0x6000 + 3) & 0xFF);
        QCOMPARE(Value("-1"), -1);
        QCOMPARE(Value("~0&$FFFF"), 0xFFFF);
        QCOMPARE(Value("--5"), 5);
        QCOMPARE(Value("-(2+3)*2"), -10);
        QCOMPARE(Value("-7/2"), -3);
    }

    void starAndPercentReadByPosition()
    {
        // '*' is the location counter where a value stands, else a product.
        QCOMPARE(Value("*", 0xE000), 0xE000);
        QCOMPARE(Value("*+2", 0xE000), 0xE002);
        QCOMPARE(Value("**2", 0x10), 0x20);
        QCOMPARE(Value("2**", 0x10), 0x20);
        // '%' is a binary number where a value stands, else the remainder.
        QCOMPARE(Value("%11%2"), 1);
        QCOMPARE(Value("7%%11"), 1);
    }

    void symbolsAreCaseSensitiveAndUnknownOnesAreNamed()
    {
        QCOMPARE(Value("n.1_x*2"), 6);
        QCOMPARE(Value("Loop"), 0x1234);
        const ExprResult r = Evaluate("loop+PORT", 0, symbols);
        QCOMPARE(r.error, ExprError::None);
        QVERIFY(!r.known);
        QCOMPARE(r.where, std::string_view("loop"));
        // The first unknown one is reported, and an unknown divisor is no error yet.
        const ExprResult d = Evaluate("PORT/Later+Other", 0, symbols);
        QCOMPARE(d.error, ExprError::None);
        QCOMPARE(d.where, std::string_view("Later"));
    }

    void badExpressionsAreErrorsWithTheirPlace()
    {
        QCOMPARE(ErrorOf(""), ExprError::Syntax);
        QCOMPARE(ErrorOf("1+"), ExprError::Syntax);
        QCOMPARE(ErrorOf("1 +2"), ExprError::Syntax);   // a blank ends an operand
        QCOMPARE(ErrorOf("$"), ExprError::BadNumber);
        QCOMPARE(ErrorOf("$G1"), ExprError::BadNumber);
        QCOMPARE(ErrorOf("12AB"), ExprError::BadNumber);
        QCOMPARE(ErrorOf("%102"), ExprError::BadNumber);
        QCOMPARE(ErrorOf("@8"), ExprError::BadNumber);
        QCOMPARE(ErrorOf("(1+2"), ExprError::Unbalanced);
        QCOMPARE(ErrorOf("1+2)"), ExprError::Syntax);
        QCOMPARE(ErrorOf("'"), ExprError::Syntax);
        QCOMPARE(ErrorOf("5/0"), ExprError::DivideByZero);
        QCOMPARE(ErrorOf("5%(3-3)"), ExprError::DivideByZero);
        const ExprResult r = Evaluate("PORT+#3", 0, symbols);
        QCOMPARE(r.where, std::string_view("#3"));
    }

    void extremeInputsStayBounded()
    {
        // Deep nesting is refused, not a stack overflow.
        const std::string deep = std::string(100000, '(') + "1" + std::string(100000, ')');
        QCOMPARE(Evaluate(deep, 0, symbols).error, ExprError::TooDeep);
        const std::string negations(100000, '-');
        QCOMPARE(Evaluate(negations + "1", 0, symbols).error, ExprError::TooDeep);
        // Overflow wraps in 32 bits instead of being undefined.
        QCOMPARE(Value("$FFFFFFFF+1"), 0);
        QCOMPARE(Value("-2147483647-1"), std::numeric_limits<int>::min());
        QCOMPARE(Value("(-2147483647-1)/-1"), std::numeric_limits<int>::min());
        QCOMPARE(Value("$123456789"), int(0x23456789));
    }
};

QTEST_APPLESS_MAIN(AsmExpressionTest)
#include "AsmExpression_test.moc"
