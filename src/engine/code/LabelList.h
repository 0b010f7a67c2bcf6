// The rows of the label window, worked out from SymbolTable without widgets.
#pragma once

#include <QString>
#include <QVector>

struct LabelRow {
    QString Name;    // the label as the listing wrote it
    QString Value;   // "$" and four hex digits
};

// Every entry with a label, in listing order; a label defined twice stands
// twice. Sort mode "N" orders by name, "V" by value (four digits each, so the
// text order is the numeric one); any other mode keeps the listing order.
// Sorting is ascending and stable, on the text without regard to case.
QVector<LabelRow> LabelRows(const QString& sortMode);
