#include "engine/source/AssembleFile.h"

#include "engine/state/Conversions.h"
#include "platform/ProgramFolder.h"
#include "engine/source/AssembleRun.h"
#include "engine/source/SourceDocuments.h"
#include "engine/source/SourceRecords.h"

#include <QDir>

bool AsmSaved(AssembleReports& reports, SourceDocuments* documents)
{
    if (!documents || !reports.ActiveDocumentUnsaved())
        return true;
    // No: the file on disk would differ from the text in the editor.
    if (!reports.ConfirmSave(documents->ActiveTitle()))
        return false;
    documents->SaveActive();
    return !reports.ActiveDocumentUnsaved();
}

void AssembleFile(AssembleReports& reports, SourceDocuments* documents)
{
    AssembleRun run(ProgramFolder(), AssembleRun::DefaultWorkFolder());
    const QString missing = run.MissingTool();
    if (!missing.isEmpty()) {
        reports.AssembleFailed(missing);
        return;
    }
    QString base;
    QString extension;
    SplitFileName(AsmFile, base, extension);
    LstFile = base + QStringLiteral(".lst");
    ErrFile = base + QStringLiteral(".err");
    S19File = base + QStringLiteral(".s19");

    const QDir sourceFolder = QDir::current();
    QObject::connect(&run, &AssembleRun::Started, [&] { reports.WaitStarted(run); });
    QObject::connect(&run, &AssembleRun::Ended, [&] { reports.WaitEnded(); });
    const AssembleRun::Outcome outcome =
        run.Run(sourceFolder.filePath(AsmFile), sourceFolder.filePath(LstFile), sourceFolder.filePath(S19File),
                sourceFolder.filePath(ErrFile));
    if (!outcome.problems.isEmpty())
        reports.AssembleFailed(outcome.problems.join(QLatin1Char('\n')));
    if (outcome.listingArrived)
        reports.ListingArrived();
    if (outcome.errorsArrived) {
        ErrorSourceTitle = AsmFile;
        ErrorSourcePath = sourceFolder.filePath(AsmFile);
        reports.ErrorsArrived();
    }
    // A source picked in the dialog gives way to the active editor's again.
    if (documents && !documents->ActiveName().isEmpty())
        AsmFile = documents->ActiveTitle();
}
