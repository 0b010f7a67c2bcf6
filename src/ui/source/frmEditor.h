// One source document: an MDI child of frmMain holding the text control
// `Text`. It keeps the File and Edit commands, the toolbar and the caret
// panels of frmMain in step with its own state while it is active.
#pragma once

#include "engine/source/SourceFile.h"

#include <QString>
#include <QWidget>

class QPlainTextEdit;

class frmEditor : public QWidget {
    Q_OBJECT
public:
    explicit frmEditor(QWidget* parent = nullptr);
    // An editor destroyed without a close (its main window went) leaves the records right too.
    ~frmEditor() override;

    QString EditorName;        // full path of the file; empty if never saved
    QString EditorTitle;       // file name without folder; also the caption
    bool TextChanged = false;  // the text differs from the file
    bool Undo = false;         // an undo step is available
    bool Redo = false;         // a redo step is available
    SourceEncoding Encoding;   // how the file's bytes are written back
    DiskStamp OnDisk;          // the file as this editor last read or wrote it
    DiskStamp OutsideKept;     // a change by somebody else that the user chose not to load

    QPlainTextEdit* Text = nullptr;

    // The whole text with lines ending in LF, as search and printing count it.
    QString PlainText() const;
    // The whole text as the file gets it: every line with its own end.
    QString FileText() const;
    // Replaces the whole text, whose lines end as in the file, as a freshly
    // opened file with Encoding set: no undo history, not changed.
    void LoadText(const QString& text);
    QString SelText() const;
    int SelStart() const;
    int SelLength() const;
    void SetSelection(int start, int length);
    // Replaces the selection; the caret stands behind the inserted text.
    void SetSelText(const QString& text);
    // The caret at the start of a line (0-based; a line behind the last is
    // the last), shown, and the focus on the text.
    void CaretToLine(int line);

    void Form_Load();
    // Text takes ScreenFont (fixed pitch if the named face is missing); the
    // tab stops stay as they were measured at load.
    void ApplyScreenFont();
    void Form_Activate();
    void Form_Deactivate();
    // Closed for good: the window may still wait for its deletion.
    bool Unloaded() const { return unloaded_; }
    // Caret line and column into panels 5 and 6, insert state into 7.
    void Cursor();
    // 80 columns by 25 lines of the editor's font, with room for the scroll
    // bars: the size a new editor opens at.
    QSize sizeHint() const override;

    // The Edit commands of frmMain act here.
    void EditUndo();
    void EditRedo();
    void EditCut();
    void EditCopy();
    void EditPaste();
    void EditDelete();
    void EditSelectAll();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsActive() const;
    void Text_Change();
    void Text_SelChange();
    void UndoStateChanged();
    void Form_Unload();

    mutable QString plainText_;
    mutable bool plainTextStale_ = true;
    bool loading_ = false;
    bool unloaded_ = false;
};

// The active editor, or nullptr when no editor is the active child window.
frmEditor* ActiveEditor();
// Every loaded editor, in the order of the main window's child list.
QList<frmEditor*> LoadedEditors();
// An editor on the file at path, made active: one that has the file open
// already (the first of them), else a newly opened one, with the focus on
// its text. A line of 0 or more gets the caret at its start.
// nullptr if the file could not be read (the user has been told).
frmEditor* OpenOrActivate(const QString& path, int line = -1);
// Asks "<title> has been changed outside Orvane. Reload it?" when the file
// changed on disk since the editor read or wrote it. Yes loads the file; No
// keeps the text, and then activation asks again only after another change,
// while a save asks before each write. True when the text may be written.
bool AskAboutOutsideChange(frmEditor& editor, bool saving);
// Keeps editor activation in step with the main window's child windows and
// loads the Find and Replace dialog, hidden. Called once by frmMain.
class frmMain;
void SetUpEditors(frmMain& main);
