#include "engine/state/Conversions.h"

#include "engine/code/SymbolTable.h"

std::uint8_t ChecksumOf(const QByteArray& bytes, int n)
{
    std::uint8_t sum = 0;
    for (int i = 1; i <= n && i < bytes.size(); ++i)
        sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(bytes[i]));
    return sum;
}

QString HexPadded(std::int64_t value, int width)
{
    // A negative value shows its 32-bit pattern, as the hardware would.
    const auto bits = value < 0 ? static_cast<std::uint32_t>(value) : static_cast<std::uint64_t>(value);
    return QString::number(bits, 16).toUpper().rightJustified(width, QLatin1Char('0'));
}

std::int32_t HexToLong(const QString& text)
{
    std::uint32_t result = 0;
    for (const QChar c : text) {
        if (c >= '0' && c <= '9')
            result = result * 16 + (c.unicode() - '0');
        else if (c >= 'A' && c <= 'F')
            result = result * 16 + (c.unicode() - 'A' + 10);
    }
    return static_cast<std::int32_t>(result);
}

namespace {
int DigitOf(QChar c)
{
    if (c >= '0' && c <= '9')
        return c.unicode() - '0';
    if (c >= 'A' && c <= 'F')
        return c.unicode() - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c.unicode() - 'a' + 10;
    return -1;
}

// The value of digits in the given base; -1 when a character does not belong.
std::int64_t DigitsValue(QStringView digits, int base)
{
    std::int64_t value = 0;
    for (const QChar c : digits) {
        const int digit = DigitOf(c);
        if (digit < 0 || digit >= base)
            return -1;
        value = value * base + digit;
        if (value > 0xFFFFFFFFLL)   // far past any limit: stop before it overflows
            return -1;
    }
    return value;
}
}  // namespace

std::int32_t ParseNumber(const QString& text, bool wide)
{
    if (text.isEmpty())
        return -1;
    const qsizetype length = text.size();
    const QChar first = text[0];
    std::int64_t value = -1;
    if (first >= '0' && first <= '9') {
        if (length <= 5)
            value = DigitsValue(text, 10);
    } else if (first == '$') {
        if (length >= 2 && length <= 5)
            value = DigitsValue(QStringView(text).mid(1), 16);
    } else if (first == '%') {
        if (length >= 2)
            value = DigitsValue(QStringView(text).mid(1), 2);
    } else if (first == '@') {
        if (length >= 2 && length <= 7)
            value = DigitsValue(QStringView(text).mid(1), 8);
    }
    const std::int64_t limit = wide ? 65535 : 255;
    return value < 0 || value > limit ? -1 : static_cast<std::int32_t>(value);
}

QString FormatValue(std::int32_t value, const QString& prefix, bool wide)
{
    if (prefix == QLatin1String(" "))
        return QString::number(value);
    if (prefix == QLatin1String("$"))
        return '$' + HexPadded(value, wide ? 4 : 2);
    if (prefix == QLatin1String("%")) {
        QString digits;
        auto rest = static_cast<std::uint32_t>(value);
        while (rest != 0) {
            digits.prepend(QLatin1Char((rest & 1) ? '1' : '0'));
            rest >>= 1;
        }
        return '%' + digits.rightJustified(wide ? 16 : 8, QLatin1Char('0'));
    }
    return {};
}

QString ExpandTabs(const QString& text)
{
    // Built in one pass: replacing in place would move the rest of the line for every tab.
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'\t')
            result.resize(result.size() + 9 - result.size() % 9, u' ');   // stops every nine columns
        else
            result.append(c);
    }
    return result;
}

std::int32_t SymbolValue(QString& name)
{
    name = name.toUpper();
    for (int i = 0; i < SymbolCount && i < SymbolTable.size(); ++i) {
        if (SymbolTable[i].SymbolLabel == name)
            return SymbolTable[i].SymbolAddress;
    }
    return -1;
}

void SplitFileName(const QString& fileName, QString& base, QString& extension)
{
    const qsizetype point = fileName.lastIndexOf('.');
    if (point < 0) {
        base = fileName;
        extension.clear();
        return;
    }
    base = fileName.left(point);
    extension = fileName.mid(point + 1);
}
