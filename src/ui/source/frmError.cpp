#include "ui/source/frmError.h"

#include "platform/DoEvents.h"
#include "platform/widgets/MsgBox.h"
#include "platform/widgets/WindowPlacement.h"
#include "engine/source/ErrorFile.h"
#include "engine/source/SourceRecords.h"

#include <QCloseEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmError::frmError(QWidget* owner) : QDialog(owner, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint)
{
    setObjectName(QStringLiteral("frmError"));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    setFixedSize(TwipsToPixelsX(4710), TwipsToPixelsY(3225));

    List = new QListWidget(this);
    List->setFont(QFont(QStringLiteral("Arial")));
    cmdShow = new QPushButton(QStringLiteral("Show Error"), this);
    cmdShow->setDefault(true);
    cmdClose = new QPushButton(QStringLiteral("Close"), this);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdShow);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(List);
    layout->addLayout(buttons);

    connect(cmdShow, &QPushButton::clicked, this, &frmError::cmdShow_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmError::cmdClose_Click);
    connect(List, &QListWidget::itemDoubleClicked, this, &frmError::cmdShow_Click);
    // Escape, the cancel button's key, closes as Close does.
    connect(this, &QDialog::rejected, this, &frmError::cmdClose_Click);
}

void frmError::ErrorShow()
{
    setWindowTitle(ErrFile);
    List->clear();
    ErrorCount = 0;
    ErrorLines.clear();

    QFile file(ErrFile);
    QList<ErrorRow> rows;
    bool read = file.open(QIODevice::ReadOnly);
    if (read) {
        // Each row goes in as it is read, and the windows get their turn.
        read = ReadErrorRows(file, rows, DoEvents);
    }
    for (const ErrorRow& row : rows) {
        ErrorLines.push_back(row.line);
        List->addItem(row.text);
        ++ErrorCount;
    }
    const QString failure = file.errorString();
    file.close();
    if (!read)
        MsgBox(failure + QStringLiteral(" !"), MbExclamation, QStringLiteral("Orvane - Read Error"));

    if (ErrorCount > 0)
        List->setCurrentRow(0);
    cmdShow->setEnabled(ErrorCount > 0);
    if (!isVisible())
        show();
    activateWindow();
    raise();
    List->setFocus();
}

void frmError::cmdShow_Click()
{
    const int row = List->currentRow();
    if (row < 0 || row >= int(ErrorLines.size()) || !GoToLine)
        return;
    GoToLine(ErrorLines[std::size_t(row)]);
}

void frmError::cmdClose_Click()
{
    if (parentWidget())
        parentWidget()->activateWindow();
    close();
}

void frmError::closeEvent(QCloseEvent* event)
{
    if (parentWidget())
        parentWidget()->activateWindow();
    event->accept();
}
