// The main window and hub: it owns the child windows, the menus, the toolbar,
// the status bar, the serial port, the timers and the target operations.
// Its methods live with their subsystems: start-up and shut-down in
// core/Startup.cpp, the link state in target/Connection.cpp, the refresh
// cycle in execution/RefreshCycle.cpp, menus and toolbar in workspace/.
#pragma once

#include "platform/CommonDialog.h"
#include "platform/MSComm.h"
#include "platform/WindowPlacement.h"

#include <QHash>
#include <QMainWindow>
#include <QTimer>
#include <cstdint>
#include <functional>

class QLabel;
class QMdiArea;
class QMenu;
class QStatusBar;
class QToolBar;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    QMdiArea* mdiArea() const { return mdi_; }

    // ---- Controls ---------------------------------------------------------
    ::MSComm MSComm;          // the serial port to the board's monitor
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

    // ---- Start-up and shut-down (core/Startup.cpp) --------------------------
    void MDIForm_Load();
    // Writes the settings; runs when the window closes for good.
    void MDIForm_Unload();
    // The default placement of a tool window by its key prefix, computed from
    // this window's client area.
    WindowPlacement PlacementDefault(const QString& prefix) const;

    // ---- Target link (target/) ---------------------------------------------
    void BoardStatus();
    void FindBoard();
    void MSComm_OnComm();
    void tmrComm_Timer();
    std::int16_t TerminalPassCount = 0;
    // Reads the reset vector into Vector.
    void InResetVector(std::int32_t& Vector);

    // The serial terminal's Display: set by the terminal window while it is
    // loaded. Bytes go to it only while mnuViewSerialTerminal is checked.
    std::function<void(const QByteArray&)> SerialTerminalDisplay;
    void PassToTerminal(const QByteArray& bytes);

    // ---- Refresh cycle (execution/RefreshCycle.cpp) -------------------------
    void ClockCountUpdate();
    void ThawDisplay();
    void RefreshRun();
    void tmrRefresh_Timer();

    // ---- Symbols from listings (code/LoadSymbols.cpp) -----------------------
    // Rebuilds SymbolTable from the listing that Dialog.FileName names and
    // shows the result in panel 3; failures go to "Orvane - Read Error".
    void LoadSymbols();
    // LoadSymbols, then the label and disassembly windows that are open
    // redraw, and SymbolsLoaded lets the watch table apply its reload rule.
    void FileLoadSymbols();
    void mnuFileLoadSymbols_Click();

    // ---- Menu handlers ------------------------------------------------------
    void mnuFileExit_Click();
    void mnuViewToolbar_Click();
    void mnuViewStatusBar_Click();
    void mnuDebugCodeOn_Click();
    void mnuDebugIncludeSym_Click();
    void mnuDebugResetCounter_Click();

signals:
    // FileLoadSymbols has rebuilt the table and redrawn the open windows.
    void SymbolsLoaded();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildToolbar();
    void BuildStatusBar();

    QMdiArea* mdi_ = nullptr;
    QHash<QString, QAction*> actions_;
    QHash<QString, QMenu*> menus_;
    QList<QAction*> buttons_;
    QList<QLabel*> panels_;
};

// The one main window of the process, or nullptr before it exists.
extern frmMain* MainForm;
