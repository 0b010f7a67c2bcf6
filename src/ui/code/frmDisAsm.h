// "Disassembler": the debugger's main window. A page of up to 50 decoded
// instructions from ProgramBuffer, the PC row in bold, breakpoints in red and
// a current row under the keyboard and the mouse. The background colour of a
// row is its state: SetCurRow and the breakpoint code read it back.
//
// The run and step code of frmMain calls the methods below by these names and
// reads TopAddress, PageRows, CurRow, VisibleRows and PageBusy directly.
#pragma once

#include "engine/code/DisAsmPage.h"

#include "ui/views/ToolWindow.h"

#include <array>
#include <cstdint>
#include <optional>

class QScrollBar;

class frmDisAsm : public ToolWindow {
    Q_OBJECT
public:
    // The window, created, loaded and shown if it isn't open yet; checks
    // mnuViewDisassembler. It opens at PC.
    static frmDisAsm* Open();
    // The open window, or nullptr.
    static frmDisAsm* Instance();
    // The width in pixels of the window's client area that shows a row with
    // its code and a symbol line of the listing (label, operation, operand):
    // the width it opens at.
    static int SymbolRowWidth();

    // The exact colours that record a row's state.
    // The current row has ToolWindow's CurrentColour, with white text.
    static const QColor BreakpointColour;      // pure red
    static const QColor CurrentBreakColour;    // pure magenta

    // ---- Form fields ------------------------------------------------------
    std::int32_t TopAddress = 0;   // address of row 1
    PageRowArray PageRows;         // index 0 to 49 = rows 1 to 50
    std::int16_t CurRow = 0;       // 1 to 50; 0: no page is shown
    std::int16_t VisibleRows = 0;  // rows that fit the window, 0 to 50
    bool PageBusy = false;         // a page key is reading the target

    // ---- Controls ---------------------------------------------------------
    std::array<QLabel*, PageRowCount + 1> Label{};   // 1 to 50; [0] unused
    QScrollBar* HScroll = nullptr;

    // ---- Methods others call ------------------------------------------------
    Q_INVOKABLE void ClearScreen();
    Q_INVOKABLE void ClearMarks();
    Q_INVOKABLE void DisAsmPage();
    Q_INVOKABLE void Menus();
    Q_INVOKABLE void mnuRunToCursor();
    Q_INVOKABLE void mnuSetNewPC();
    Q_INVOKABLE void ReadProgramPC();
    Q_INVOKABLE void PageRedraw();
    Q_INVOKABLE void mnuClearAllBreakpoints();
    Q_INVOKABLE void mnuGoToAddress();
    Q_INVOKABLE void mnuGoToPCAddress();
    Q_INVOKABLE void mnuRefresh();
    Q_INVOKABLE void mnuToggleBreakpoint();
    void SetCurRow(std::int16_t& Row);
    // The address of the current row; none while no page is shown.
    std::optional<std::int32_t> CursorAddress() const;
    // The message of a breakpoint that finds the table full.
    static void SayTableFull();

    // ---- Events -------------------------------------------------------------
    // Up, Down, Page Up and Page Down move the page; other keys are thrown away.
    void Form_KeyDown(int key);
    void Form_Resize();
    void HScroll_Change();
    void Label_Click(int Index) override;
    // Toggles the breakpoint at the row's address.
    void Label_DblClick(int Index) override;
    // The row becomes current and the Debug popup appears.
    void Label_RightButton(int Index, const QPoint& globalPos) override;

    // A row's look, as drawn: for the run code and the tests.
    QColor RowBackground(int row) const;
    QColor RowTextColour(int row) const;
    bool RowBold(int row) const;
    QString RowCaption(int row) const;

    ~frmDisAsm() override;

protected:
    void Load() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_Unload() override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend QWidget* CreateDisAsm(frmMain&);
    explicit frmDisAsm(frmMain& main);
    int RowHeight() const;
    // Read for the page keys: InProgram at ProgramBase under PageBusy, then
    // Menus; false (and the screen cleared) when the read failed.
    bool ReadPage();
    // After a read: Menus, then the page from ProgramBase with row 1 current,
    // or the screen cleared when the read failed.
    void ShowPageAtBase();
    void ScrollUpOne();
    void PageUp();
    void SetLook(int row, const QColor& text, const QColor& background);
    // The current row loses its highlight: blue back to plain, magenta back to red.
    void Unhighlight(int row);
};

// The disassembly window's factory for the main window's tool-window table.
QWidget* CreateDisAsm(frmMain& main);
