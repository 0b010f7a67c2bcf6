// "Labels": a child window of frmMain listing the labels of the loaded
// listing with their values, sorted as the user chooses from its popup menu.
// The order is kept in the setting "LabelSort": "N" by name, "V" by value,
// empty for the order of the listing.
#pragma once

#include "ui/views/ToolWindow.h"

class QTreeWidget;

class frmLabel : public ToolWindow {
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
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The sort order, once the window sits in its MDI frame.
    void Load() override;
    void Form_Unload() override;

private:
    friend QWidget* CreateLabel(frmMain&);
    explicit frmLabel(frmMain& main);
    void SetSortMode(const QString& mode);
};

// The label window's factory for the main window's tool-window table.
QWidget* CreateLabel(frmMain& main);
