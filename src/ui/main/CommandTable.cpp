#include "ui/main/CommandTable.h"

#include "ui/main/frmMain.h"

namespace commands {

namespace {
const MenuRow Menus[] = {
    {0, "mnuFile", "&File", "", None, 1, nullptr},
    {1, "mnuFileNew", "&New", "Ctrl+N", None, 2, &frmMain::mnuFileNew_Click},
    {1, "mnuFileOpen", "&Open ...", "Ctrl+O", None, 3, &frmMain::mnuFileOpen_Click},
    {1, "mnuFileClose", "&Close", "", Off, 4, &frmMain::mnuFileClose_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuFileSave", "&Save", "Ctrl+S", Off, 5, &frmMain::mnuFileSave_Click},
    {1, "mnuFileSaveAs", "Save &As ...", "", Off, 6, &frmMain::mnuFileSaveAs_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuFilePrintSetup", "P&rint Setup ...", "", None, 7, &frmMain::mnuFilePrintSetup_Click},
    {1, "mnuFilePrint", "&Print ...", "Ctrl+P", Off, 8, &frmMain::mnuFilePrint_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuFileAssemble", "Asse&mble ...", "F2", None, 9, &frmMain::mnuFileAssemble_Click},
    {1, "mnuFileLoadSymbols", "&Load Symbols ...", "Ctrl+L", None, 10, &frmMain::mnuFileLoadSymbols_Click},
    {1, "mnuFileDownload", "&Download ...", "Ctrl+D", None, 11, &frmMain::mnuFileDownload_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuFileExit", "E&xit", "", None, 12, &frmMain::mnuFileExit_Click},
    {0, "mnuEdit", "&Edit", "", None, 13, nullptr},
    {1, "mnuEditUndo", "&Undo", "Ctrl+Z", Off, 14, &frmMain::mnuEditUndo_Click},
    {1, "mnuEditRedo", "R&edo", "", Off, 15, &frmMain::mnuEditRedo_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuEditCut", "Cu&t", "Ctrl+X", Off, 16, &frmMain::mnuEditCut_Click},
    {1, "mnuEditCopy", "&Copy", "Ctrl+C", Off, 17, &frmMain::mnuEditCopy_Click},
    {1, "mnuEditPaste", "&Paste", "Ctrl+V", Off, 18, &frmMain::mnuEditPaste_Click},
    {1, "mnuEditDelete", "&Delete", "Del", Off, 19, &frmMain::mnuEditDelete_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuEditSelectAll", "Select Al&l", "Ctrl+A", Off, 20, &frmMain::mnuEditSelectAll_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuEditFind", "&Find ...", "Ctrl+F", Off, 21, &frmMain::mnuEditFind_Click},
    {1, "mnuEditFindNext", "Find &Next", "F3", Off, 22, &frmMain::mnuEditFindNext_Click},
    {1, "mnuEditReplace", "&Replace ...", "Ctrl+H", Off, 23, &frmMain::mnuEditReplace_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuEditGoToLine", "&Go To Line ...", "Ctrl+G", Off, 24, &frmMain::mnuEditGoToLine_Click},
    {0, "mnuView", "&View", "", None, 25, nullptr},
    {1, "mnuViewRegCPU", "&CPU Registers", "", Check, 26, nullptr},
    {1, "mnuViewRegBlock", "&Register Block", "", None, 27, nullptr},
    {2, "mnuViewRegPorts", "&Ports", "", Check, 28, nullptr},
    {2, "mnuViewRegTimer", "&Timer", "", Check, 29, nullptr},
    {2, "mnuViewRegPulseAcc", "P&ulse Accumulator", "", Check, 30, nullptr},
    {2, "mnuViewRegSCI", "S&CI", "", Check, 31, nullptr},
    {2, "mnuViewRegSPI", "&SPI", "", Check, 32, nullptr},
    {2, "mnuViewRegAD", "&A/D Converter", "", Check, 33, nullptr},
    {2, "mnuViewRegOther", "&Other", "", Check, 34, nullptr},
    {1, "mnuViewRegPIA", "&PIA Registers", "", Check, 35, nullptr},
    {1, "mnuViewIOunit", "&IO unit", "", Check, 0, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuViewMemory", "&Memory Window", "", Check, 36, nullptr},
    {1, "mnuViewWatch", "&Watch Window", "", Check, 37, nullptr},
    {1, "mnuViewStack", "&Stack", "", Check, 38, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuViewDisassembler", "&Disassembler", "", Check, 39, nullptr},
    {1, "mnuViewLabel", "&Labels", "", Check, 40, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuViewSerialTerminal", "S&erial Terminal", "", Check, 41, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuViewToolbar", "&Toolbar", "", Check|Checked, 42, &frmMain::mnuViewToolbar_Click},
    {1, "mnuViewStatusBar", "Status &Bar", "", Check|Checked, 43, &frmMain::mnuViewStatusBar_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuViewOptions", "&Options ...", "", None, 44, &frmMain::mnuViewOptions_Click},
    {0, "mnuDebug", "&Debug", "", None, 45, nullptr},
    {1, "mnuDebugAddWatch", "Add &Watch ...", "Ctrl+W", None, 46, &frmMain::mnuDebugAddWatch_Click},
    {1, "mnuDebugEditWatch", "&Edit Watch ...", "", Off, 47, &frmMain::mnuDebugEditWatch_Click},
    {1, "mnuDebugBar1", nullptr, "", None, 0, nullptr},
    {1, "mnuDebugCodeOn", "Code &On", "", Off|Check, 48, &frmMain::mnuDebugCodeOn_Click},
    {1, "mnuDebugIncludeSym", "Include &Symbols", "", Off|Check, 49, &frmMain::mnuDebugIncludeSym_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuDebugToggleBreakpoint", "&Toggle Breakpoint", "F9", Off, 50, nullptr},
    {1, "mnuDebugClearAllBreakpoints", "&Clear All Breakpoints", "Shift+F9", Off, 51, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuDebugSetNewPC", "Set &New PC", "", Off, 52, nullptr},
    {1, "mnuDebugGetResVec", "Get &Reset Vector", "", Off, 0, &frmMain::mnuDebugGetResVec_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuDebugGoToPCAddress", "Go To &PC Address", "Shift+F4", Off, 53, nullptr},
    {1, "mnuDebugGoToAddress", "Go To &Address ...", "F4", Off, 54, nullptr},
    {1, "mnuDebugBar6", nullptr, "", Hidden, 0, nullptr},   // shown only in the popup over frmDisAsm
    {1, "mnuDebugResetCounter", "Reset counter", "", None, 0, &frmMain::mnuDebugResetCounter_Click},
    {1, "mnuDebugRefresh", "&Refresh Window", "", Hidden, 55, nullptr},
    {0, "mnuRun", "&Run", "", None, 56, nullptr},
    {1, "mnuRunRun", "&Run", "", Off, 57, &frmMain::mnuRunRun_Click},
    {1, "mnuRunFullSpeed", "&Full Speed", "", Check, 57, &frmMain::mnuRunFullSpeed_Click},
    {1, "mnuRunPlay", "&Play", "F5", Off, 0, &frmMain::mnuRunPlay_Click},
    {1, "mnuRunAnimate", "&Animate", "Shift+F5", Off, 0, &frmMain::mnuRunAnimate_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuRunStepInto", "Step &Into", "F7", Off, 58, &frmMain::mnuRunStepInto_Click},
    {1, "mnuRunStepOver", "Step &Over", "F8", Off, 59, &frmMain::mnuRunStepOver_Click},
    {1, "mnuRunStepOut", "Step Ou&t", "Shift+F7", Off, 60, &frmMain::mnuRunStepOut_Click},
    {1, "mnuRunRunTo", "Run To &Cursor", "F6", Off, 61, &frmMain::mnuRunRunTo_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuRunPause", "&Pause", "", Off, 62, &frmMain::mnuRunPause_Click},
    {0, "mnuWindow", "&Window", "", None, 63, nullptr},
    {1, "mnuWindowArrangeDebugger", "Arrange &Debugger", "", None, 64, &frmMain::mnuWindowArrangeDebugger_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuWindowCascade", "&Cascade Editors", "", None, 65, &frmMain::mnuWindowCascade_Click},
    {1, "mnuWindowTileHorizontal", "Tile &Horizontal Editors", "", None, 66, &frmMain::mnuWindowTileHorizontal_Click},
    {1, "mnuWindowTileVertical", "Tile &Vertical Editors", "", None, 67, &frmMain::mnuWindowTileVertical_Click},
    {0, "mnuHelp", "&Help", "", None, 68, nullptr},
    {1, "mnuHelpOrvaneHelp", "Orvane Help &Topics", "", None, 69, &frmMain::mnuHelpOrvaneHelp_Click},
    {1, "mnuHelpUsingHelp", "&Using Help", "", None, 70, &frmMain::mnuHelpUsingHelp_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuHelpHC11Symbols", "HC11 &Symbols", "", None, 71, &frmMain::mnuHelpHC11Symbols_Click},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuHelpAboutOrvane", "&About Orvane ...", "", None, 72, &frmMain::mnuHelpAboutOrvane_Click},
    {0, "mnuPopupMemory", "Memory", "", Popup, 73, nullptr},
    {1, "mnuPopupMemoryEnter", "Enter &Value ...", "", None, 74, nullptr},
    {1, "mnuPopupMemoryAddress", "&Display Address ...", "", None, 75, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuPopupMemoryRefresh", "&Refresh Window", "", None, 55, nullptr},
    {0, "mnuPopupStack", "Stack", "", Popup, 76, nullptr},
    {1, "mnuPopupStackEnter", "Enter &Value ...", "", None, 77, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuPopupStackGoToSPAddress", "Go To &SP Address", "", None, 78, nullptr},
    {1, "mnuPopupStackGoToAddress", "Go To &Address ...", "", None, 79, nullptr},
    {1, "mnuPopupStackRefresh", "&Refresh Window", "", None, 55, nullptr},
    {0, "mnuPopupView", "View", "", Popup, 80, nullptr},
    {1, "mnuPopupViewAddWatch", "Add &Watch ...", "", Hidden, 46, &frmMain::mnuDebugAddWatch_Click},
    {1, "mnuPopupViewEditWatch", "&Edit Watch ...", "", Hidden, 47, &frmMain::mnuDebugEditWatch_Click},
    {1, "mnuPopupViewRemoveWatch", "Re&move Watch", "", Hidden, 81, &frmMain::mnuPopupViewRemoveWatch_Click},
    {1, "mnuPopupViewBar1", nullptr, "", Hidden, 0, nullptr},
    {1, "mnuPopupViewEnter", "Enter &Value ...", "", None, 82, nullptr},
    {1, "mnuPopupViewBar2", nullptr, "", None, 0, nullptr},
    {1, "mnuPopupViewHex", "&Hex", "", Check, 83, nullptr},
    {1, "mnuPopupViewBin", "&Binary", "", Check, 84, nullptr},
    {1, "mnuPopupViewDec", "&Decimal", "", Check, 85, nullptr},
    {1, "mnuPopupViewBar3", nullptr, "", None, 0, nullptr},
    {1, "mnuPopupViewAutoRefresh", "&Auto Refresh", "", Check, 86, nullptr},
    {1, "mnuPopupViewRefresh", "&Refresh Window", "", None, 55, nullptr},
    {0, "mnuPopupSerial", "Serial", "", Popup, 87, nullptr},
    {1, "mnuPopupSerialAscii", "&Ascii", "", Check, 88, nullptr},
    {1, "mnuPopupSerialHex", "&Hex", "", Check, 89, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuPopupSerialClear", "&Clear", "", None, 90, nullptr},
    {0, "mnuPopupSort", "Sort", "", Popup, 91, nullptr},
    {1, "mnuPopupSortName", "Sort by &Name", "", Check, 92, nullptr},
    {1, "mnuPopupSortValue", "Sort by &Value", "", Check, 93, nullptr},
    {1, nullptr, nullptr, "", None, 0, nullptr},
    {1, "mnuPopupSortNone", "&Unsorted", "", Check, 94, nullptr},
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
    {ToolbarRow::Button, "Assemble", None, "mnuFileAssemble"},   // 19
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
const ForwardRow Forwards[] = {
    {"mnuDebugRefresh", "frmDisAsm", "mnuRefresh"},
    {"mnuDebugSetNewPC", "frmDisAsm", "mnuSetNewPC"},
    {"mnuDebugGoToPCAddress", "frmDisAsm", "mnuGoToPCAddress"},
    {"mnuDebugGoToAddress", "frmDisAsm", "mnuGoToAddress"},
    {"mnuDebugToggleBreakpoint", "frmDisAsm", "mnuToggleBreakpoint"},
    {"mnuDebugClearAllBreakpoints", "frmDisAsm", "mnuClearAllBreakpoints"},
    {"mnuPopupMemoryEnter", "frmMemory", "mnuMemoryEnter"},
    {"mnuPopupMemoryAddress", "frmMemory", "mnuMemoryAddress"},
    {"mnuPopupMemoryRefresh", "frmMemory", "mnuMemoryRefresh"},
    {"mnuPopupStackEnter", "frmStack", "mnuEnter"},
    {"mnuPopupStackGoToSPAddress", "frmStack", "mnuGoToSPAddress"},
    {"mnuPopupStackGoToAddress", "frmStack", "mnuGoToAddress"},
    {"mnuPopupStackRefresh", "frmStack", "mnuRefresh"},
    {"mnuPopupSerialAscii", "frmSerial", "mnuPopupSerialAscii"},
    {"mnuPopupSerialHex", "frmSerial", "mnuPopupSerialHex"},
    {"mnuPopupSerialClear", "frmSerial", "mnuPopupSerialClear"},
    // One popup serves the register windows and the watch window.
    {"mnuPopupViewEnter", nullptr, "mnuEnter"},
    {"mnuPopupViewHex", nullptr, "mnuViewHex"},
    {"mnuPopupViewBin", nullptr, "mnuViewBin"},
    {"mnuPopupViewDec", nullptr, "mnuViewDec"},
    {"mnuPopupViewAutoRefresh", nullptr, "mnuAutoRefresh"},
    {"mnuPopupViewRefresh", nullptr, "mnuRefresh"},
};
}  // namespace

const ForwardRow* ForwardRows(int& count)
{
    count = static_cast<int>(std::size(Forwards));
    return Forwards;
}

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
