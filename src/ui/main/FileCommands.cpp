// The File menu's document commands on frmMain: New, Open, Close, Save, Save
// As. Reading, writing and their encodings are engine/source/SourceFile's.
#include "platform/widgets/MsgBox.h"
#include "engine/source/EditorRecords.h"
#include "engine/source/SourceFile.h"
#include "engine/source/SourceRecords.h"
#include "ui/source/frmEditor.h"
#include "ui/main/frmMain.h"

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
// It opens at its size hint in its font, within the client area once that is up.
void ShowEditor(frmMain& main, frmEditor* editor)
{
    QMdiSubWindow* sub = main.mdiArea()->addSubWindow(editor);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    editor->Form_Load();
    const QWidget* client = main.mdiArea()->viewport();
    sub->resize(client->isVisible() ? sub->sizeHint().boundedTo(client->size()) : sub->sizeHint());
    sub->show();
    main.mdiArea()->setActiveSubWindow(sub);
}

// Reads a file for an editor, with the hourglass up; "Orvane - Read Error"
// when it cannot be read. The stamp is taken first: a change during the read
// then counts as a change.
bool ReadForEditor(const QString& path, DecodedSource& source, DiskStamp& stamp)
{
    QByteArray bytes;
    QString error;
    bool read = false;
    {
        BusyPointer busy;
        stamp = StampOf(path);
        read = ReadSourceFile(path, bytes, error);
    }
    if (!read) {
        MsgBox(error + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Read Error"));
        return false;
    }
    source = DecodeSource(bytes);
    return true;
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
    DecodedSource source;
    DiskStamp stamp;
    if (!ReadForEditor(path, source, stamp))
        return nullptr;
    auto* editor = new frmEditor;
    editor->EditorName = QFileInfo(path).absoluteFilePath();
    editor->EditorTitle = QFileInfo(path).fileName();
    editor->Encoding = source.encoding;
    editor->OnDisk = stamp;
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

bool AskAboutOutsideChange(frmEditor& editor, bool saving)
{
    if (editor.EditorName.isEmpty() || !editor.OnDisk.exists)
        return true;
    const DiskStamp now = StampOf(editor.EditorName);
    // A file that is gone is simply written again.
    if (!now.exists || now == editor.OnDisk || (!saving && now == editor.OutsideKept))
        return true;
    // Noted before the question: the activation that follows the box's closing does not ask again.
    editor.OutsideKept = now;
    if (MsgBox(editor.EditorTitle + QStringLiteral(" has been changed outside Orvane. Reload it?"), MbYesNo + MbQuestion,
               QStringLiteral("Orvane - Warning"))
        != MbResultYes)
        return true;
    DecodedSource source;
    DiskStamp stamp;
    if (ReadForEditor(editor.EditorName, source, stamp)) {
        editor.Encoding = source.encoding;
        editor.OnDisk = stamp;
        editor.LoadText(source.text);
    }
    return false;
}

void frmMain::SaveEditor(frmEditor& editor, bool& ok)
{
    if (!AskAboutOutsideChange(editor, true)) {
        ok = !editor.TextChanged;   // reloaded: the editor holds what the disk holds
        return;
    }
    QString error;
    {
        BusyPointer busy;
        ok = SaveSourceText(editor.EditorName, editor.FileText(), editor.Encoding, error);
    }
    if (!ok) {
        MsgBox(error + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Write Error"));
        return;
    }
    editor.OnDisk = StampOf(editor.EditorName);
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
    editor->OnDisk = {};   // the user has agreed to replace whatever file bears the new name
    editor->EditorName = Dialog.FileName;
    editor->EditorTitle = Dialog.FileTitle;
    editor->setWindowTitle(Dialog.FileTitle);
    bool ok = false;
    SaveEditor(*editor, ok);
}
