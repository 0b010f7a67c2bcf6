#include "ui/views/LabelValueList.h"

#include "platform/widgets/Fonts.h"
#include "platform/widgets/WindowPlacement.h"

#include <QMouseEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr double LabelColumnTwips = 780;   // a longer symbol is cut by the column
}  // namespace

QTreeWidget* AddLabelValueList(QWidget& window)
{
    window.setFont(FixedPitchFont(QStringLiteral("Courier New"), 9.75));
    auto* list = new QTreeWidget(&window);
    list->setObjectName(QStringLiteral("ListView"));
    list->setColumnCount(2);
    list->setRootIsDecorated(false);
    list->setHeaderHidden(true);
    list->setUniformRowHeights(true);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setColumnWidth(0, TwipsToPixelsX(LabelColumnTwips));
    list->viewport()->installEventFilter(&window);
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list);
    return list;
}

const QMouseEvent* RightButtonPress(const QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress)
        return nullptr;
    const auto* press = static_cast<const QMouseEvent*>(event);
    return press->button() == Qt::RightButton ? press : nullptr;
}
