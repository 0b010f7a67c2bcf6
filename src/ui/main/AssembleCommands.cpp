// Assemble on frmMain: the menu entry and toolbar button, and the main
// window as the run's AssembleReports: the Save entry, the message boxes,
// the symbols and the error list. The run itself is engine/source/AssembleFile.
#include "platform/widgets/MsgBox.h"
#include "engine/source/AssembleFile.h"
#include "engine/source/SourceDocuments.h"
#include "engine/source/SourceRecords.h"
#include "ui/source/AssembleInputGate.h"
#include "ui/source/frmError.h"
#include "ui/main/frmMain.h"
#include "ui/main/OpenFileChoice.h"

#include <QAction>
#include <QFileInfo>
#include <memory>

namespace {
class MainWindowAssembleReports : public AssembleReports {
public:
    explicit MainWindowAssembleReports(frmMain& main) : main_(main) {}

    bool ActiveDocumentUnsaved() override { return main_.Menu(QStringLiteral("mnuFileSave"))->isEnabled(); }
    bool ConfirmSave(const QString& title) override
    {
        return MsgBox(QStringLiteral("Save ") + title + QStringLiteral(" ?"), MbYesNo + MbInformation,
                      QStringLiteral("Orvane - Assemble File")) == MbResultYes;
    }
    void AssembleFailed(const QString& text) override
    {
        MsgBox(text, MbExclamation, QStringLiteral("Orvane - Assemble Error"));
    }
    void WriteFailed(const QString& text) override
    {
        MsgBox(text, MbExclamation, QStringLiteral("Orvane - Write Error"));
    }
    void ListingArrived() override
    {
        main_.Dialog.FileName = LstFile;
        main_.FileLoadSymbols();
        MsgBox(QStringLiteral("Assembly Source:\t") + AsmFile + QStringLiteral("\n\rListing (Symbol):\t") + LstFile
                   + QStringLiteral("\n\rMachine Code:\t") + S19File,
               MbInformation, QStringLiteral("Orvane - Assembling Done"));
    }
    void ErrorsArrived() override { main_.ShowErrorList(); }
    void WaitStarted(AssembleRun& run) override { gate_ = std::make_unique<AssembleInputGate>(run); }
    void WaitEnded() override { gate_.reset(); }

private:
    frmMain& main_;
    std::unique_ptr<AssembleInputGate> gate_;
};
}  // namespace

void frmMain::AsmSaved(bool& ok)
{
    MainWindowAssembleReports reports(*this);
    ok = ::AsmSaved(reports, Documents);
}

void frmMain::mnuFileAssemble_Click()
{
    if (!AsmFile.isEmpty()) {
        // Refused before the question to save, which would change the document for nothing.
        MainWindowAssembleReports reports(*this);
        if (ResultsWouldReplaceSource(reports, AsmFile))
            return;
    }
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
    // AsmFile is empty here: the dialog proposes no name.
    if (!ChooseFileToOpen(Dialog, QStringLiteral("Assemble"),
                          QStringLiteral("Assembly Source (*.asm)|*.asm|All Files (*.*)|*.*"), AsmFile))
        return;
    FileAssemble();
}

void frmMain::FileAssemble()
{
    MainWindowAssembleReports reports(*this);
    AssembleFile(reports, Documents);
}

void frmMain::ShowErrorList()
{
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

frmError* frmMain::ErrorList() const
{
    return errorList_;
}
