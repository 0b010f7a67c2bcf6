// "Watch Window": the watches of WatchTable in the layout of the register
// windows: a label and a value per row, a display format per row, value
// entry, auto refresh and the shared popup with the watch entries shown. The
// rows follow the table: every drawing first makes the list as long as the
// table, so no command ever acts on a row that has gone. A watch whose bytes
// changed across the last step or run is drawn in another colour.
#pragma once

#include <QWidget>

class QMdiSubWindow;
class QTreeWidget;
class frmMain;

class frmWatch : public QWidget {
    Q_OBJECT
public:
    QTreeWidget* ListView = nullptr;
    bool AutoRefresh = false;   // never saved

    int ValueColumnWidth() const;   // 0 while cleared
    QString Label(int row) const;
    QString Cell(int row) const;
    bool CellChanged(int row) const;
    int SelectedRow() const;        // -1 if none
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

    void ListView_RightButton(const QPoint& viewportPos);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    friend QWidget* CreateWatch(frmMain&);
    explicit frmWatch(QWidget* parent = nullptr);
    void MatchRows();
    void SetFormat(char format);
    void StartTimerIfAuto();
    void SubWindowActivated(QMdiSubWindow* sub);
    void Form_Activate();
    void Form_Deactivate();

    bool active_ = false;
};

QWidget* CreateWatch(frmMain& main);
