// Loading the symbols of a listing on frmMain: the file dialog, the hourglass,
// panel 3, the messages, and the windows that show symbols. The reading is
// the listing reader's (engine/code/ListingReader.h).
#include "engine/code/ListingReader.h"
#include "ui/code/frmLabel.h"
#include "platform/DoEvents.h"
#include "platform/widgets/MsgBox.h"
#include "engine/source/SourceRecords.h"
#include "ui/main/frmMain.h"
#include "ui/main/OpenFileChoice.h"

#include <QAction>
#include <QGuiApplication>

namespace {
const QString ReadErrorCaption = QStringLiteral("Orvane - Read Error");
}  // namespace

void frmMain::LoadSymbols()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    // Each line gives the user's other windows a turn: a long listing must
    // not freeze them. They see SymbolCount as it grows.
    const ListingLoad load = LoadListingFile(Dialog.FileName, DoEvents);
    QGuiApplication::restoreOverrideCursor();
    if (load.opened) {
        // Also after a failure part-way, the panel says what the table now holds.
        SetPanelText(3, SymbolCount == 0 ? QStringLiteral("Symbols: <None>") : QStringLiteral("Symbols: ") + LstFile);
    }
    if (!load.failure.isEmpty())
        MsgBox(load.failure + " !", MbExclamation, ReadErrorCaption);
}

void frmMain::FileLoadSymbols()
{
    LoadSymbols();
    if (Menu("mnuViewLabel")->isChecked()) {
        if (frmLabel* labels = frmLabel::Instance())
            labels->Redraw();
    }
    if (Menu("mnuViewDisassembler")->isChecked())
        CallWindow(Window(QStringLiteral("frmDisAsm")), "PageRedraw");
    emit SymbolsLoaded();
}

void frmMain::mnuFileLoadSymbols_Click()
{
    if (!ChooseFileToOpen(Dialog, QStringLiteral("Load Symbols"),
                          QStringLiteral("Listing Files (*.lst)|*.lst|All Files (*.*)|*.*"), LstFile))
        return;
    FileLoadSymbols();
}
