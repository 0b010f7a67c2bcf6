// The main window and hub: it owns the child windows, the menus, the toolbar,
// the status bar, the timers and the target link (engine/link/TargetLink.h), whose
// failures and state it shows as the link's LinkReports. It is the view of
// the engine's debugger and refresh cycle, and its command handlers forward
// to the engine's code; all of them live in ui/main/: start-up and
// shut-down in Startup.cpp, the link's reports in BoardEvents.cpp, the
// refresh views in DisplayRefresh.cpp, the debugger's view in
// DebuggerWindows.cpp, the File and Edit commands in *Commands.cpp.
#pragma once

#include "engine/execution/Debugger.h"
#include "engine/execution/DebuggerView.h"
#include "engine/execution/RefreshCycle.h"
#include "platform/widgets/CommonDialog.h"
#include "platform/widgets/WindowPlacement.h"
#include "engine/link/TargetLink.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <optional>

class QLabel;
class QMdiArea;
class QMenu;
class QStatusBar;
class QToolBar;
class SourceDocuments;
class frmError;
class frmEditor;

class frmMain : public QMainWindow, public LinkReports, public DebuggerView, public RefreshViews {
    Q_OBJECT
    // First of all members: the forwards below refer into it.
    TargetLink link_{*this};
    Debugger debugger_{link_, *this};
    RefreshCycle refresh_{link_, *this};

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    QMdiArea* mdiArea() const { return mdi_; }

    // The target link: the operations on the board and the simulator.
    TargetLink& Link() { return link_; }
    // The debugger over the link, showing itself in these windows.
    Debugger& Debug() { return debugger_; }

    // ---- Controls ---------------------------------------------------------
    ::MSComm& MSComm = link_.MSComm;      // the link's serial port
    CommonDialog Dialog;      // file open and save, font
    QTimer tmrComm;           // 50 ms, always on: user output during a free run
    QTimer tmrRefresh;        // 100 ms, off at start: auto refresh of the active window
    QStatusBar* sbStatusBar = nullptr;
    QToolBar* tbToolbar = nullptr;
    QString HelpFile;         // the program's folder and "Orvane.HLP"

    // ---- Menus, toolbar, status bar ----------------------------------------
    // The entry or menu of that name ("mnuRunRun", "mnuView"); an unknown name
    // is a programming error and stops the program.
    QAction* Menu(const QString& name) const;
    // A menu with entries: "mnuFile" or a popup such as "mnuPopupSerial".
    QMenu* MenuOf(const QString& name) const;
    // The toolbar button at a position 1 to 37 (separators and empty slots included).
    QAction* Button(int position) const;
    // The handler of a toolbar click: the tool tip names the command.
    void tbToolbar_ButtonClick(QAction* button);

    // Status bar panels 1 to 7.
    void SetPanelText(int panel, const QString& text);
    QString PanelText(int panel) const;
    QLabel* Panel(int panel) const;

    // ---- Start-up and shut-down (ui/main/Startup.cpp) ---------------------
    void MDIForm_Load();
    // Writes the settings; runs when the window closes for good.
    void MDIForm_Unload();
    // The default placement of a tool window by its key prefix, computed from
    // this window's client area.
    WindowPlacement PlacementDefault(const QString& prefix) const;

    // ---- The board's unasked events: forwards to Debug() ------------------------
    void MSComm_OnComm() { debugger_.OnComm(); }
    void tmrComm_Timer() { debugger_.PassQuietOutput(); }
    // The link's reports: message boxes and panel 1.
    void LinkFailed(LinkFailure failure, const QString& detail) override;
    void LinkStateChanged(LinkState state) override;
    bool IoUnitShown() const override;

    // The serial terminal's Display: set by the terminal window while it is
    // loaded. Bytes go to it only while mnuViewSerialTerminal is checked.
    std::function<void(const QByteArray&)> SerialTerminalDisplay;
    void PassToTerminal(const QByteArray& bytes) override;

    // ---- Refresh cycle: forwards to the engine's RefreshCycle -----------------
    // The tool windows as its views (ui/main/DisplayRefresh.cpp).
    bool ViewShown(TargetView view) override;
    void RefreshView(TargetView view) override;
    void ClockCountUpdate();
    // Disassembly page at PC, then everything of RefreshRun.
    void Refresh() override { refresh_.Refresh(); }
    // Registers, stack, watches and peripheral windows that are open.
    void RefreshRun() override { refresh_.RefreshRun(); }
    void FollowPeripherals() override { refresh_.FollowPeripherals(); }
    // Fills RegisterBlock from the target's 64 bytes at $1000.
    void ReadRegisterBlock() { refresh_.ReadRegisterBlock(); }
    // Shut the debugger's windows and commands for a run, and reopen them.
    void FreezeDisplay() override;
    void ThawDisplay() override;
    void tmrRefresh_Timer();

    // ---- Run, step, Play and Animate: forwards to Debug() ---------------------
    void mnuRunRun_Click() { debugger_.RunFree(); }
    // The simulated chip's free run: in real time, or as fast as it goes.
    void mnuRunFullSpeed_Click();
    void mnuRunStepInto_Click() { debugger_.StepInto(); }
    void mnuRunStepOver_Click() { debugger_.StepOver(); }
    void mnuRunStepOut_Click() { debugger_.StepOut(); }
    void mnuRunRunTo_Click();
    void mnuRunPlay_Click() { debugger_.Play(); }
    void mnuRunAnimate_Click() { debugger_.Animate(); }
    void mnuRunPause_Click() { debugger_.Pause(); }

    // ---- The debugger's view (ui/main/DebuggerWindows.cpp) -------------------
    void SetPauseEnabled(bool on) override;
    void ShowClockCount() override { ClockCountUpdate(); }
    void RunCommandsChanged() override;
    void ShowPCRow() override;
    void RedrawAtPC() override;
    bool CpuWindowShown() override;
    void FollowStep(bool readBack) override;
    void SuspendTimers() override;
    void ResumeTimers() override;
    void LetEventsRun() override;

    // ---- Child windows (ui/main/ToolWindows.cpp) ---------------------------
    // A tool window is open while its View entry is checked; see ToolWindows.h.
    bool IsOpen(const QString& window) const;
    // The loaded window of that name, or nullptr.
    QWidget* Window(const QString& window) const;
    // The loaded window, created, checked and shown first if needed; nullptr
    // for a window that has no factory yet.
    QWidget* LoadWindow(const QString& window);
    void UnloadWindow(const QString& window);
    // The View entry's command: unload if checked, else load.
    void ToggleWindow(const QString& window);
    // The widget of the active child window, or nullptr.
    QWidget* ActiveWindow() const;
    // Calls a window's menu-like method by its name; false if the window is
    // not loaded or has no such method.
    bool CallWindow(QWidget* window, const char* method);

    // ---- Enable rules (ui/main/EnableRules.cpp) ----------------------------
    // Each state change calls the routine of its rule; see EnableRules.cpp.
    struct EditorCommandState {
        bool textChanged = false;
        bool selection = false;       // SelLength above 0
        bool clipboardText = false;
        bool undo = false;
        bool redo = false;
        bool findHistory = false;     // frmReplace's cbWhat has an entry
    };
    void EditorActivated(const EditorCommandState& state);   // E, S, C, U, F
    void EditorDeactivated();                                 // E, S, C, U, F off
    void SetSaveCommands(bool textChanged);                   // S
    void SetClipboardButtons(bool selection, bool clipboardText);   // C
    void SetUndoButtons(bool undo, bool redo);                // U
    void SetFindNextButton(bool findHistory);                 // F
    void TargetModeMenus();                                   // M
    void SetEditWatchCommand(bool on);                        // W
    void DisAsmMenus();                                       // frmDisAsm.Menus: R, D, P
    void DisAsmDeactivated();                                 // D off
    void DisAsmUnloaded();                                    // R, P off
    void BreakpointCountChanged();                            // B
    void mnuWindow_Click();                                   // N
    // The Debug menu as the popup over frmDisAsm's rows.
    void ShowDebugPopup(const QPoint& globalPos);
    int HelpContextOf(const QString& name) const;
    void SetHelpContext(const QString& name, int context);

    // ---- Symbols from listings (ui/main/SymbolCommands.cpp) ----------------
    // Rebuilds SymbolTable from the listing that Dialog.FileName names and
    // shows the result in panel 3; failures go to "Orvane - Read Error".
    void LoadSymbols();
    // LoadSymbols, then the label and disassembly windows that are open
    // redraw, and SymbolsLoaded lets the watch table apply its reload rule.
    void FileLoadSymbols();
    void mnuFileLoadSymbols_Click();

    // ---- Watches (ui/main/WatchCommands.cpp) --------------------------------------
    // Add Watch also serves Ctrl+W, toolbar button 34 and the watch popup;
    // Edit and Remove act on the watch window's selected row, if any.
    void mnuDebugAddWatch_Click();
    void mnuDebugEditWatch_Click();
    void mnuPopupViewRemoveWatch_Click();
    // The reload rule, at SymbolsLoaded.
    void WatchSymbolsReloaded();

    // ---- Download (ui/main/DownloadCommands.cpp, ui/code/frmDownload.cpp) -----
    // The File menu entry: S19File if that file exists (nothing if it has
    // gone), else the open dialog; then ClockCount starts again from 0.
    void mnuFileDownload_Click();
    // The toolbar button: S19File without asking whenever it exists, else
    // the menu entry's way.
    void FileDownload();

    // ---- Assemble (ui/main/AssembleCommands.cpp, engine/source/AssembleFile.h) ----
    // The editor documents; nullptr while there are none to ask.
    SourceDocuments* Documents = nullptr;
    // ok false when the user declines to save the active document's changes.
    void AsmSaved(bool& ok);
    // The menu entry, its F2 and the toolbar button: AsmFile, or the
    // "Assemble" dialog when there is none.
    void mnuFileAssemble_Click();
    // The run on AsmFile: results beside the source, symbols loaded, the
    // error list when there are errors.
    void FileAssemble();
    // The error list, loaded first if needed, shows ErrFile.
    void ShowErrorList();
    // The error list while it is loaded, else nullptr.
    frmError* ErrorList() const;
    // ---- Documents (ui/main/FileCommands.cpp, ui/main/EditCommands.cpp) --
    void NewEditor();
    // Reads a file into a new editor and shows it; nullptr if it could not
    // be read, which "Orvane - Read Error" tells.
    frmEditor* OpenEditor(const QString& path);
    // Writes an editor's text to its EditorName; ok false if that failed,
    // which "Orvane - Write Error" tells. The old file stays whole either way.
    void SaveEditor(frmEditor& editor, bool& ok);
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileClose_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuEditUndo_Click();
    void mnuEditRedo_Click();
    void mnuEditCut_Click();
    void mnuEditCopy_Click();
    void mnuEditPaste_Click();
    void mnuEditDelete_Click();
    void mnuEditSelectAll_Click();
    void mnuEditFind_Click();
    void mnuEditFindNext_Click();
    void mnuEditReplace_Click();
    void mnuEditGoToLine_Click();
    // ---- Printing (ui/main/PrintCommands.cpp) -------------------------------
    // What is printed: the active document's title and text. The editors set
    // the provider; it answers nothing while no document is active, and the
    // print commands then do nothing.
    struct PrintableDocument {
        QString title;
        QString text;
    };
    std::function<std::optional<PrintableDocument>()> ActiveDocument;
    // The print dialog, then printing if the user confirms.
    void mnuFilePrint_Click();
    // The same dialog, which only keeps the choices for the next print.
    void mnuFilePrintSetup_Click();
    // Prints the active document at once with the last choices (the toolbar's
    // Print). With no printer and no PDF file chosen yet it asks first.
    void PrintDocument();

    // ---- Menu handlers ------------------------------------------------------
    void mnuFileExit_Click();
    void mnuViewToolbar_Click();
    void mnuViewStatusBar_Click();
    // The Options dialog (ui/main/frmOptions.cpp).
    void mnuViewOptions_Click();
    // Arrange Debugger, and the editors' Cascade and Tile (ui/main/WindowArrangement.cpp).
    void mnuWindowArrangeDebugger_Click();
    void mnuWindowCascade_Click();
    void mnuWindowTileHorizontal_Click();
    void mnuWindowTileVertical_Click();
    void mnuDebugCodeOn_Click();
    void mnuDebugIncludeSym_Click();
    void mnuDebugResetCounter_Click();
    void mnuDebugGetResVec_Click();
    void mnuHelpOrvaneHelp_Click();
    void mnuHelpUsingHelp_Click();
    void mnuHelpHC11Symbols_Click();
    void mnuHelpAboutOrvane_Click();

signals:
    // FileLoadSymbols has rebuilt the table and redrawn the open windows.
    void SymbolsLoaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    // F1 over an open menu shows the help of the highlighted entry.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* runEntry_ = nullptr;   // mnuRunRun, which BoardStatus keeps off in simulator mode

    bool tmrCommWasOn_ = false;       // the timers' states when a run began
    bool tmrRefreshWasOn_ = false;

    void BuildMenus();
    void BuildToolbar();
    void BuildStatusBar();
    void ConnectCommands();
    void ListChildWindows();

    QPointer<frmError> errorList_;
    QMdiArea* mdi_ = nullptr;
    QHash<QString, QAction*> actions_;
    QHash<QString, QMenu*> menus_;
    QList<QAction*> buttons_;
    QList<QLabel*> panels_;
};

// The one main window of the process, or nullptr before it exists.
extern frmMain* MainForm;
