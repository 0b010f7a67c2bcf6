#include "ui/source/frmReplace.h"

#include "platform/widgets/MsgBox.h"
#include "ui/source/frmEditor.h"
#include "ui/main/frmMain.h"
#include "ui/source/DocumentLineEnds.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {
constexpr int FindNextButton = 17;

void NotFound()
{
    MsgBox(QStringLiteral("Search Text not found !"), MbExclamation, QStringLiteral("Orvane - Search"));
}

// New texts go to the head of the list unless they are its head already.
bool AddToHistory(QComboBox* list, const QString& text)
{
    if (list->count() > 0 ? list->itemText(0) == text : text.isEmpty())
        return false;
    const QString current = list->currentText();
    list->insertItem(0, text);
    list->setEditText(current);
    return true;
}
}  // namespace

frmReplace* FindReplaceDialog()
{
    return MainForm ? MainForm->findChild<frmReplace*>(QStringLiteral("frmReplace")) : nullptr;
}

frmReplace::frmReplace(frmMain& main)
    : QDialog(&main),
      lbWhat(new QLabel(QStringLiteral("&Find What:"), this)),
      cbWhat(new QComboBox(this)),
      lbWith(new QLabel(QStringLiteral("Replace &With:"), this)),
      cbWith(new QComboBox(this)),
      chkCase(new QCheckBox(QStringLiteral("Match &Case"), this)),
      chkWord(new QCheckBox(QStringLiteral("Match &Whole Word"), this)),
      Frame(new QGroupBox(QStringLiteral("Direction"), this)),
      optUp(new QRadioButton(QStringLiteral("&Up"), Frame)),
      optDown(new QRadioButton(QStringLiteral("&Down"), Frame)),
      cmdFindNext(new QPushButton(QStringLiteral("Find &Next"), this)),
      cmdReplace(new QPushButton(this)),
      cmdReplaceAll(new QPushButton(QStringLiteral("Replace All"), this)),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName(QStringLiteral("frmReplace"));
    setModal(false);
    for (QComboBox* list : {cbWhat, cbWith}) {
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);   // the history grows by AddItem only
        list->setMinimumWidth(240);
    }
    cbWhat->setObjectName(QStringLiteral("cbWhat"));
    cbWith->setObjectName(QStringLiteral("cbWith"));
    lbWhat->setBuddy(cbWhat);
    lbWith->setBuddy(cbWith);
    optDown->setChecked(true);
    cmdFindNext->setDefault(true);

    auto* direction = new QHBoxLayout(Frame);
    direction->addWidget(optUp);
    direction->addWidget(optDown);
    auto* fields = new QGridLayout;
    fields->addWidget(lbWhat, 0, 0);
    fields->addWidget(cbWhat, 0, 1);
    fields->addWidget(lbWith, 1, 0);
    fields->addWidget(cbWith, 1, 1);
    auto* options = new QVBoxLayout;
    options->addWidget(chkCase);
    options->addWidget(chkWord);
    auto* lower = new QHBoxLayout;
    lower->addLayout(options);
    lower->addWidget(Frame);
    auto* left = new QVBoxLayout;
    left->addLayout(fields);
    left->addLayout(lower);
    left->addStretch();
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {cmdFindNext, cmdReplace, cmdReplaceAll, cmdCancel})
        buttons->addWidget(button);
    buttons->addStretch();
    auto* all = new QHBoxLayout(this);
    all->addLayout(left);
    all->addLayout(buttons);

    connect(cbWhat, &QComboBox::editTextChanged, this, &frmReplace::UpdateCmd);
    connect(cmdFindNext, &QPushButton::clicked, this, &frmReplace::cmdFindNext_Click);
    connect(cmdReplace, &QPushButton::clicked, this, &frmReplace::cmdReplace_Click);
    connect(cmdReplaceAll, &QPushButton::clicked, this, &frmReplace::cmdReplaceAll_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmReplace::cmdCancel_Click);
    SetLayout(false);
}

void frmReplace::SetLayout(bool replace)
{
    setWindowTitle(replace ? QStringLiteral("Replace") : QStringLiteral("Find"));
    for (QWidget* part : {static_cast<QWidget*>(cmdReplaceAll), static_cast<QWidget*>(cbWith),
                          static_cast<QWidget*>(lbWith)})
        part->setVisible(replace);
    cmdReplace->setText(replace ? QStringLiteral("&Replace") : QStringLiteral("&Replace ..."));
    cmdReplace->setProperty("HelpContextID", replace ? 307 : 308);
    adjustSize();
}

void frmReplace::ShowFind()
{
    SetLayout(false);
    CommonStart();
}

void frmReplace::ShowReplace()
{
    SetLayout(true);
    CommonStart();
}

void frmReplace::CommonStart()
{
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return;
    // A selection in the editor becomes the search text.
    const QString selected = editor->SelText();
    if (!selected.isEmpty() && (cbWhat->count() == 0 || cbWhat->itemText(0) != selected)) {
        cbWhat->insertItem(0, selected);
        MainForm->SetFindNextButton(true);
    }
    cbWhat->setEditText(cbWhat->count() > 0 ? cbWhat->itemText(0) : QString());
    UpdateCmd();
    cbWith->setEditText(cbWith->count() > 0 ? cbWith->itemText(0) : QString());
    show();
    raise();
    activateWindow();
    cbWhat->setFocus();
    cbWhat->lineEdit()->selectAll();
}

void frmReplace::UpdateCmd()
{
    const bool searchable = !cbWhat->currentText().isEmpty();
    for (QPushButton* button : {cmdFindNext, cmdReplace, cmdReplaceAll})
        button->setEnabled(searchable);
}

void frmReplace::AddItem()
{
    if (AddToHistory(cbWhat, cbWhat->currentText()))
        MainForm->SetFindNextButton(true);
    if (!cbWith->currentText().isEmpty())
        AddToHistory(cbWith, cbWith->currentText());
}

SearchOptions frmReplace::Options(bool down, bool matchCase) const
{
    return {down, matchCase, chkWord->isChecked()};
}

bool frmReplace::FindStr(bool down, bool matchCase, bool noMsg)
{
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return false;
    const QString what = cbWhat->currentText();
    const qsizetype at =
        FindMatch(editor->PlainText(), what, editor->SelStart(), editor->SelLength(), Options(down, matchCase));
    if (at < 0) {
        if (!noMsg)
            NotFound();
        return false;
    }
    editor->SetSelection(static_cast<int>(at), static_cast<int>(what.size()));
    return true;
}

void frmReplace::cmdFindNext_Click()
{
    AddItem();
    FindStr(optDown->isChecked(), chkCase->isChecked());
}

void frmReplace::cmdReplace_Click()
{
    AddItem();
    if (windowTitle() == QLatin1String("Find")) {
        ShowReplace();
        return;
    }
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return;
    // What is selected is replaced only when it is the search text exactly.
    if (editor->SelText() == cbWhat->currentText()) {
        const QString with = cbWith->currentText();
        editor->SetSelText(with);
        editor->SetSelection(editor->SelStart() - static_cast<int>(with.size()), static_cast<int>(with.size()));
    } else {
        FindStr(optDown->isChecked(), chkCase->isChecked());
    }
}

void frmReplace::cmdReplaceAll_Click()
{
    AddItem();
    frmEditor* editor = ActiveEditor();
    if (!editor)
        return;
    const QString what = cbWhat->currentText();
    const QString with = cbWith->currentText();
    const QList<qsizetype> matches = MatchesToReplace(editor->PlainText(), what, editor->SelStart(),
                                                      editor->SelLength(),
                                                      Options(optDown->isChecked(), chkCase->isChecked()));
    if (matches.isEmpty()) {
        NotFound();
        return;
    }
    // From the bottom up, so that the positions of the matches above stay
    // valid; one edit block, so that one Undo takes the whole lot back.
    QList<qsizetype> bottomUp = matches;
    std::sort(bottomUp.begin(), bottomUp.end(), std::greater<>());
    QTextCursor cursor(editor->Text->document());
    cursor.beginEditBlock();
    for (qsizetype at : bottomUp) {
        cursor.setPosition(static_cast<int>(at));
        cursor.setPosition(static_cast<int>(at + what.size()), QTextCursor::KeepAnchor);
        InsertLines(cursor, with);
    }
    cursor.endEditBlock();
    // The caret stands behind the last replacement the search made.
    qsizetype last = matches.last();
    for (qsizetype at : matches)
        if (at < matches.last())
            last += with.size() - what.size();
    editor->SetSelection(static_cast<int>(last + with.size()), 0);
    const qsizetype count = matches.size();
    MsgBox(count == 1 ? QStringLiteral("1 item replaced !") : QStringLiteral("%1 items replaced !").arg(count),
           MbInformation, QStringLiteral("Orvane - Replace"));
}

void frmReplace::cmdCancel_Click()
{
    EndReplace();
}

void frmReplace::EndReplace()
{
    hide();
    Form_Deactivate();
}

void frmReplace::Form_Deactivate()
{
    if (frmEditor* editor = ActiveEditor())
        editor->Text->setFocus();
}

void frmReplace::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        Form_Deactivate();
    QDialog::changeEvent(event);
}
