// "Labels": a child window of frmMain listing the labels of the loaded
// listing with their values, sorted as the user chooses from its popup menu.
// The order is kept in the setting "LabelSort": "N" by name, "V" by value,
// empty for the order of the listing.
#pragma once

#include <QWidget>

class QTreeWidget;
class frmMain;

class frmLabel : public QWidget {
    Q_OBJECT
public:
    // The window, created, loaded and shown in frmMain's client area if it
    // isn't open yet; checks mnuViewLabel.
    static frmLabel* Open();
    // The open window, or nullptr.
    static frmLabel* Instance();

    QTreeWidget* ListView = nullptr;
    QString LabelSortMode;

    // Rebuilds the list from SymbolTable in the order of LabelSortMode.
    Q_INVOKABLE void Redraw();

    void mnuPopupSortName_Click();
    void mnuPopupSortValue_Click();
    void mnuPopupSortNone_Click();
    // A right-button press in the list: the sort popup, its check on the current order.
    void ListView_RightButton(const QPoint& globalPos);

    ~frmLabel() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    // Placement and sort order, once the window sits in its MDI frame.
    Q_INVOKABLE void Form_Load();

private:
    friend QWidget* CreateLabel(frmMain&);
    explicit frmLabel(QWidget* parent = nullptr);
    void Form_Unload();
    void SetSortMode(const QString& mode);
};

// The label window's factory for the main window's tool-window table.
QWidget* CreateLabel(frmMain& main);
