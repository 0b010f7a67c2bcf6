// The watch commands of the main window: Add Watch (Ctrl+W, toolbar button
// 34, the watch window's popup), Edit Watch, Remove Watch, and the reload
// rule after symbols are loaded. They change WatchTable and let the watch
// window follow; edit and remove act only on a row the window has selected.
#include "platform/widgets/MsgBox.h"
#include "ui/views/EntryFields.h"
#include "ui/views/WatchTable.h"
#include "ui/views/frmWatch.h"
#include "ui/views/frmWatchAdr.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
const QString WatchWindow = QStringLiteral("frmWatch");

frmWatch* OpenWatchWindow(frmMain& main)
{
    return main.IsOpen(WatchWindow) ? qobject_cast<frmWatch*>(main.Window(WatchWindow)) : nullptr;
}
}  // namespace

void frmMain::mnuDebugAddWatch_Click()
{
    if (WatchCount >= MaxWatches) {
        MsgBox(QStringLiteral(" Can't Add Watch !\n\r(Max. Watches = 32)"), MbOkOnly | MbExclamation,
               QStringLiteral("Orvane - Watch Error"));
        return;
    }
    EntryAccepted = false;
    EntryText.clear();
    EntryIsWord = false;   // the dialog offers a byte
    frmWatchAdr::ShowModal(350);
    if (!EntryAccepted)
        return;
    AddWatch(EntryValue, EntryLabel, EntryIsWord);
    frmWatch* window = OpenWatchWindow(*this);
    if (window) {
        mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
        window->mnuRefresh();
        SetEditWatchCommand(true);
    } else {
        window = qobject_cast<frmWatch*>(LoadWindow(WatchWindow));
    }
    if (window)
        window->SelectRow(WatchCount - 1);
}

void frmMain::mnuDebugEditWatch_Click()
{
    frmWatch* window = OpenWatchWindow(*this);
    const int row = window ? window->SelectedRow() : -1;
    if (row < 0)
        return;
    EntryAccepted = false;
    EntryText = window->Label(row);
    EntryIsWord = WatchTable[static_cast<std::size_t>(row)].WatchIsWord;
    frmWatchAdr::ShowModal(351);
    if (!EntryAccepted)
        return;
    EditWatch(row, EntryValue, EntryLabel, EntryIsWord);
    window->mnuRefresh();
}

void frmMain::mnuPopupViewRemoveWatch_Click()
{
    frmWatch* window = OpenWatchWindow(*this);
    const int row = window ? window->SelectedRow() : -1;
    if (row < 0)
        return;
    RemoveWatch(row);
    if (WatchCount == 0) {
        Menu(QStringLiteral("mnuPopupViewRemoveWatch"))->setEnabled(false);
        // No row is left for Edit Watch to act on.
        SetEditWatchCommand(false);
    }
    window->mnuRefresh();
}

void frmMain::WatchSymbolsReloaded()
{
    ApplySymbolReload();
    if (frmWatch* window = OpenWatchWindow(*this))
        window->Redraw();
}
