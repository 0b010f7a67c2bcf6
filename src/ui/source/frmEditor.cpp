#include "ui/source/frmEditor.h"

#include "engine/state/AppSettings.h"
#include "engine/state/Conversions.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/MsgBox.h"
#include "platform/widgets/PopupMenu.h"
#include "ui/source/EditorColouring.h"
#include "engine/source/EditorRecords.h"
#include "engine/source/SourceRecords.h"
#include "ui/source/frmReplace.h"
#include "ui/main/frmMain.h"
#include "ui/source/DocumentLineEnds.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollBar>
#include <QStyle>
#include <QtMath>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {
constexpr int LinePanel = 5, ColumnPanel = 6, InsertPanel = 7;
constexpr int TabColumns = 9;   // as ExpandTabs counts them

QPointer<frmEditor>& Current()
{
    static QPointer<frmEditor> current;
    return current;
}

// Asking the clipboard on every caret move can be a round trip to another
// program; the answer changes only when the clipboard does, and then the
// active editor's Paste follows at once.
bool ClipboardHasText()
{
    static bool hasText = [] {
        QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged, [] {
            hasText = !QApplication::clipboard()->text().isEmpty();
            if (frmEditor* editor = ActiveEditor(); editor && MainForm)
                MainForm->SetClipboardButtons(editor->SelLength() > 0, hasText);
        });
        return !QApplication::clipboard()->text().isEmpty();
    }();
    return hasText;
}

bool FindHistory()
{
    const frmReplace* dialog = FindReplaceDialog();
    return dialog && dialog->cbWhat->count() > 0;
}

// Typed, pasted and dropped line breaks come in by InsertLines, so that new
// lines take the usual end.
class SourceTextEdit : public QPlainTextEdit {
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    void keyPressEvent(QKeyEvent* key) override
    {
        // Shift+Enter too, which would put a line separator into the line.
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && !(key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) && !isReadOnly())
            Insert(QStringLiteral("\n"));
        else
            QPlainTextEdit::keyPressEvent(key);
    }
    void insertFromMimeData(const QMimeData* source) override
    {
        if (!isReadOnly() && source->hasText())
            Insert(source->text());
    }

private:
    void Insert(const QString& text)
    {
        QTextCursor cursor = textCursor();
        InsertLines(cursor, text);
        setTextCursor(cursor);
        ensureCursorVisible();
    }
};

void Activated(frmEditor* editor)
{
    if (Current() && Current() != editor)
        Current()->Form_Deactivate();
    Current() = editor;
    if (editor)
        editor->Form_Activate();
}
}  // namespace

frmEditor::frmEditor(QWidget* parent) : QWidget(parent), Text(new SourceTextEdit(this))
{
    setObjectName(QStringLiteral("frmEditor"));
    Text->setObjectName(QStringLiteral("Text"));
    Text->setLineWrapMode(QPlainTextEdit::NoWrap);
    Text->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    Text->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    Text->setContextMenuPolicy(Qt::CustomContextMenu);
    Text->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Text);
    new AsmColourer(Text);

    connect(Text->document(), &QTextDocument::contentsChange, this, [this] { plainTextStale_ = true; });
    connect(Text, &QPlainTextEdit::textChanged, this, &frmEditor::Text_Change);
    connect(Text, &QPlainTextEdit::cursorPositionChanged, this, &frmEditor::Text_SelChange);
    connect(Text, &QPlainTextEdit::selectionChanged, this, &frmEditor::Text_SelChange);
    connect(Text, &QPlainTextEdit::undoAvailable, this, &frmEditor::UndoStateChanged);
    connect(Text, &QPlainTextEdit::redoAvailable, this, &frmEditor::UndoStateChanged);
    connect(Text, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        if (MainForm)
            PopupMenu(MainForm->MenuOf(QStringLiteral("mnuEdit")), Text->mapToGlobal(at));
    });
}

frmEditor::~frmEditor()
{
    if (unloaded_)
        return;
    if (Current() == this) {
        EditorActive = false;
        AsmFile.clear();
    }
    --EditorCount;
}

bool frmEditor::IsActive() const
{
    return EditorActive && Current() == this;
}

QString frmEditor::PlainText() const
{
    // The raw text keeps every character (toPlainText turns a no-break space
    // into a blank); only the paragraph marks become line feeds. Kept until
    // the next change, so that repeated searches don't copy the document.
    if (plainTextStale_) {
        plainText_ = Text->document()->toRawText();
        plainText_.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
        plainTextStale_ = false;
    }
    return plainText_;
}

QString frmEditor::FileText() const
{
    return TextWithLineEnds(*Text->document(), Encoding.lineEnd);
}

void frmEditor::LoadText(const QString& text)
{
    loading_ = true;
    Text->setPlainText(text);
    KeepLineEnds(*Text->document(), text, Encoding.lineEnd);
    loading_ = false;
    TextChanged = false;
    UndoStateChanged();
    if (IsActive())
        MainForm->SetSaveCommands(false);
}

QString frmEditor::SelText() const
{
    QString text = Text->textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text;
}

int frmEditor::SelStart() const
{
    return Text->textCursor().selectionStart();
}

int frmEditor::SelLength() const
{
    const QTextCursor cursor = Text->textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
}

void frmEditor::SetSelection(int start, int length)
{
    QTextCursor cursor = Text->textCursor();
    cursor.setPosition(start);
    cursor.setPosition(start + length, QTextCursor::KeepAnchor);
    Text->setTextCursor(cursor);
}

void frmEditor::SetSelText(const QString& text)
{
    QTextCursor cursor = Text->textCursor();
    InsertLines(cursor, text);
    Text->setTextCursor(cursor);
}

void frmEditor::CaretToLine(int line)
{
    QTextDocument* document = Text->document();
    Text->setTextCursor(QTextCursor(document->findBlockByNumber(qBound(0, line, document->blockCount() - 1))));
    Text->centerCursor();
    Text->setFocus();
}

void frmEditor::Form_Load()
{
    ++EditorCount;
    setWindowTitle(EditorTitle);
    ApplyScreenFont();
    Text->setTabStopDistance(TabColumns * Text->fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    TextChanged = Undo = Redo = false;
    Activated(this);
}

void frmEditor::ApplyScreenFont()
{
    Text->setFont(FixedPitchFont(ScreenFont.Name, ScreenFont.Size, ScreenFont.Bold, ScreenFont.Italic));
}

void frmEditor::Form_Activate()
{
    EditorActive = true;
    AsmFile = EditorName.isEmpty() ? QString() : EditorTitle;
    MainForm->EditorActivated({TextChanged, SelLength() > 0, ClipboardHasText(), Undo, Redo, FindHistory()});
    Cursor();
    for (int panel : {LinePanel, ColumnPanel, InsertPanel})
        MainForm->Panel(panel)->setVisible(true);
    AskAboutOutsideChange(*this, false);
}

void frmEditor::Form_Deactivate()
{
    EditorActive = false;
    AsmFile.clear();
    if (!MainForm)
        return;
    MainForm->EditorDeactivated();
    for (int panel : {LinePanel, ColumnPanel, InsertPanel})
        MainForm->Panel(panel)->setVisible(false);
    if (frmReplace* dialog = FindReplaceDialog())
        dialog->hide();
}

void frmEditor::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    if (Current() == this) {
        Form_Deactivate();
        Current() = nullptr;
    }
    --EditorCount;
}

void frmEditor::Cursor()
{
    if (!MainForm)
        return;
    const QTextCursor cursor = Text->textCursor();
    const QTextBlock block = cursor.block();
    const QString before = block.text().left(cursor.positionInBlock());
    MainForm->SetPanelText(LinePanel, QStringLiteral("Line %1").arg(block.blockNumber() + 1));
    MainForm->SetPanelText(ColumnPanel, QStringLiteral("Col. %1").arg(ExpandTabs(before).size() + 1));
    MainForm->SetPanelText(InsertPanel, Text->overwriteMode() ? QStringLiteral("OVR") : QStringLiteral("INS"));
}

QSize frmEditor::sizeHint() const
{
    constexpr int Columns = 80, Lines = 25;
    const QFontMetrics metrics(Text->font());
    // The text's frame and the document's margin on both sides, and both bars,
    // which a long file or line brings.
    const int border = 2 * (Text->frameWidth() + qCeil(Text->document()->documentMargin()));
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, Text);
    return {Columns * metrics.horizontalAdvance(QLatin1Char('0')) + Text->cursorWidth() + border + bar,
            Lines * metrics.lineSpacing() + border + bar};
}

void frmEditor::Text_Change()
{
    if (loading_)
        return;
    TextChanged = true;
    if (IsActive())
        MainForm->SetSaveCommands(true);
}

void frmEditor::UndoStateChanged()
{
    // The control keeps a history of many steps; the flags tell what it holds.
    Undo = Text->document()->isUndoAvailable();
    Redo = Text->document()->isRedoAvailable();
    if (IsActive())
        MainForm->SetUndoButtons(Undo, Redo);
}

void frmEditor::Text_SelChange()
{
    if (!IsActive())
        return;
    MainForm->SetClipboardButtons(SelLength() > 0, ClipboardHasText());
    Cursor();
}

void frmEditor::EditUndo() { Text->undo(); }
void frmEditor::EditRedo() { Text->redo(); }
void frmEditor::EditCut() { Text->cut(); }
void frmEditor::EditCopy() { Text->copy(); }
void frmEditor::EditPaste() { SetSelText(QApplication::clipboard()->text()); }
void frmEditor::EditDelete() { SetSelText(QString()); }
void frmEditor::EditSelectAll() { Text->selectAll(); }

bool frmEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Text && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Insert && key->modifiers() == Qt::NoModifier) {
            Text->setOverwriteMode(!Text->overwriteMode());
            Cursor();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmEditor::closeEvent(QCloseEvent* event)
{
    if (TextChanged) {
        switch (MsgBox(QStringLiteral("Save changes to ") + EditorTitle + QStringLiteral(" ?"),
                       MbYesNoCancel + MbQuestion, QStringLiteral("Orvane - Warning"))) {
        case MbResultCancel:
            event->ignore();
            return;
        case MbResultYes: {
            // An untitled document is saved under its title in the current folder.
            if (EditorName.isEmpty())
                EditorName = EditorTitle;
            bool ok = false;
            MainForm->SaveEditor(*this, ok);
            if (!ok) {
                event->ignore();
                return;
            }
            break;
        }
        default:
            TextChanged = false;
            break;
        }
    }
    Form_Unload();
    event->accept();
}

frmEditor* ActiveEditor()
{
    return EditorActive ? Current().data() : nullptr;
}

QList<frmEditor*> LoadedEditors()
{
    QList<frmEditor*> editors;
    if (!MainForm)
        return editors;
    for (QMdiSubWindow* sub : MainForm->mdiArea()->subWindowList())
        if (auto* editor = qobject_cast<frmEditor*>(sub->widget()); editor && !editor->Unloaded())
            editors << editor;
    return editors;
}

void SetUpEditors(frmMain& main)
{
    new frmReplace(main);
    QObject::connect(main.mdiArea(), &QMdiArea::subWindowActivated, &main, [](QMdiSubWindow* sub) {
        // No window at all: the main window lost the focus (to the Find
        // dialog, say), which is no change of document; a closing editor
        // deactivates itself.
        if (!sub)
            return;
        Activated(qobject_cast<frmEditor*>(sub->widget()));
    });
}
