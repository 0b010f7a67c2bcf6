#include "engine/link/IoUnit.h"

#include "engine/state/TargetState.h"

#include <cmath>

namespace iounit {

namespace {
const QString Error = QStringLiteral("error");

QString Binary8(int n)
{
    return QString::number(n, 2).rightJustified(8, QLatin1Char('0'));
}

// The value of the text's longest numeric beginning ("12x" is 12); 0 if none.
double LeadingNumber(const QString& text)
{
    qsizetype end = 0;
    if (end < text.size() && (text[end] == QLatin1Char('-') || text[end] == QLatin1Char('+')))
        ++end;
    while (end < text.size() && text[end].isDigit())
        ++end;
    if (end < text.size() && text[end] == QLatin1Char('.'))
        for (++end; end < text.size() && text[end].isDigit(); ++end) {}
    bool ok = false;
    const double value = text.left(end).toDouble(&ok);
    return ok ? value : 0;
}

int BinaryValue(const QString& digits)
{
    int n = 0;
    for (QChar c : digits)
        n = n * 2 + (c == QLatin1Char('1'));
    return n;
}
}  // namespace

QString removeLeadingZeroes(const QString& Value)
{
    qsizetype first = 0;
    while (first < Value.size() && Value[first] == QLatin1Char('0'))
        ++first;
    return first == Value.size() ? QStringLiteral("0") : Value.mid(first);
}

QString fromInt(const QString& Value, const QString& valType)
{
    QString text = Value.trimmed();
    const bool negative = text.startsWith(QLatin1Char('-'));
    if (negative)
        text.remove(0, 1);
    text = removeLeadingZeroes(text);
    if (negative)
        text.prepend(QLatin1Char('-'));
    if (text.size() > 4)
        return Error;
    int n = static_cast<int>(std::lround(LeadingNumber(text)));
    if (n == 0 && text != QLatin1String("0"))
        return Error;
    const bool inRange = valType == QLatin1String("signed") ? n >= -128 && n <= 127 : n >= 0 && n <= 255;
    if (!inRange)
        return Error;
    if (n < 0)
        n += 256;
    return Binary8(n);
}

QString fromHex(const QString& Value)
{
    QString text = removeLeadingZeroes(Value.toUpper().trimmed());
    if (text.size() > 2)
        return Error;
    if (text.size() == 1)
        text.prepend(QLatin1Char('0'));
    int n = 0;
    for (QChar c : text) {
        // A character that is no hex digit counts as 0.
        const int digit = QStringLiteral("0123456789ABCDEF").indexOf(c);
        n = n * 16 + (digit < 0 ? 0 : digit);
    }
    return Binary8(n);
}

QString fromBinary(const QString& Value)
{
    const QString text = removeLeadingZeroes(Value.trimmed());
    if (text.size() > 8)
        return Error;
    for (QChar c : text)
        if (c != QLatin1Char('0') && c != QLatin1Char('1'))
            return Error;
    return text.rightJustified(8, QLatin1Char('0'));
}

QString toInt(const QString& Value, const QString& valType)
{
    int n = BinaryValue(removeLeadingZeroes(Value));
    if (valType == QLatin1String("signed") && n > 127)
        n -= 256;
    return (n < 0 ? QStringLiteral("-") : QStringLiteral(" ")) + QString::number(std::abs(n));
}

QString toHex(const QString& Value)
{
    return QStringLiteral("%1").arg(toInt(Value, QStringLiteral("unsigned")).trimmed().toInt(), 2, 16, QLatin1Char('0')).toUpper();
}

QString toBCD(const QString& Value)
{
    const int high = BinaryValue(Value.left(4));
    const int low = BinaryValue(Value.mid(4, 4));
    if (high >= 10 || low >= 10)
        return Error;
    return QString::number(high) + QString::number(low);
}

const QStringList& InFormats()
{
    static const QStringList formats{QStringLiteral("Signed"), QStringLiteral("Unsigned"), QStringLiteral("Hex"),
                                     QStringLiteral("Binary")};
    return formats;
}

const QStringList& OutFormats()
{
    static const QStringList formats{QStringLiteral("Signed"), QStringLiteral("Unsigned"), QStringLiteral("Hex"),
                                     QStringLiteral("BCD")};
    return formats;
}

}  // namespace iounit

using namespace iounit;

namespace {
// A register's binary text in the window's format: Signed, Unsigned and Hex
// are common to both sides, the fourth (Binary in, BCD out) is the side's own.
QString ShownAs(const QString& binary, const QString& format, QString (*fourth)(const QString&))
{
    if (format == QLatin1String("Signed"))
        return toInt(binary, QStringLiteral("signed"));
    if (format == QLatin1String("Unsigned"))
        return toInt(binary, QStringLiteral("unsigned"));
    if (format == QLatin1String("Hex"))
        return toHex(binary);
    return fourth(binary);
}
} // namespace

void IoUnit::setInDataRegister(std::uint8_t Data)
{
    TextInBinary = fromInt(QString::number(Data), QStringLiteral("unsigned"));
    SetInFormat(InFormat);
}

void IoUnit::setOutDataRegister(std::uint8_t Data)
{
    TextOutBinary = fromInt(QString::number(Data), QStringLiteral("unsigned"));
    SetOutFormat(OutFormat);
}

void IoUnit::SetInFormat(const QString& format)
{
    InFormat = format;
    if (!TextIn.isEmpty())
        TextIn = ShownAs(TextInBinary, format, fromBinary);
}

void IoUnit::SetOutFormat(const QString& format)
{
    OutFormat = format;
    TextOut = ShownAs(TextOutBinary, format, toBCD);
}

bool IoUnit::Enter()
{
    QString binary;
    if (InFormat == QLatin1String("Signed"))
        binary = fromInt(TextIn, QStringLiteral("signed"));
    else if (InFormat == QLatin1String("Unsigned"))
        binary = fromInt(TextIn, QStringLiteral("unsigned"));
    else if (InFormat == QLatin1String("Hex"))
        binary = fromHex(TextIn);
    else
        binary = fromBinary(TextIn);
    if (binary == QLatin1String("error")) {
        TextIn.clear();
        return false;
    }
    TextInBinary = binary;
    InFresh = true;
    TargetMemory[InFlagAddress] = 1;
    TargetMemory[InDataAddress] = static_cast<std::uint8_t>(BinaryValue(binary));
    return true;
}

void IoUnit::Read()
{
    TargetMemory[OutFlagAddress] = 0;
    OutFresh = false;
}

bool IoUnit::LedLit(int led) const
{
    return LedPower && led >= 0 && led < 8 && TextOutBinary[led] == QLatin1Char('1');
}
