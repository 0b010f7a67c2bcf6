// The File menu's document commands: New, Open, Close, Save, Save As.
#include "core/Conversions.h"
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

int SaveFilterIndexOf(const QString& fileName)
{
    QString base, extension;
    SplitFileName(fileName, base, extension);
    extension = extension.toUpper();
    return extension == QLatin1String("ASM") ? 1 : extension == QLatin1String("LST") ? 2
         : extension == QLatin1String("TXT") ? 3 : 4;
}

bool SameFile(const QString& a, const QString& b)
{
    const QFileInfo first(a), second(b);
    const QString canonical = first.canonicalFilePath();
    return canonical.isEmpty() ? first.absoluteFilePath() == second.absoluteFilePath()
                               : canonical == second.canonicalFilePath();
}

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
        if (!loaded->EditorName.isEmpty() && SameFile(loaded->EditorName, path))
            editor = loaded;
    if (editor)
        MainForm->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
    else
        editor = MainForm->OpenEditor(path);
    if (editor && line >= 0)
        editor->SelectLine(line);
    if (editor)
        editor->Text->setFocus();
    return editor;
}

void frmMain::SaveEditor(frmEditor& editor, bool& ok)
{
    QByteArray bytes;
    QString error;
    {
        BusyPointer busy;
        if (!EncodeSource(editor.PlainText(), editor.Encoding, bytes))
            error = QStringLiteral("The text holds characters that this file's one-byte encoding cannot store");
        else
            WriteFileSafely(editor.EditorName, bytes, error);
    }
    ok = error.isEmpty();
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
