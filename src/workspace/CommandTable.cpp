#include "workspace/CommandTable.h"

#include "workspace/frmMain.h"

namespace commands {

namespace {
const MenuRow Menus[] = {
    {0, "mnuFile", "&File", "", None, nullptr},
    {1, "mnuFileNew", "&New", "Ctrl+N", None, nullptr},
    {1, "mnuFileOpen", "&Open ...", "Ctrl+O", None, nullptr},
    {1, "mnuFileClose", "&Close", "", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuFileSave", "&Save", "Ctrl+S", Off, nullptr},
    {1, "mnuFileSaveAs", "Save &As ...", "", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuFilePrintSetup", "P&rint Setup ...", "", None, nullptr},
    {1, "mnuFilePrint", "&Print ...", "Ctrl+P", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuFileAssemble", "Asse&mble ...", "F2", None, nullptr},
    {1, "mnuFileLoadSymbols", "&Load Symbols ...", "Ctrl+L", None, &frmMain::mnuFileLoadSymbols_Click},
    {1, "mnuFileDownload", "&Download ...", "Ctrl+D", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuFileExit", "E&xit", "", None, &frmMain::mnuFileExit_Click},
    {0, "mnuEdit", "&Edit", "", None, nullptr},
    {1, "mnuEditUndo", "&Undo", "Ctrl+Z", Off, nullptr},
    {1, "mnuEditRedo", "R&edo", "", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuEditCut", "Cu&t", "Ctrl+X", Off, nullptr},
    {1, "mnuEditCopy", "&Copy", "Ctrl+C", Off, nullptr},
    {1, "mnuEditPaste", "&Paste", "Ctrl+V", Off, nullptr},
    {1, "mnuEditDelete", "&Delete", "Del", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuEditSelectAll", "Select Al&l", "Ctrl+A", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuEditFind", "&Find ...", "Ctrl+F", Off, nullptr},
    {1, "mnuEditFindNext", "Find &Next", "F3", Off, nullptr},
    {1, "mnuEditReplace", "&Replace ...", "Ctrl+H", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuEditGoToLine", "&Go To Line ...", "Ctrl+G", Off, nullptr},
    {0, "mnuView", "&View", "", None, nullptr},
    {1, "mnuViewRegCPU", "&CPU Registers", "", Check, nullptr},
    {1, "mnuViewRegBlock", "&Register Block", "", None, nullptr},
    {2, "mnuViewRegPorts", "&Ports", "", Check, nullptr},
    {2, "mnuViewRegTimer", "&Timer", "", Check, nullptr},
    {2, "mnuViewRegPulseAcc", "P&ulse Accumulator", "", Check, nullptr},
    {2, "mnuViewRegSCI", "S&CI", "", Check, nullptr},
    {2, "mnuViewRegSPI", "&SPI", "", Check, nullptr},
    {2, "mnuViewRegAD", "&A/D Converter", "", Check, nullptr},
    {2, "mnuViewRegOther", "&Other", "", Check, nullptr},
    {1, "mnuViewRegPIA", "&PIA Registers", "", Check, nullptr},
    {1, "mnuViewIOunit", "&IO unit", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuViewMemory", "&Memory Window", "", Check, nullptr},
    {1, "mnuViewWatch", "&Watch Window", "", Check, nullptr},
    {1, "mnuViewStack", "&Stack", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuViewDisassembler", "&Disassembler", "", Check, nullptr},
    {1, "mnuViewLabel", "&Labels", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuViewSerialTerminal", "S&erial Terminal", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuViewToolbar", "&Toolbar", "", Check|Checked, &frmMain::mnuViewToolbar_Click},
    {1, "mnuViewStatusBar", "Status &Bar", "", Check|Checked, &frmMain::mnuViewStatusBar_Click},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuViewOptions", "&Options ...", "", None, nullptr},
    {0, "mnuDebug", "&Debug", "", None, nullptr},
    {1, "mnuDebugAddWatch", "Add &Watch ...", "Ctrl+W", None, nullptr},
    {1, "mnuDebugEditWatch", "&Edit Watch ...", "", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuDebugCodeOn", "Code &On", "", Off|Check, &frmMain::mnuDebugCodeOn_Click},
    {1, "mnuDebugIncludeSym", "Include &Symbols", "", Off|Check, &frmMain::mnuDebugIncludeSym_Click},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuDebugToggleBreakpoint", "&Toggle Breakpoint", "F9", Off, nullptr},
    {1, "mnuDebugClearAllBreakpoints", "&Clear All Breakpoints", "Shift+F9", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuDebugSetNewPC", "Set &New PC", "", Off, nullptr},
    {1, "mnuDebugGetResVec", "Get &Reset Vector", "", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuDebugGoToPCAddress", "Go To &PC Address", "Shift+F4", Off, nullptr},
    {1, "mnuDebugGoToAddress", "Go To &Address ...", "F4", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuDebugResetCounter", "Reset counter", "", None, &frmMain::mnuDebugResetCounter_Click},
    {1, "mnuDebugRefresh", "&Refresh Window", "", Hidden, nullptr},
    {0, "mnuRun", "&Run", "", None, nullptr},
    {1, "mnuRunRun", "&Run", "", Off, nullptr},
    {1, "mnuRunPlay", "&Play", "F5", Off, nullptr},
    {1, "mnuRunAnimate", "&Animate", "Shift+F5", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuRunStepInto", "Step &Into", "F7", Off, nullptr},
    {1, "mnuRunStepOver", "Step &Over", "F8", Off, nullptr},
    {1, "mnuRunStepOut", "Step Ou&t", "Shift+F7", Off, nullptr},
    {1, "mnuRunRunTo", "Run To &Cursor", "F6", Off, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuRunPause", "&Pause", "", Off, nullptr},
    {0, "mnuWindow", "&Window", "", None, nullptr},
    {1, "mnuWindowArrangeDebugger", "Arrange &Debugger", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuWindowCascade", "&Cascade Editors", "", None, nullptr},
    {1, "mnuWindowTileHorizontal", "Tile &Horizontal Editors", "", None, nullptr},
    {1, "mnuWindowTileVertical", "Tile &Vertical Editors", "", None, nullptr},
    {0, "mnuHelp", "&Help", "", None, nullptr},
    {1, "mnuHelpOrvaneHelp", "Orvane Help &Topics", "", None, nullptr},
    {1, "mnuHelpUsingHelp", "&Using Help", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuHelpHC11Symbols", "HC11 &Symbols", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuHelpAboutOrvane", "&About Orvane ...", "", None, nullptr},
    {0, "mnuPopupMemory", "Memory", "", Popup, nullptr},
    {1, "mnuPopupMemoryEnter", "Enter &Value ...", "", None, nullptr},
    {1, "mnuPopupMemoryAddress", "&Display Address ...", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupMemoryRefresh", "&Refresh Window", "", None, nullptr},
    {0, "mnuPopupStack", "Stack", "", Popup, nullptr},
    {1, "mnuPopupStackEnter", "Enter &Value ...", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupStackGoToSPAddress", "Go To &SP Address", "", None, nullptr},
    {1, "mnuPopupStackGoToAddress", "Go To &Address ...", "", None, nullptr},
    {1, "mnuPopupStackRefresh", "&Refresh Window", "", None, nullptr},
    {0, "mnuPopupView", "View", "", Popup, nullptr},
    {1, "mnuPopupViewAddWatch", "Add &Watch ...", "", Hidden, nullptr},
    {1, "mnuPopupViewEditWatch", "&Edit Watch ...", "", Hidden, nullptr},
    {1, "mnuPopupViewRemoveWatch", "Re&move Watch", "", Hidden, nullptr},
    {1, nullptr, nullptr, "", Hidden, nullptr},
    {1, "mnuPopupViewEnter", "Enter &Value ...", "", None, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupViewHex", "&Hex", "", Check, nullptr},
    {1, "mnuPopupViewBin", "&Binary", "", Check, nullptr},
    {1, "mnuPopupViewDec", "&Decimal", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupViewAutoRefresh", "&Auto Refresh", "", Check, nullptr},
    {1, "mnuPopupViewRefresh", "&Refresh Window", "", None, nullptr},
    {0, "mnuPopupSerial", "Serial", "", Popup, nullptr},
    {1, "mnuPopupSerialAscii", "&Ascii", "", Check, nullptr},
    {1, "mnuPopupSerialHex", "&Hex", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupSerialClear", "&Clear", "", None, nullptr},
    {0, "mnuPopupSort", "Sort", "", Popup, nullptr},
    {1, "mnuPopupSortName", "Sort by &Name", "", Check, nullptr},
    {1, "mnuPopupSortValue", "Sort by &Value", "", Check, nullptr},
    {1, nullptr, nullptr, "", None, nullptr},
    {1, "mnuPopupSortNone", "&Unsorted", "", Check, nullptr},
};

// Positions 1 to 37; other code names a button by its position.
const ToolbarRow Toolbar[] = {
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 1
    {ToolbarRow::Button, "New", None, "mnuFileNew"},   // 2
    {ToolbarRow::Button, "Open", None, "mnuFileOpen"},   // 3
    {ToolbarRow::Button, "Save", Off, "mnuFileSave"},   // 4
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 5
    {ToolbarRow::Button, "Print", Off, nullptr},   // 6
    {ToolbarRow::Empty, nullptr, None, nullptr},   // 7
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 8
    {ToolbarRow::Button, "Cut", Off, "mnuEditCut"},   // 9
    {ToolbarRow::Button, "Copy", Off, "mnuEditCopy"},   // 10
    {ToolbarRow::Button, "Paste", Off, "mnuEditPaste"},   // 11
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 12
    {ToolbarRow::Button, "Undo", Off, "mnuEditUndo"},   // 13
    {ToolbarRow::Button, "Redo", Off, "mnuEditRedo"},   // 14
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 15
    {ToolbarRow::Button, "Find", Off, "mnuEditFind"},   // 16
    {ToolbarRow::Button, "Find Next", Off, "mnuEditFindNext"},   // 17
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 18
    {ToolbarRow::Button, "Assemble", None, nullptr},   // 19
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 20
    {ToolbarRow::Button, "Download", None, nullptr},   // 21
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 22
    {ToolbarRow::Button, "Run", Off, "mnuRunRun"},   // 23
    {ToolbarRow::Button, "Play", Off, "mnuRunPlay"},   // 24
    {ToolbarRow::Button, "Animate", Off, "mnuRunAnimate"},   // 25
    {ToolbarRow::Button, "Pause", Off, "mnuRunPause"},   // 26
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 27
    {ToolbarRow::Button, "Step Into", Off, "mnuRunStepInto"},   // 28
    {ToolbarRow::Button, "Step Over", Off, "mnuRunStepOver"},   // 29
    {ToolbarRow::Button, "Run To Cursor", Off, "mnuRunRunTo"},   // 30
    {ToolbarRow::Button, "Step Out", Off, "mnuRunStepOut"},   // 31
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 32
    {ToolbarRow::Button, "Toggle Breakpoint", Off, "mnuDebugToggleBreakpoint"},   // 33
    {ToolbarRow::Button, "Add Watch", None, "mnuDebugAddWatch"},   // 34
    {ToolbarRow::Separator, nullptr, None, nullptr},   // 35
    {ToolbarRow::Button, "About Orvane", None, "mnuHelpAboutOrvane"},   // 36
    {ToolbarRow::Empty, nullptr, None, nullptr},   // 37
};
}  // namespace

const MenuRow* MenuRows(int& count)
{
    count = static_cast<int>(std::size(Menus));
    return Menus;
}

const ToolbarRow* ToolbarRows(int& count)
{
    count = static_cast<int>(std::size(Toolbar));
    return Toolbar;
}

}  // namespace commands
