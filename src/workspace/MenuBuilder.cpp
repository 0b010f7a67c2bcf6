// Builds the menu bar, the popup menus and the toolbar of frmMain from the
// command table, and keeps the name lookups.
#include "workspace/CommandTable.h"
#include "workspace/frmMain.h"

#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

using namespace commands;

namespace {
void ApplyStartState(QAction* action, unsigned flags)
{
    action->setEnabled(!(flags & Off));
    action->setVisible(!(flags & Hidden));
    if (flags & Check) {
        action->setCheckable(true);
        action->setChecked(flags & Checked);
    }
}
}  // namespace

void frmMain::BuildMenus()
{
    int count = 0;
    const MenuRow* rows = MenuRows(count);
    QMenu* top = nullptr;
    QMenu* sub = nullptr;
    for (int i = 0; i < count; ++i) {
        const MenuRow& row = rows[i];
        if (row.level == 0) {
            top = new QMenu(QString::fromUtf8(row.caption), this);
            if (!(row.flags & Popup))
                menuBar()->addMenu(top);
            menus_.insert(QString::fromLatin1(row.name), top);
            actions_.insert(QString::fromLatin1(row.name), top->menuAction());
            sub = nullptr;
            continue;
        }
        QMenu* parent = row.level == 2 ? sub : top;
        Q_ASSERT(parent);
        QAction* action = nullptr;
        // A row followed by deeper rows opens a submenu.
        const bool opensSubmenu = row.name && i + 1 < count && rows[i + 1].level > row.level;
        if (!row.name) {
            action = parent->addSeparator();
        } else if (opensSubmenu) {
            sub = parent->addMenu(QString::fromUtf8(row.caption));
            menus_.insert(QString::fromLatin1(row.name), sub);
            action = sub->menuAction();
        } else {
            action = parent->addAction(QString::fromUtf8(row.caption));
            if (*row.shortcut)
                action->setShortcut(QKeySequence(QString::fromLatin1(row.shortcut)));
            const Handler click = row.click;
            connect(action, &QAction::triggered, this, [this, action, click](bool checked) {
                // Check marks are state that code sets; undo the toolkit's own toggle.
                if (action->isCheckable())
                    action->setChecked(!checked);
                if (click)
                    (this->*click)();
            });
        }
        ApplyStartState(action, row.flags);
        if (row.name) {
            action->setObjectName(QString::fromLatin1(row.name));
            actions_.insert(QString::fromLatin1(row.name), action);
        }
    }
}

void frmMain::BuildToolbar()
{
    tbToolbar = addToolBar(QStringLiteral("Toolbar"));
    tbToolbar->setObjectName(QStringLiteral("tbToolbar"));
    tbToolbar->setMovable(false);
    tbToolbar->setIconSize(QSize(16, 16));
    int count = 0;
    const ToolbarRow* rows = ToolbarRows(count);
    for (int i = 0; i < count; ++i) {
        const ToolbarRow& row = rows[i];
        QAction* action = nullptr;
        if (row.kind == ToolbarRow::Separator) {
            action = tbToolbar->addSeparator();
        } else {
            action = tbToolbar->addAction(row.toolTip ? QString::fromLatin1(row.toolTip) : QString());
            action->setVisible(row.kind == ToolbarRow::Button);
            if (row.toolTip)
                action->setToolTip(QString::fromLatin1(row.toolTip));
            action->setEnabled(!(row.flags & Off));
        }
        buttons_ << action;
    }
    connect(tbToolbar, &QToolBar::actionTriggered, this, &frmMain::tbToolbar_ButtonClick);
}

QAction* frmMain::Menu(const QString& name) const
{
    QAction* action = actions_.value(name);
    if (!action)
        qFatal("frmMain has no menu entry %s", qPrintable(name));
    return action;
}

QMenu* frmMain::MenuOf(const QString& name) const
{
    QMenu* menu = menus_.value(name);
    if (!menu)
        qFatal("frmMain has no menu %s", qPrintable(name));
    return menu;
}

QAction* frmMain::Button(int position) const
{
    if (position < 1 || position > buttons_.size())
        qFatal("tbToolbar has no position %d", position);
    return buttons_[position - 1];
}

void frmMain::tbToolbar_ButtonClick(QAction* button)
{
    int count = 0;
    const ToolbarRow* rows = ToolbarRows(count);
    for (int i = 0; i < count; ++i) {
        if (rows[i].kind != ToolbarRow::Button || button->toolTip() != QLatin1String(rows[i].toolTip))
            continue;
        if (!rows[i].command)
            return;
        // The button acts as its menu entry, whatever that entry's own enabled state.
        int menuCount = 0;
        const MenuRow* menuRows = MenuRows(menuCount);
        for (int m = 0; m < menuCount; ++m) {
            if (menuRows[m].name && qstrcmp(menuRows[m].name, rows[i].command) == 0 && menuRows[m].click)
                (this->*menuRows[m].click)();
        }
        return;
    }
}
