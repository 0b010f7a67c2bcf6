#include "engine/code/SymbolTable.h"

#include "engine/state/Conversions.h"

QVector<SymbolEntry> SymbolTable;
std::int16_t SymbolCount = 0;

std::int32_t AddressFromText(const QString& text)
{
    const std::int32_t number = ParseNumber(text, true);
    if (number != -1)
        return number;
    QString name = text;
    return SymbolValue(name);
}
