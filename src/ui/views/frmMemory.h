// "Memory Window": target memory as a table of 16 bytes a row, in hex and as
// characters, with a cursor over the bytes and in-place editing. The page and
// cursor rules are MemoryGrid's; this window draws MemoryPage through a table
// model, reads the page on activation, on scrolling, on the address dialog and
// on its Refresh entry, and writes one byte at a time, showing what the target
// gives back. Bytes that changed across the last step or run are drawn in
// another colour.
#pragma once

#include "ui/views/MemoryGrid.h"
#include "ui/views/ToolWindow.h"

class QFrame;
class QLabel;
class QLineEdit;
class QScrollBar;
class QTableView;
class MemoryTableModel;

class frmMemory : public ToolWindow {
    Q_OBJECT
public:
    MemoryGrid Grid;
    QTableView* gridMemory = nullptr;
    QScrollBar* VScroll = nullptr;
    QLineEdit* txtData = nullptr;
    QFrame* frameAdr = nullptr;   // the address hint while the thumb is dragged
    QLabel* lbAdr = nullptr;

    Q_INVOKABLE void mnuMemoryEnter();
    Q_INVOKABLE void mnuMemoryAddress();
    Q_INVOKABLE void mnuMemoryRefresh();
    // Reads the page from the target and draws it; the cursor stays.
    void DisplayPage();
    // Opens the editor box over a byte cell; other cells are left alone.
    void EnterData(int row, int column);
    // The box's byte to the target, then the target's answer in both cells.
    void SendByte();

    // The cell text as drawn, "" where the page has no bytes (a failed read).
    QString CellText(int row, int column) const;
    bool CellChanged(int row, int column) const;
    // The byte of a byte cell, -1 where the page has none.
    int PageByte(int row, int column) const;

    // Keys of the table and the editor box (Qt key codes and text).
    void gridMemory_KeyDown(int key);
    void txtData_KeyPress(int key, const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void Load() override;
    // Every column of 16 bytes a row, and 16 rows: a page at a glance that
    // leaves the rest of the client area free.
    QSize ContentSize() const override;
    // The page is read again; not at the first show, where the address dialog reads.
    void Form_Activate() override;

private:
    friend QWidget* CreateMemory(frmMain&);
    explicit frmMemory(frmMain& main);
    void Form_Resize();
    // All columns side by side, in pixels.
    int TableWidth() const;
    void ShowCursor();
    void AfterMove(bool pageMoved);
    void VScroll_Change(int value);
    void VScroll_Scroll(int value);
    void HideEditor();

    MemoryTableModel* model_ = nullptr;
    bool pageRead_ = false;     // the last read succeeded: rows show bytes
    bool scrolling_ = false;    // code moves the scroll bar; its change event stays out
    bool firstShow_ = true;     // the activation of the first show doesn't read
};

QWidget* CreateMemory(frmMain& main);
