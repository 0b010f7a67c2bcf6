// "Stack": target memory around the stack pointer, one byte to a row, up to 50
// rows from StackViewAddress, the row of SP in bold. It draws only from
// StackViewBuffer. A row's background is its state: the current row has the
// current colour (ToolWindow) while the window is active; CurRow 0 means
// nothing shown.
#pragma once

#include "ui/views/ToolWindow.h"

#include <array>
#include <cstdint>

class frmStack : public ToolWindow {
    Q_OBJECT
public:
    static constexpr int RowCount = 50;

    // Label[1] to Label[50]; Label[0] is unused.
    std::array<QLabel*, RowCount + 1> Label{};
    std::int16_t CurRow = 0;        // 1 to VisibleRows; 0: nothing shown
    std::int16_t VisibleRows = 0;   // client height / row height, at most 50
    bool PageBusy = false;          // a page key is reading; further page keys are dropped

    Q_INVOKABLE void ClearScreen();
    Q_INVOKABLE void ClearMarks();
    Q_INVOKABLE void Redraw();
    Q_INVOKABLE void mnuEnter();
    Q_INVOKABLE void mnuGoToAddress();
    Q_INVOKABLE void mnuGoToSPAddress();
    Q_INVOKABLE void mnuRefresh();
    void SetCurRow(std::int16_t& Row);

    // Qt key codes; Up, Down, Page Up, Page Down and Enter do something.
    void Form_KeyDown(int key);
    void Label_Click(int index) override;
    void Label_DblClick(int index) override;
    void Label_RightButton(int index, const QPoint& globalPos) override;

    int RowHeight() const;

protected:
    void Load() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend QWidget* CreateStack(frmMain&);
    explicit frmStack(frmMain& main);
    bool Read();
    void PageRead();
    void Form_Resize();
    void PaintRow(int row, bool current);
};

// The stack window's factory for the main window's tool-window table.
QWidget* CreateStack(frmMain& main);
