#include "platform/widgets/PopupMenu.h"

#include <QMenu>

namespace {
PopupMenuHandler& Handler()
{
    static PopupMenuHandler handler;
    return handler;
}
}  // namespace

PopupMenuHandler SetPopupMenuHandler(PopupMenuHandler handler)
{
    return std::exchange(Handler(), std::move(handler));
}

void PopupMenu(QMenu* menu, const QPoint& globalPos)
{
    if (Handler()) {
        // The menu's own opening handlers run as they would on screen.
        emit menu->aboutToShow();
        Handler()(menu);
        emit menu->aboutToHide();
        return;
    }
    menu->exec(globalPos);
}
