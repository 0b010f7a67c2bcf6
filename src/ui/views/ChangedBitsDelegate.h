// Paints a register window's value cells with the bits that changed since the
// target's last stop in ChangedValueColour: in a binary cell each changed
// digit, in a decimal or hex cell, where no digit stands for a bit, the whole
// value. The changed bits sit in the cell's ChangedBitsRole.
#pragma once

#include <QStyledItemDelegate>

inline constexpr int ChangedBitsRole = Qt::UserRole + 1;
inline constexpr Qt::GlobalColor ChangedValueColour = Qt::red;

class ChangedBitsDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
