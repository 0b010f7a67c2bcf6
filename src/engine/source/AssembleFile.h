// Assemble as a command: the save question before it, the names of the
// results beside the source, the run of the external assembler, and what the
// run's products set going. It knows no window: the main window implements
// AssembleReports with its Save entry, its message boxes, the symbols and
// the error list.
#pragma once

#include <QString>

class SourceDocuments;

class AssembleRun;

class AssembleReports {
public:
    virtual ~AssembleReports() = default;
    // The active document has changes that are not on disk (mnuFileSave is enabled).
    virtual bool ActiveDocumentUnsaved() = 0;
    // "Save <title> ?": true when the user says Yes.
    virtual bool ConfirmSave(const QString& title) = 0;
    // A missing tool, or why the run did not deliver: "Orvane - Assemble Error".
    virtual void AssembleFailed(const QString& text) = 0;
    // The results could not be put beside the source: "Orvane - Write Error".
    virtual void WriteFailed(const QString& text) = 0;
    // The listing has arrived as LstFile: its symbols are loaded and the run
    // is reported done.
    virtual void ListingArrived() = 0;
    // The error file has arrived as ErrFile, for ErrorSourcePath: the error list shows it.
    virtual void ErrorsArrived() = 0;
    // The run waits for the batch: the windows keep painting but hold the
    // user's input (Escape cancels the run), under a wait cursor, until
    // WaitEnded.
    virtual void WaitStarted(AssembleRun& run) = 0;
    virtual void WaitEnded() = 0;
};

// True when the active document's text is on disk: nothing to save, or the
// user let it be saved and the save took place. documents may be nullptr.
bool AsmSaved(AssembleReports& reports, SourceDocuments* documents);

// A source whose listing, error file or machine code would bear its own
// name is not assembled: true, and the user told why, before anything is
// saved, deleted or written.
bool ResultsWouldReplaceSource(AssembleReports& reports, const QString& asmFile);

// Assembles AsmFile in the current folder: LstFile, ErrFile and S19File are
// named after it and the results land beside it. Then AsmFile follows the
// active editor again, if it has a file.
void AssembleFile(AssembleReports& reports, SourceDocuments* documents);
