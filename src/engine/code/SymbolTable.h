// The symbols of the last listing loaded: one entry per code line or label,
// in listing order, neither sorted nor merged.
#pragma once

#include <QString>
#include <QVector>
#include <array>
#include <cstdint>

struct SymbolEntry {
    std::int32_t SymbolAddress = 0;             // 0 to 65535
    std::int16_t SymbolCodeSize = 0;            // code bytes, 0 to 5
    std::array<std::uint8_t, 5> SymbolCode{};
    QString SymbolLabel;                        // empty when the line has no label
    QString SymbolSource;                       // the source text of the line
};

extern QVector<SymbolEntry> SymbolTable;
extern std::int16_t SymbolCount;   // entries in use, at most 32767

// An address the user typed: a number of the notation within 16 bits, else
// the value of the symbol of that name in upper case; -1 for neither.
// Numbers win, so a label that reads as a number is never looked up.
std::int32_t AddressFromText(const QString& text);
