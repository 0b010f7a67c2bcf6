#include "engine/code/LabelList.h"

#include "engine/code/SymbolTable.h"
#include "engine/state/Conversions.h"

#include <algorithm>

QVector<LabelRow> LabelRows(const QString& sortMode)
{
    QVector<LabelRow> rows;
    for (int i = 0; i < SymbolCount && i < SymbolTable.size(); ++i) {
        const SymbolEntry& entry = SymbolTable[i];
        if (!entry.SymbolLabel.isEmpty())
            rows.append({entry.SymbolLabel, '$' + HexPadded(entry.SymbolAddress, 4)});
    }
    const auto byText = [](auto key) {
        return [key](const LabelRow& a, const LabelRow& b) {
            return QString::compare(a.*key, b.*key, Qt::CaseInsensitive) < 0;
        };
    };
    if (sortMode == QLatin1String("N"))
        std::stable_sort(rows.begin(), rows.end(), byText(&LabelRow::Name));
    else if (sortMode == QLatin1String("V"))
        std::stable_sort(rows.begin(), rows.end(), byText(&LabelRow::Value));
    return rows;
}
