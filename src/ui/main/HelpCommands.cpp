// The Help menu: the help file through the common dialog, and the about box.
#include "platform/widgets/Help.h"
#include "platform/widgets/ModalDialog.h"
#include "ui/main/frmAbout.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>

namespace {
constexpr int HC11SymbolsTopic = 999;
constexpr const char* HelpContextProperty = "HelpContextID";
}  // namespace

void frmMain::mnuHelpOrvaneHelp_Click()
{
    Dialog.HelpFile = HelpFile;
    Dialog.HelpCommand = HelpContentsCommand;
    Dialog.ShowHelp();
}

void frmMain::mnuHelpUsingHelp_Click()
{
    Dialog.HelpFile = HelpFile;
    Dialog.HelpCommand = HelpOnHelpCommand;
    Dialog.ShowHelp();
}

void frmMain::mnuHelpHC11Symbols_Click()
{
    Dialog.HelpFile = HelpFile;
    Dialog.HelpCommand = HelpContextCommand;
    Dialog.HelpContext = HC11SymbolsTopic;
    Dialog.ShowHelp();
}

void frmMain::mnuHelpAboutOrvane_Click()
{
    frmAbout about(this);
    RunModal(about);
}

int frmMain::HelpContextOf(const QString& name) const
{
    return Menu(name)->property(HelpContextProperty).toInt();
}

void frmMain::SetHelpContext(const QString& name, int context)
{
    Menu(name)->setProperty(HelpContextProperty, context);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event)
{
    // F1 in an open menu: the help of the highlighted entry, else of the menu itself.
    auto* menu = qobject_cast<QMenu*>(watched);
    if (menu && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
        QAction* entry = menu->activeAction();
        int context = entry ? entry->property(HelpContextProperty).toInt() : 0;
        if (context == 0)
            context = menu->menuAction()->property(HelpContextProperty).toInt();
        if (context != 0) {
            while (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
            Dialog.HelpFile = HelpFile;
            Dialog.HelpCommand = HelpContextCommand;
            Dialog.HelpContext = context;
            Dialog.ShowHelp();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
