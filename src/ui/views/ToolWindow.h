// What every child window of the main window stands on: its caption, the
// placement rule under its key prefix, the View entry's check going off at
// unload, Form_Activate and Form_Deactivate as the MDI area reports them, the
// main window's popup menus, and the rows of the windows that show a page of
// labels with a current row (disassembly, stack). A window reaches the target
// through link_, the main window's one TargetLink.
#pragma once

#include <QColor>
#include <QWidget>

class QLabel;
class QMdiSubWindow;
class TargetLink;
class frmMain;

class ToolWindow : public QWidget {
    Q_OBJECT
public:
    // A current row: white on pure blue.
    static const QColor CurrentColour;
    // The background of a plain row, the window colour.
    static QColor PlainColour();

    // The open window of that name brought to the front, or else loaded;
    // nullptr where the window can't be.
    static QWidget* Open(const QString& window);

    // The placement, then Load; LoadWindow calls it once the window sits in its frame.
    Q_INVOKABLE void Form_Load();

protected:
    // An empty placementPrefix: the window keeps no placement.
    ToolWindow(frmMain& main, const QString& caption, const QString& placementPrefix);

    virtual void Load() {}
    // The size of the content that the window shows when it first opens;
    // until it has a stored placement it opens at that size in its frame
    // (within the client area). An invalid size keeps the default's.
    virtual QSize ContentSize() const { return {}; }
    virtual void Form_Activate() {}
    virtual void Form_Deactivate() {}
    // Before the placement is saved and the View entry's check goes off.
    virtual void Form_Unload() {}
    // The main window's active child is this one now.
    bool IsActiveForm() const;

    // The main window's popup menu at a screen position; the window is
    // activated and focus, the control the menu is about, focused first.
    void ShowPopup(const char* menu, QWidget* focus, const QPoint& globalPos);

    // Rows of label windows, 1 upward, one row height apart and as wide as
    // the screen; their mouse events come to the Row_ handlers.
    QLabel* AddRow(int index, int height);
    static void SetLook(QLabel* row, const QColor& text, const QColor& background);
    static void SetBold(QLabel* row, bool bold);
    virtual void Label_Click(int) {}
    virtual void Label_DblClick(int) {}
    virtual void Label_RightButton(int, const QPoint&) {}

    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    frmMain& main_;
    TargetLink& link_;

private:
    void SubWindowActivated(QMdiSubWindow* sub);

    QString prefix_;
    bool active_ = false;     // between Form_Activate and Form_Deactivate
    bool unloaded_ = false;
};
