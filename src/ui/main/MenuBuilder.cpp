// Builds the menu bar, the popup menus and the toolbar of frmMain from the
// command table, and keeps the name lookups.
#include "ui/main/CommandTable.h"
#include "ui/main/ToolWindows.h"
#include "ui/main/ToolbarIcons.h"
#include "ui/main/frmMain.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
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
            top->installEventFilter(this);
            top->menuAction()->setProperty("HelpContextID", row.help);
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
        if (!row.caption) {
            action = parent->addSeparator();
        } else if (opensSubmenu) {
            sub = parent->addMenu(QString::fromUtf8(row.caption));
            sub->installEventFilter(this);
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
        action->setProperty("HelpContextID", row.help);
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
            if (row.toolTip) {
                action->setToolTip(QString::fromLatin1(row.toolTip));
                action->setIcon(ToolbarIcon(action->toolTip()));
            }
            action->setEnabled(!(row.flags & Off));
        }
        buttons_ << action;
    }
    connect(tbToolbar, &QToolBar::actionTriggered, this, &frmMain::tbToolbar_ButtonClick);
}

void frmMain::ConnectCommands()
{
    // The View entries of the tool windows toggle them.
    int count = 0;
    const toolwindows::ToolWindowRow* windows = toolwindows::Rows(count);
    for (int i = 0; i < count; ++i) {
        const QString window = QString::fromLatin1(windows[i].window);
        connect(Menu(QString::fromLatin1(windows[i].viewEntry)), &QAction::triggered, this,
                [this, window] { ToggleWindow(window); });
    }
    // Entries that only call a child window's method by name.
    const ForwardRow* forwards = ForwardRows(count);
    for (int i = 0; i < count; ++i) {
        const ForwardRow row = forwards[i];
        connect(Menu(QString::fromLatin1(row.entry)), &QAction::triggered, this, [this, row] {
            QWidget* window = row.window ? LoadWindow(QString::fromLatin1(row.window)) : ActiveWindow();
            CallWindow(window, row.method);
        });
    }
    connect(MenuOf(QStringLiteral("mnuWindow")), &QMenu::aboutToShow, this, &frmMain::mnuWindow_Click);
    connect(MenuOf(QStringLiteral("mnuWindow")), &QMenu::aboutToShow, this, &frmMain::ListChildWindows);
}

void frmMain::ListChildWindows()
{
    // Below its own entries the Window menu lists the open child windows.
    QMenu* menu = MenuOf(QStringLiteral("mnuWindow"));
    for (QAction* listed : menu->actions())
        if (listed->property("ChildWindowEntry").toBool())
            delete listed;
    const QList<QMdiSubWindow*> children = mdiArea()->subWindowList();
    if (children.isEmpty())
        return;
    menu->addSeparator()->setProperty("ChildWindowEntry", true);
    int number = 0;
    for (QMdiSubWindow* child : children) {
        QAction* entry = menu->addAction(QStringLiteral("&%1 %2").arg(++number).arg(child->windowTitle()));
        entry->setProperty("ChildWindowEntry", true);
        entry->setCheckable(true);
        entry->setChecked(child == mdiArea()->currentSubWindow());
        QPointer<QMdiSubWindow> target = child;
        connect(entry, &QAction::triggered, this, [this, target] {
            if (target)
                mdiArea()->setActiveSubWindow(target);
        });
    }
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
    // The Download button has a routine of its own: it takes S19File without asking.
    if (button->toolTip() == QLatin1String("Download")) {
        FileDownload();
        return;
    }
    // Print prints at once, where the menu entry shows the dialog first.
    if (button->toolTip() == QLatin1String("Print")) {
        PrintDocument();
        return;
    }
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
