#include "ui/views/RegisterRows.h"

#include "engine/state/Conversions.h"

QString FlagText(std::uint8_t ccr)
{
    static const char Letters[] = "SXHINZVC";   // bit 7 first
    QString text(QLatin1Char('%'));
    for (int bit = 7; bit >= 0; --bit)
        text += (ccr >> bit) & 1 ? QLatin1Char(Letters[7 - bit]) : QLatin1Char('0');
    return text;
}

QString CellText(const RegisterRow& row, std::int32_t value, char format)
{
    if (row.flagLetters)
        return FlagText(static_cast<std::uint8_t>(value));
    return FormatValue(value, QString(QLatin1Char(format)), row.isWord);
}

QString EntryTextOf(const RegisterRow& row, std::int32_t value, const QString& cell)
{
    return row.flagLetters ? FormatValue(value, QStringLiteral("%"), row.isWord) : cell;
}

std::vector<std::uint8_t> WriteBytesOf(const RegisterRow& row, std::int32_t value)
{
    const auto low = static_cast<std::uint8_t>(value % 256);
    if (!row.isWord)
        return {low};
    return {static_cast<std::uint8_t>((value / 256) % 256), low};
}

std::int32_t BlockValue(const RegisterRow& row, std::span<const std::uint8_t> block, std::int32_t base)
{
    const auto at = static_cast<std::size_t>(row.address - base);
    if (!row.isWord)
        return block[at];
    return block[at] * 256 + block[at + 1];
}

QString RowToolTip(const RegisterRow& row)
{
    QString tip = QString::fromLatin1(row.name);
    if (row.title)
        tip += QStringLiteral(": ") + QString::fromLatin1(row.title);
    if (row.bits)
        tip += QStringLiteral("\nBits 7-0: ") + QString::fromLatin1(row.bits);
    return tip;
}
