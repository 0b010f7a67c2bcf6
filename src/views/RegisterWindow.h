// The register window template: a two-column list, one row per register, a
// display format per row, the value dialog for the writable rows, the shared
// popup mnuPopupView, and a refresh driven from outside. A window is a
// RegisterWindowKind (its table of rows, where its data is read and where a
// row's value comes from); everything else is here, once.
//
// The width of the value column is the window's state: 0 means cleared, and
// every operation that needs a live value tests it first.
#pragma once

#include "views/RegisterRows.h"

#include <QWidget>

#include <cstdint>
#include <span>
#include <vector>

class QMdiSubWindow;
class QTreeWidget;
class QTreeWidgetItem;
class frmMain;

struct RegisterWindowKind {
    const char* caption;
    const char* placementPrefix;        // key prefix of the window's placement
    const char* viewEntry;              // the View entry whose check is "open"
    std::span<const RegisterRow> rows;  // in display order
    bool autoRefresh;                   // has mnuAutoRefresh and drives tmrRefresh
    // Reads the window's data from the target into the host's copy; the
    // caller tests BoardConnected afterwards.
    void (*read)(frmMain& main);
    // The value of rows[index] in the host's copy.
    std::int32_t (*value)(const RegisterRow& row, int index);
    // The bits of rows[index] that changed since the target's last stop
    // (core/BlockChanges.h); nullptr where nothing is tracked.
    std::uint32_t (*changedBits)(const RegisterRow& row, int index) = nullptr;
};

// Sources for the windows that draw from RegisterBlock ($1000, 64 bytes).
void ReadRegisterBlockSource(frmMain& main);
std::int32_t RegisterBlockValue(const RegisterRow& row, int index);

class RegisterWindow : public QWidget {
    Q_OBJECT
public:
    explicit RegisterWindow(const RegisterWindowKind& kind, QWidget* parent = nullptr);

    const RegisterWindowKind& Kind() const { return kind_; }

    QTreeWidget* ListView = nullptr;
    std::vector<char> RowFormat;   // per row: ' ', '$' or '%'
    bool AutoRefresh = false;      // never saved; only in windows whose kind has it

    // 0 while cleared, otherwise fitted to the longest cell.
    int ValueColumnWidth() const;
    QString Cell(int row) const;   // rows from 0
    int SelectedRow() const;       // -1 if none
    void SelectRow(int row);

    Q_INVOKABLE void Form_Load();
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
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void WriteCells();
    void MarkChanges(QTreeWidgetItem& item, std::uint32_t bits);
    void SetFormat(char format);
    void Form_Activate();
    void Form_Deactivate();
    void SubWindowActivated(QMdiSubWindow* sub);
    void StartTimerIfAuto();

    const RegisterWindowKind& kind_;
    bool active_ = false;
    bool cellsPending_ = false;   // Play's redraws wait for the next event pass
};
