// Assemble on frmMain: the menu entry and toolbar button, the save question,
// and the run whose results feed the symbols and the error list.
#include "core/Conversions.h"
#include "platform/MsgBox.h"
#include "platform/ProgramFolder.h"
#include "source/AssembleRun.h"
#include "source/SourceDocuments.h"
#include "source/SourceRecords.h"
#include "source/frmError.h"
#include "workspace/frmMain.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

namespace {
const QString AssembleErrorCaption = QStringLiteral("Orvane - Assemble Error");
}  // namespace

void frmMain::AsmSaved(bool& ok)
{
    QAction* save = Menu(QStringLiteral("mnuFileSave"));
    if (!save->isEnabled() || !Documents) {
        ok = true;
        return;
    }
    const MsgBoxResult answer = MsgBox(QStringLiteral("Save ") + Documents->ActiveTitle() + QStringLiteral(" ?"),
                                       MbYesNo + MbInformation, QStringLiteral("Orvane - Assemble File"));
    if (answer != MbResultYes) {
        // The file on disk would differ from the text in the editor.
        ok = false;
        return;
    }
    Documents->SaveActive();
    ok = !save->isEnabled();
}

void frmMain::mnuFileAssemble_Click()
{
    bool ok = false;
    AsmSaved(ok);
    if (!ok)
        return;
    if (!AsmFile.isEmpty()) {
        // A source that is not in the current folder is not assembled.
        if (QFileInfo(AsmFile).isFile())
            FileAssemble();
        return;
    }
    Dialog.DialogTitle = QStringLiteral("Assemble");
    Dialog.Filter = QStringLiteral("Assembly Source (*.asm)|*.asm|All Files (*.*)|*.*");
    Dialog.FilterIndex = 1;
    Dialog.FileName.clear();
    if (!Dialog.ShowOpen())
        return;
    AsmFile = Dialog.FileTitle;
    FileAssemble();
}

void frmMain::FileAssemble()
{
    AssembleRun run(ProgramFolder(), AssembleRun::DefaultWorkFolder());
    const QString missing = run.MissingTool();
    if (!missing.isEmpty()) {
        MsgBox(missing, MbExclamation, AssembleErrorCaption);
        return;
    }
    QString base;
    QString extension;
    SplitFileName(AsmFile, base, extension);
    LstFile = base + QStringLiteral(".lst");
    ErrFile = base + QStringLiteral(".err");
    S19File = base + QStringLiteral(".s19");

    const QDir sourceFolder = QDir::current();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const AssembleRun::Outcome outcome =
        run.Run(sourceFolder.filePath(AsmFile), sourceFolder.filePath(LstFile), sourceFolder.filePath(S19File),
                sourceFolder.filePath(ErrFile));
    QGuiApplication::restoreOverrideCursor();
    if (!outcome.problems.isEmpty())
        MsgBox(outcome.problems.join(QLatin1Char('\n')), MbExclamation, AssembleErrorCaption);

    if (outcome.listingArrived) {
        Dialog.FileName = LstFile;
        FileLoadSymbols();
        MsgBox(QStringLiteral("Assembly Source:\t") + AsmFile + QStringLiteral("\n\rListing (Symbol):\t") + LstFile
                   + QStringLiteral("\n\rMachine Code:\t") + S19File,
               MbInformation, QStringLiteral("Orvane - Assembling Done"));
    }
    if (outcome.errorsArrived) {
        ErrorSourceTitle = AsmFile;
        ErrorSourcePath = sourceFolder.filePath(AsmFile);
        if (!errorList_) {
            errorList_ = new frmError(this);
            errorList_->GoToLine = [this](int line) {
                // The list stays with the run that filled it, whatever ran since.
                if (Documents)
                    Documents->ShowLine(ErrorSourcePath, ErrorSourceTitle, line);
            };
        }
        errorList_->ErrorShow();
    }
    // A source picked in the dialog gives way to the active editor's again.
    if (Documents && !Documents->ActiveName().isEmpty())
        AsmFile = Documents->ActiveTitle();
}

frmError* frmMain::ErrorList() const
{
    return errorList_;
}
