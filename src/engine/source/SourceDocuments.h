// What the assembler run and the error list need from the editor documents.
// The editor side implements it and hands it to frmMain (Documents); without
// one, nothing is ever unsaved and there is no active editor.
#pragma once

#include <QString>

class SourceDocuments {
public:
    virtual ~SourceDocuments() = default;

    // The active editor's EditorTitle and EditorName (its folder and name);
    // both empty when no editor is active, the name empty for an untitled one.
    virtual QString ActiveTitle() const = 0;
    virtual QString ActiveName() const = 0;

    // The Save command on the active editor (Save As for an untitled one). It
    // reports its own failures; mnuFileSave stays enabled when nothing was saved.
    virtual void SaveActive() = 0;

    // The error list's jump: the first editor whose EditorName is path, else
    // the file at path opened in a new editor titled title ("Orvane - Read
    // Error" when it cannot be read); then the caret at the start of the
    // 1-based line, or of the last line when the document is shorter, and the
    // focus on the text.
    virtual void ShowLine(const QString& path, const QString& title, int line) = 0;
};
