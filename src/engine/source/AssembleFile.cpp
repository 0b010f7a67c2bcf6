#include "engine/source/AssembleFile.h"

#include "engine/state/Conversions.h"
#include "platform/ProgramFolder.h"
#include "engine/source/AssembleRun.h"
#include "engine/source/SourceDocuments.h"
#include "engine/source/SourceRecords.h"
#include "engine/source/SourceFile.h"

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

namespace {
struct ResultNames {
    QString listing, errors, machineCode;
};

ResultNames ResultsOf(const QString& asmFile)
{
    QString base, extension;
    SplitFileName(asmFile, base, extension);
    return {base + QStringLiteral(".lst"), base + QStringLiteral(".err"), base + QStringLiteral(".s19")};
}
}  // namespace

bool ResultsWouldReplaceSource(AssembleReports& reports, const QString& asmFile)
{
    const ResultNames results = ResultsOf(asmFile);
    for (const QString& result : {results.listing, results.errors, results.machineCode}) {
        if (SameFile(result, asmFile)) {
            reports.AssembleFailed(asmFile + QStringLiteral(" would be replaced by its own results: "
                                                            "give the source another name !"));
            return true;
        }
    }
    return false;
}

void AssembleFile(AssembleReports& reports, SourceDocuments* documents)
{
    if (ResultsWouldReplaceSource(reports, AsmFile))
        return;
    AssembleRun run(ProgramFolder(), AssembleRun::DefaultWorkFolder());
    const QString missing = run.MissingTool();
    if (!missing.isEmpty()) {
        reports.AssembleFailed(missing);
        return;
    }
    const ResultNames results = ResultsOf(AsmFile);
    LstFile = results.listing;
    ErrFile = results.errors;
    S19File = results.machineCode;

    const QDir sourceFolder = QDir::current();
    QObject::connect(&run, &AssembleRun::Started, [&] { reports.WaitStarted(run); });
    QObject::connect(&run, &AssembleRun::Ended, [&] { reports.WaitEnded(); });
    const AssembleRun::Outcome outcome =
        run.Run(sourceFolder.filePath(AsmFile), sourceFolder.filePath(LstFile), sourceFolder.filePath(S19File),
                sourceFolder.filePath(ErrFile));
    if (!outcome.problems.isEmpty())
        reports.AssembleFailed(outcome.problems.join(QLatin1Char('\n')));
    if (!outcome.writeError.isEmpty())
        reports.WriteFailed(outcome.writeError + QStringLiteral(" !"));
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
