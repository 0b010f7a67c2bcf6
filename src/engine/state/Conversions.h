// The program's number notation and a few text helpers shared by the windows:
// "$" hexadecimal, "%" binary, "@" octal, no prefix decimal.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

// 8-bit sum of bytes 1 to n of a frame; byte 0, the command letter or the
// first byte of a reply, stays outside.
std::uint8_t ChecksumOf(const QByteArray& bytes, int n);

// Upper-case hexadecimal without prefix, padded with "0" to at least width digits.
QString HexPadded(std::int64_t value, int width);

// Reads hexadecimal digits "0"-"9", "A"-"F"; every other character is skipped.
std::int32_t HexToLong(const QString& text);

// The single reader of numbers the user types. -1 for anything that is not a
// number of the notation, or above 65535 (wide) or 255 (narrow).
std::int32_t ParseNumber(const QString& text, bool wide);

// A value in the notation of prefix " " (decimal), "$" or "%"; empty for another prefix.
QString FormatValue(std::int32_t value, const QString& prefix, bool wide);

// Tabs become blanks up to the next stop; stops are every 9 columns.
QString ExpandTabs(const QString& text);

// The address of the first symbol named exactly name in upper case, or -1.
std::int32_t SymbolValue(QString& name);

// Splits at the last "." of the whole text; no point gives an empty extension.
void SplitFileName(const QString& fileName, QString& base, QString& extension);
