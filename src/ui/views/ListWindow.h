// The list windows, the register windows and the watch window: a label and a
// value per row, a display format per row (' ', '$' or '%'), the value dialog,
// the changed bits marked, the shared popup mnuPopupView and auto refresh.
// A window says what its rows are; everything else is here, once. The rows
// follow RowCount: every drawing first makes the list as long, so no command
// acts on a row that has gone.
//
// The width of the value column is the window's state: 0 means cleared, and
// every operation that needs a live value tests it first (value entry only
// where the window's traits say so).
#pragma once

#include "ui/views/ToolWindow.h"

#include <cstdint>
#include <vector>

class QTreeWidget;

class ListWindow : public ToolWindow {
    Q_OBJECT
public:
    QTreeWidget* ListView = nullptr;
    bool AutoRefresh = false;   // never saved; only in windows that have it

    int ValueColumnWidth() const;
    QString Label(int row) const;   // rows from 0
    QString Cell(int row) const;
    bool CellChanged(int row) const;
    int SelectedRow() const;        // -1 if none
    void SelectRow(int row);

    Q_INVOKABLE void mnuViewDec();
    Q_INVOKABLE void mnuViewHex();
    Q_INVOKABLE void mnuViewBin();
    Q_INVOKABLE void mnuEnter();
    Q_INVOKABLE void mnuRefresh();
    Q_INVOKABLE void mnuAutoRefresh();
    Q_INVOKABLE void Redraw();
    Q_INVOKABLE void ClearScreen();

    // The right button going down at a point of the list's viewport.
    void ListView_RightButton(const QPoint& viewportPos);

protected:
    struct Traits {
        bool autoRefresh;   // has mnuAutoRefresh and drives tmrRefresh
        int popupHelp;      // help context of mnuPopupViewEnter; the format entries follow
        int entryHelp;      // help context of the value dialog
        // The value dialog opens on a cleared window too: a value can be
        // written to the target when its reading failed.
        bool entryWhenCleared = false;
    };
    ListWindow(frmMain& main, const QString& caption, const QString& placementPrefix, Traits traits);

    virtual int RowCount() const = 0;
    // The row's label; a cleared window (live false) may show another.
    virtual QString RowLabel(int row, bool live) const = 0;
    virtual QString ValueText(int row) const = 0;
    virtual std::uint32_t ChangedBits(int row) const = 0;
    virtual char Format(int row) const = 0;
    virtual void SetFormat(int row, char format) = 0;
    virtual bool FormatFixed(int) const { return false; }
    virtual bool ReadOnly(int) const { return false; }
    virtual bool IsWord(int row) const = 0;
    // What the value dialog starts from.
    virtual QString EntryStart(int row) const { return Cell(row); }
    // Reads the rows from the target; false when the link failed.
    virtual bool Read() = 0;
    virtual void Write(int row, std::int32_t value) = 0;
    // The popup's own entries, with the row under the mouse selected.
    virtual void PreparePopup() {}
    virtual void PopupClosed() {}

    // One byte by OutByte, more by OutBytes.
    void WriteBytes(std::int32_t address, const std::vector<std::uint8_t>& bytes);

    void Load() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MatchRows();
    void WriteCells();
    void ChangeFormat(char format);
    void StopTimer();
    void StartTimerIfAuto();
    // After a failed read or write: the window cleared, auto refresh over.
    void Lost();

    Traits traits_;
    bool cellsPending_ = false;   // Play's redraws wait for the next event pass
};
