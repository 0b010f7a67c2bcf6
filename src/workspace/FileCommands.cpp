// The File menu's document commands on frmMain: New, Open, Close, Save, Save
// As. Reading, writing and their encodings are source/SourceFile's.
#include "platform/MsgBox.h"
#include "source/EditorRecords.h"
#include "source/SourceFile.h"
#include "source/SourceRecords.h"
#include "source/frmEditor.h"
#include "workspace/frmMain.h"

#include <QApplication>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>

namespace {
const char* const OpenFilter =
    "Assembly Source (*.asm)|*.asm|Listing Files (*.lst)|*.lst|Error Listing (*.err)|*.err|"
    "Text Files (*.txt)|*.txt|All Files (*.*)|*.*";
const char* const SaveFilter =
    "Assembly Source (*.asm)|*.asm|Listing Files (*.lst)|*.lst|Text Files (*.txt)|*.txt|All Files (*.*)|*.*";

// The hourglass for the life of the object.
struct BusyPointer {
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
};

// Puts a new editor into the main window; Form_Load runs before it shows.
void ShowEditor(frmMain& main, frmEditor* editor)
{
    QMdiSubWindow* sub = main.mdiArea()->addSubWindow(editor);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    editor->Form_Load();
    sub->show();
    main.mdiArea()->setActiveSubWindow(sub);
}
}  // namespace

void frmMain::NewEditor()
{
    ++UntitledCount;
    auto* editor = new frmEditor;
    editor->EditorTitle = QStringLiteral("Untitled%1.asm").arg(UntitledCount);
    ShowEditor(*this, editor);
}

frmEditor* frmMain::OpenEditor(const QString& path)
{
    QByteArray bytes;
    QString error;
    bool read = false;
    {
        BusyPointer busy;
        read = ReadSourceFile(path, bytes, error);
    }
    if (!read) {
        MsgBox(error + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Read Error"));
        return nullptr;
    }
    const DecodedSource source = DecodeSource(bytes);
    auto* editor = new frmEditor;
    editor->EditorName = QFileInfo(path).absoluteFilePath();
    editor->EditorTitle = QFileInfo(path).fileName();
    editor->Encoding = source.encoding;
    ShowEditor(*this, editor);
    editor->LoadText(source.text);
    return editor;
}

frmEditor* OpenOrActivate(const QString& path, int line)
{
    frmEditor* editor = nullptr;
    for (frmEditor* loaded : LoadedEditors())
        if (!loaded->EditorName.isEmpty() && SameFile(loaded->EditorName, path)) {
            editor = loaded;
            break;
        }
    if (editor)
        MainForm->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
    else
        editor = MainForm->OpenEditor(path);
    if (editor && line >= 0)
        editor->CaretToLine(line);
    else if (editor)
        editor->Text->setFocus();
    return editor;
}

void frmMain::SaveEditor(frmEditor& editor, bool& ok)
{
    QString error;
    {
        BusyPointer busy;
        ok = SaveSourceText(editor.EditorName, editor.FileText(), editor.Encoding, error);
    }
    if (!ok) {
        MsgBox(error + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Write Error"));
        return;
    }
    editor.TextChanged = false;
    if (&editor == ActiveEditor())
        SetSaveCommands(false);
}

void frmMain::mnuFileNew_Click()
{
    NewEditor();
}

void frmMain::mnuFileOpen_Click()
{
    Dialog.DialogTitle = QStringLiteral("Open");
    Dialog.Filter = QString::fromLatin1(OpenFilter);
    Dialog.FilterIndex = OpenFilterIndex;
    Dialog.FileName.clear();
    const bool chosen = Dialog.ShowOpen();
    OpenFilterIndex = static_cast<std::int16_t>(Dialog.FilterIndex);
    if (chosen && !Dialog.FileName.isEmpty())
        OpenEditor(Dialog.FileName);
}

void frmMain::mnuFileClose_Click()
{
    if (frmEditor* editor = ActiveEditor())
        editor->parentWidget()->close();
}

void frmMain::mnuFileSave_Click()
{
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return;
    if (editor->EditorName.isEmpty()) {
        mnuFileSaveAs_Click();
        return;
    }
    bool ok = false;
    SaveEditor(*editor, ok);
}

void frmMain::mnuFileSaveAs_Click()
{
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return;
    Dialog.DialogTitle = QStringLiteral("Save As");
    Dialog.Filter = QString::fromLatin1(SaveFilter);
    Dialog.FileName = editor->EditorName.isEmpty() ? editor->EditorTitle : editor->EditorName;
    Dialog.FilterIndex = SaveFilterIndexOf(Dialog.FileName);
    if (!Dialog.ShowSave())
        return;
    AsmFile = Dialog.FileTitle;
    editor->EditorName = Dialog.FileName;
    editor->EditorTitle = Dialog.FileTitle;
    editor->setWindowTitle(Dialog.FileTitle);
    bool ok = false;
    SaveEditor(*editor, ok);
}
