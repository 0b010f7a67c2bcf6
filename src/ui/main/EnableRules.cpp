// The enable rules of the commands. No central state machine decides them:
// whoever changes a state calls the routine of its rule, which sets the menu
// entries and toolbar buttons that depend on it.
//
//   rule  state                         who calls
//   E,S,C,U,F  editor (de)activation    frmEditor: EditorActivated / EditorDeactivated
//   S     text changed, saved           frmEditor Change, SaveEditor: SetSaveCommands
//   C     selection, clipboard          frmEditor SelChange, clipboard change: SetClipboardButtons
//   U     undo and redo available       frmEditor Change, Ctrl+Z, Undo: SetUndoButtons
//   F     find list has an entry        frmReplace: SetFindNextButton
// The Edit entries follow E, C, U and F as the buttons do, at once: an entry's
// shortcut works only while the entry is enabled.
//   T,P   run starts and ends           FreezeDisplay / ThawDisplay (DisplayRefresh.cpp)
//   M     Options dialog closed         frmOptions: TargetModeMenus
//   W     watch window active, watches  frmWatch: SetEditWatchCommand
//   R,D,P disassembly window state      frmDisAsm.Menus: DisAsmMenus; its
//                                       deactivation DisAsmDeactivated, unload DisAsmUnloaded
//   B     first / last breakpoint       breakpoint table: BreakpointCountChanged
//   N     Window menu opens             mnuWindow's aboutToShow: mnuWindow_Click
//   R     simulator mode                LinkStateChanged (ui/main/BoardEvents.cpp)
#include "engine/state/TargetState.h"
#include "platform/widgets/PopupMenu.h"
#include "engine/source/EditorRecords.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QMenu>

namespace {
// Toolbar positions that the rules name.
constexpr int SaveButton = 4, PrintButton = 6, CutButton = 9, CopyButton = 10, PasteButton = 11,
              UndoButton = 13, RedoButton = 14, FindButton = 16, FindNextButton = 17, RunButton = 23,
              PlayButton = 24, AnimateButton = 25, PauseButton = 26, StepIntoButton = 28,
              StepOverButton = 29, RunToButton = 30, StepOutButton = 31, BreakpointButton = 33;

// The Debug entries that need the disassembly window, and button 33 with them.
const char* const DisAsmDebugEntries[] = {
    "mnuDebugCodeOn", "mnuDebugIncludeSym", "mnuDebugToggleBreakpoint", "mnuDebugSetNewPC",
    "mnuDebugGetResVec", "mnuDebugGoToPCAddress", "mnuDebugGoToAddress"};

// The register block windows: off in simulator mode, which has no peripherals.
const char* const RegisterBlockEntries[] = {
    "mnuViewRegOther", "mnuViewRegPIA", "mnuViewRegPorts", "mnuViewRegPulseAcc",
    "mnuViewRegSPI", "mnuViewRegSCI", "mnuViewRegTimer", "mnuViewRegAD"};

const char* const EditEntries[] = {
    "mnuEditUndo", "mnuEditRedo", "mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditDelete",
    "mnuEditSelectAll", "mnuEditFind", "mnuEditFindNext", "mnuEditReplace", "mnuEditGoToLine"};
// The Edit entries that any active editor allows.
const char* const DocumentEditEntries[] = {"mnuEditSelectAll", "mnuEditFind", "mnuEditReplace", "mnuEditGoToLine"};
}  // namespace

void frmMain::EditorActivated(const EditorCommandState& state)
{
    for (const char* name : {"mnuFileClose", "mnuFileSaveAs", "mnuFilePrint"})
        Menu(QString::fromLatin1(name))->setEnabled(true);
    for (const char* name : DocumentEditEntries)
        Menu(QString::fromLatin1(name))->setEnabled(true);
    Button(PrintButton)->setEnabled(true);
    Button(FindButton)->setEnabled(true);
    SetSaveCommands(state.textChanged);
    SetClipboardButtons(state.selection, state.clipboardText);
    SetUndoButtons(state.undo, state.redo);
    SetFindNextButton(state.findHistory);
}

void frmMain::EditorDeactivated()
{
    for (const char* name : {"mnuFileClose", "mnuFileSave", "mnuFileSaveAs", "mnuFilePrint"})
        Menu(QString::fromLatin1(name))->setEnabled(false);
    for (const char* name : EditEntries)
        Menu(QString::fromLatin1(name))->setEnabled(false);
    for (int button : {SaveButton, PrintButton, CutButton, CopyButton, PasteButton, UndoButton, RedoButton,
                       FindButton, FindNextButton})
        Button(button)->setEnabled(false);
}

void frmMain::SetSaveCommands(bool textChanged)
{
    // mnuFileSave enabled is the record of unsaved changes; button 4 is the same state.
    Menu("mnuFileSave")->setEnabled(textChanged);
    Button(SaveButton)->setEnabled(textChanged);
}

void frmMain::SetClipboardButtons(bool selection, bool clipboardText)
{
    for (const char* name : {"mnuEditCut", "mnuEditCopy", "mnuEditDelete"})
        Menu(QString::fromLatin1(name))->setEnabled(selection);
    Menu("mnuEditPaste")->setEnabled(clipboardText);
    Button(CutButton)->setEnabled(selection);
    Button(CopyButton)->setEnabled(selection);
    Button(PasteButton)->setEnabled(clipboardText);
}

void frmMain::SetUndoButtons(bool undo, bool redo)
{
    Menu("mnuEditUndo")->setEnabled(undo);
    Menu("mnuEditRedo")->setEnabled(redo);
    Button(UndoButton)->setEnabled(undo);
    Button(RedoButton)->setEnabled(redo);
}

void frmMain::SetFindNextButton(bool findHistory)
{
    const bool on = EditorActive && findHistory;
    Menu("mnuEditFindNext")->setEnabled(on);
    Button(FindNextButton)->setEnabled(on);
}

void frmMain::TargetModeMenus()
{
    const bool board = TargetMode == BoardMode;
    // The simulated chip has a register block; flat memory has none.
    for (const char* name : RegisterBlockEntries)
        Menu(QString::fromLatin1(name))->setEnabled(board || ChipSimulated());
    Menu("mnuViewIOunit")->setEnabled(!board);
}

void frmMain::SetEditWatchCommand(bool on)
{
    Menu("mnuDebugEditWatch")->setEnabled(on);
}

void frmMain::DisAsmMenus()
{
    const bool ready = BoardConnected && !BoardRunning;
    const bool steps = ready && RunStopped;
    const bool run = steps && FreeRunAvailable();
    Menu("mnuRunRun")->setEnabled(run);
    Button(RunButton)->setEnabled(run);
    for (const char* name : {"mnuRunPlay", "mnuRunAnimate", "mnuRunStepInto", "mnuRunStepOver", "mnuRunRunTo",
                             "mnuRunStepOut"})
        Menu(QString::fromLatin1(name))->setEnabled(steps);
    for (int button : {PlayButton, AnimateButton, StepIntoButton, StepOverButton, RunToButton, StepOutButton})
        Button(button)->setEnabled(steps);
    for (const char* name : DisAsmDebugEntries)
        Menu(QString::fromLatin1(name))->setEnabled(ready);
    Button(BreakpointButton)->setEnabled(ready);
    Menu("mnuDebugClearAllBreakpoints")->setEnabled(ready && BreakpointCount > 0);
    if (!ready) {
        Menu("mnuRunPause")->setEnabled(false);
        Button(PauseButton)->setEnabled(false);
    }
}

void frmMain::DisAsmDeactivated()
{
    for (const char* name : DisAsmDebugEntries)
        Menu(QString::fromLatin1(name))->setEnabled(false);
    Menu("mnuDebugClearAllBreakpoints")->setEnabled(false);
    Button(BreakpointButton)->setEnabled(false);
}

void frmMain::DisAsmUnloaded()
{
    // Step and run commands need the disassembly window, open and last activated.
    for (const char* name : {"mnuRunRun", "mnuRunPlay", "mnuRunAnimate", "mnuRunStepInto", "mnuRunStepOver",
                             "mnuRunStepOut", "mnuRunRunTo", "mnuRunPause"})
        Menu(QString::fromLatin1(name))->setEnabled(false);
    for (int button : {RunButton, PlayButton, AnimateButton, PauseButton, StepIntoButton, StepOverButton,
                       RunToButton, StepOutButton})
        Button(button)->setEnabled(false);
}

void frmMain::BreakpointCountChanged()
{
    Menu("mnuDebugClearAllBreakpoints")->setEnabled(BreakpointCount > 0);
}

void frmMain::mnuWindow_Click()
{
    for (const char* name : {"mnuWindowCascade", "mnuWindowTileHorizontal", "mnuWindowTileVertical"})
        Menu(QString::fromLatin1(name))->setEnabled(EditorCount != 0);
}

void frmMain::ShowDebugPopup(const QPoint& globalPos)
{
    // Over the code the watch commands make no sense, and a refresh of the window does.
    const char* const menuOnly[] = {"mnuDebugAddWatch", "mnuDebugEditWatch", "mnuDebugBar1"};
    const char* const popupOnly[] = {"mnuDebugBar6", "mnuDebugRefresh"};
    for (const char* name : menuOnly)
        Menu(QString::fromLatin1(name))->setVisible(false);
    for (const char* name : popupOnly)
        Menu(QString::fromLatin1(name))->setVisible(true);
    PopupMenu(MenuOf(QStringLiteral("mnuDebug")), globalPos);
    for (const char* name : menuOnly)
        Menu(QString::fromLatin1(name))->setVisible(true);
    for (const char* name : popupOnly)
        Menu(QString::fromLatin1(name))->setVisible(false);
}
