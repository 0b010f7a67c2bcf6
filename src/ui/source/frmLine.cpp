#include "ui/source/frmLine.h"

#include "platform/widgets/MsgBox.h"
#include "engine/source/TextSearch.h"
#include "ui/source/frmEditor.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

frmLine::frmLine(QWidget* parent)
    : QDialog(parent),
      lbLine(new QLabel(QStringLiteral("Line Number:"), this)),
      txtLine(new QLineEdit(this)),
      cmdOK(new QPushButton(QStringLiteral("OK"), this)),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName(QStringLiteral("frmLine"));
    setWindowTitle(QStringLiteral("Go To Line"));
    txtLine->setObjectName(QStringLiteral("txtLine"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    txtLine->setMaxLength(9);
    cmdOK->setDefault(true);
    auto* entry = new QHBoxLayout;
    entry->addWidget(lbLine);
    entry->addWidget(txtLine);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* all = new QVBoxLayout(this);
    all->addLayout(entry);
    all->addLayout(buttons);
    connect(cmdOK, &QPushButton::clicked, this, &frmLine::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmLine::cmdCancel_Click);
}

void frmLine::cmdOK_Click()
{
    if (txtLine->text().isEmpty()) {
        txtLine->setFocus();
        return;
    }
    frmEditor* editor = ActiveEditor();
    const int lastLine = editor ? editor->Text->document()->blockCount() - 1 : 0;
    const qsizetype line = LineOfEntry(txtLine->text(), lastLine);
    if (line < 0) {
        txtLine->clear();
        MsgBox(QStringLiteral("Please Enter an Integer (1 .. 999999999) !"), MbInformation,
               QStringLiteral("Orvane - Go To Line"));
        txtLine->setFocus();
        return;
    }
    accept();
    if (editor)
        editor->CaretToLine(static_cast<int>(line));
}

void frmLine::cmdCancel_Click()
{
    reject();
    if (frmEditor* editor = ActiveEditor())
        editor->Text->setFocus();
}
