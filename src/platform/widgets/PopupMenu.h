// The one road to a popup menu: shown at a screen position until the user
// picks an entry or dismisses it. A test installs a handler that plays the
// user (it sees the menu as it is while up, and may trigger an entry).
#pragma once

#include <QPoint>
#include <functional>

class QMenu;

void PopupMenu(QMenu* menu, const QPoint& globalPos);

using PopupMenuHandler = std::function<void(QMenu* menu)>;
// Replaces the real popup; an empty handler restores it. Returns the previous one.
PopupMenuHandler SetPopupMenuHandler(PopupMenuHandler handler);
