// The menus and the toolbar of the main window as data: one row per entry,
// in display order. frmMain builds its menu bar, its hidden popup menus and
// its toolbar from these rows and finds each entry again by its name.
#pragma once

class frmMain;

namespace commands {

enum Flags : unsigned {
    None = 0,
    Off = 1,        // starts disabled
    Checked = 2,    // starts with its check mark
    Hidden = 4,     // starts invisible
    Check = 8,      // shows a check mark, which only code sets
    Popup = 16,     // a top-level menu that is never in the menu bar
};

using Handler = void (frmMain::*)();

// level 0: a menu (in the bar, or a popup with the flag Popup);
// level 1: its entries; level 2: entries of the submenu above them.
// A row without a caption is a separator; the few separators that code
// shows and hides have a name.
struct MenuRow {
    int level;
    const char* name;
    const char* caption;
    const char* shortcut;   // in QKeySequence's portable form, "" for none
    unsigned flags;
    int help;               // help context number, 0 for none
    Handler click;          // nullptr while the command has no handler
};

// A toolbar position: a button, a separator (no tool tip), or an empty slot.
struct ToolbarRow {
    enum Kind { Button, Separator, Empty };
    Kind kind;
    const char* toolTip;    // the button's identity
    unsigned flags;         // Off
    const char* command;    // the menu entry that the click acts as, or nullptr
};

// An entry whose whole work is a method of a child window, called by name:
// window nullptr means the active child window. A window that is not loaded
// is created first (if it has landed); the active window must have it.
struct ForwardRow {
    const char* entry;
    const char* window;
    const char* method;
};

const MenuRow* MenuRows(int& count);
const ForwardRow* ForwardRows(int& count);
const ToolbarRow* ToolbarRows(int& count);   // position 1 first

}  // namespace commands
