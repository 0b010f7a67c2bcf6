// Loading the symbols of a listing: the file and menu side of the listing
// reader, on frmMain.
#include "code/ListingReader.h"
#include "code/frmLabel.h"
#include "platform/DoEvents.h"
#include "platform/MsgBox.h"
#include "source/SourceRecords.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <QFile>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
const QString ReadErrorCaption = QStringLiteral("Orvane - Read Error");

// Windows call each other's methods by name; this one finds the open child.
void CallChild(const QMdiArea* area, const QString& window, const char* method)
{
    for (QMdiSubWindow* frame : area->subWindowList()) {
        if (frame->widget() && frame->widget()->objectName() == window)
            QMetaObject::invokeMethod(frame->widget(), method);
    }
}
}  // namespace

void frmMain::LoadSymbols()
{
    QFile file(Dialog.FileName);
    if (!file.open(QIODevice::ReadOnly)) {
        // The old table, panel and pointer stay as they were.
        MsgBox(file.errorString() + " !", MbExclamation, ReadErrorCaption);
        return;
    }

    QString failure;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        // Each line gives the user's other windows a turn: a long listing
        // must not freeze them. They see SymbolCount as it grows.
        ReadSymbols(file, DoEvents);
    } catch (const std::exception& error) {
        // The entries read before the failure stay in the table.
        failure = QString::fromLocal8Bit(error.what());
    }
    QGuiApplication::restoreOverrideCursor();
    file.close();

    // Also after a failure part-way, the panel says what the table now holds.
    SetPanelText(3, SymbolCount == 0 ? QStringLiteral("Symbols: <None>") : QStringLiteral("Symbols: ") + LstFile);
    if (!failure.isEmpty())
        MsgBox(failure + " !", MbExclamation, ReadErrorCaption);
}

void frmMain::FileLoadSymbols()
{
    LoadSymbols();
    if (Menu("mnuViewLabel")->isChecked()) {
        if (frmLabel* labels = frmLabel::Instance())
            labels->Redraw();
    }
    if (Menu("mnuViewDisassembler")->isChecked())
        CallChild(mdiArea(), QStringLiteral("frmDisAsm"), "PageRedraw");
    emit SymbolsLoaded();
}

void frmMain::mnuFileLoadSymbols_Click()
{
    Dialog.DialogTitle = QStringLiteral("Load Symbols");
    Dialog.Filter = QStringLiteral("Listing Files (*.lst)|*.lst|All Files (*.*)|*.*");
    Dialog.FilterIndex = 1;
    Dialog.FileName = LstFile;
    if (!Dialog.ShowOpen())
        return;
    LstFile = Dialog.FileTitle;
    FileLoadSymbols();
}
