// The tool windows of the main window: one row each, with the window's name,
// its View entry and the factory that builds it.
//
// frmMain keeps no list of open windows. A tool window is open while its View
// entry is checked; Refresh, RefreshRun, FreezeDisplay, ThawDisplay, the
// Debug menu and the popups ask that entry, and find the loaded widget by its
// object name, which is the window's name ("frmStack").
//
// How a window plugs in (nothing in the refresh or menu routines changes):
//  1. Write `QWidget* CreateStack(frmMain& main)` beside the window, returning
//     a new, unshown widget, and put it into the window's row in
//     ToolWindows.cpp. A row whose factory is nullptr is a window that has not
//     landed: it counts as closed, and its View entry toggles nothing.
//  2. LoadWindow checks the View entry first, then builds the widget, names it,
//     puts it in an MDI child window that deletes itself on close, and shows
//     it; so the window's own load code already counts as open. A window
//     with a Q_INVOKABLE Form_Load gets it called once it sits in its frame
//     and before it shows (placement by the rule needs the frame). When the
//     widget is destroyed the entry's check goes off, whatever closed it.
//  3. The methods that others call by name are Q_INVOKABLE (or slots) with no
//     arguments: mnuRefresh; register windows Redraw, mnuEnter, mnuViewHex,
//     mnuViewBin, mnuViewDec, mnuAutoRefresh; frmDisAsm and frmStack
//     ClearMarks; frmDisAsm mnuGoToPCAddress, mnuGoToAddress, mnuSetNewPC,
//     mnuToggleBreakpoint, mnuClearAllBreakpoints, PageRedraw; frmStack
//     mnuEnter, mnuGoToSPAddress, mnuGoToAddress; frmMemory mnuMemoryEnter,
//     mnuMemoryAddress, mnuMemoryRefresh.
//  4. The widget derives from ToolWindow (ui/views/ToolWindow.h), which keeps
//     the placement, the View entry's check, activation and the popups, and
//     hands out the target as link_, frmMain's one TargetLink
//     (engine/link/TargetLink.h) with InByte, InBytes, OutByte, OutBytes,
//     InMemory and the rest. Its failures show their message boxes by
//     themselves; the window tests BoardConnected. RefreshRun calls the
//     window's mnuRefresh while it is open.
//  5. The window calls frmMain's rule routines at its own state changes
//     (EnableRules.cpp): frmDisAsm calls DisAsmMenus on activation and after
//     reads, DisAsmDeactivated on deactivation, DisAsmUnloaded on unload, and
//     ShowDebugPopup for its right button; frmWatch calls SetEditWatchCommand.
#pragma once

#include <QString>

class QWidget;
class frmMain;

namespace toolwindows {

using Factory = QWidget* (*)(frmMain& main);

struct ToolWindowRow {
    const char* window;      // object name of the widget
    const char* viewEntry;   // the View entry whose check is "open"
    Factory create;          // nullptr until the window exists
};

const ToolWindowRow* Rows(int& count);
// The row of a window or of a View entry; nullptr if there is none.
const ToolWindowRow* RowOfWindow(const QString& window);
const ToolWindowRow* RowOfViewEntry(const QString& entry);

// Tests plug a stand-in window in; returns the previous factory.
Factory SetFactory(const QString& window, Factory factory);

}  // namespace toolwindows
