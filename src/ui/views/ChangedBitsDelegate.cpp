#include "ui/views/ChangedBitsDelegate.h"

#include <QApplication>
#include <QPainter>

void ChangedBitsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    const auto bits = index.data(ChangedBitsRole).toUInt();
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString text = cell.text;
    if (bits == 0 || text.isEmpty()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    if (!text.startsWith(QLatin1Char('%'))) {
        cell.palette.setColor(QPalette::Text, ChangedValueColour);
        cell.palette.setColor(QPalette::HighlightedText, ChangedValueColour);
        const QWidget* view = option.widget;
        QStyle* style = view ? view->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, view);
        return;
    }
    // The frame and selection as usual, then the digits one by one: the last
    // digit is bit 0.
    const QWidget* view = option.widget;
    QStyle* style = view ? view->style() : QApplication::style();
    cell.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, view);
    cell.text = text;
    QRect area = style->subElementRect(QStyle::SE_ItemViewItemText, &cell, view);
    area.adjust(style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1, 0, 0, 0);
    const QColor normal = cell.palette.color(cell.state & QStyle::State_Selected ? QPalette::HighlightedText
                                                                                  : QPalette::Text);
    painter->save();
    painter->setFont(cell.font);
    const QFontMetrics metrics(cell.font);
    int x = area.left();
    const int lastBit = int(text.size()) - 2;
    for (int i = 0; i < text.size(); ++i) {
        const int bit = lastBit - (i - 1);
        const bool changed = i > 0 && bit < 32 && ((bits >> bit) & 1);
        painter->setPen(changed ? QColor(ChangedValueColour) : normal);
        const QString digit(text[i]);
        painter->drawText(QRect(x, area.top(), metrics.horizontalAdvance(digit) + 1, area.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, digit);
        x += metrics.horizontalAdvance(digit);
    }
    painter->restore();
}
