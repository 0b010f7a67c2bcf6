#include "platform/widgets/PrintDialog.h"

#include "platform/widgets/CommonDialog.h"
#include "platform/widgets/ModalDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

PrintChoices PrintSettings;

namespace {
PrintDialogHandler& TheHandler()
{
    static PrintDialogHandler handler;
    return handler;
}

QString DialogTitle(int form)
{
    return form == PrintSetupForm ? QStringLiteral("Print Setup") : QStringLiteral("Print");
}

void ReadPrintChoices(const QPrinter& printer, PrintChoices& choices)
{
    choices.printerName = printer.printerName();
    choices.pdfFile.clear();
    choices.copies = printer.copyCount();
    choices.orientation = printer.pageLayout().orientation();
    choices.pageSize = printer.pageLayout().pageSize();
    choices.paperSource = printer.paperSource();
    choices.resolution = printer.resolution();
}

// The platform's dialog, without the choices that make no sense for a whole
// source listing: selection, page range, print to file.
bool ShowSystemDialog(PrintChoices& choices, int form, QWidget* owner)
{
    QPrinter printer(QPrinter::HighResolution);
    ApplyPrintChoices(choices, printer);
    QPrintDialog dialog(&printer, owner);
    dialog.setWindowTitle(DialogTitle(form));
    dialog.setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintCollateCopies);
    if (RunModal(dialog) != QDialog::Accepted)
        return false;
    ReadPrintChoices(printer, choices);
    return true;
}

// With no printer the document goes to a PDF file; the dialog says so and
// asks for the file and the copies.
bool ShowPdfDialog(PrintChoices& choices, int form, QWidget* owner)
{
    QDialog dialog(owner);
    dialog.setWindowTitle(DialogTitle(form));
    auto* note = new QLabel(QStringLiteral("No printer is installed. The document is printed to a PDF file instead."));
    note->setObjectName(QStringLiteral("lbNoPrinter"));
    note->setWordWrap(true);
    auto* file = new QLineEdit(choices.pdfFile);
    file->setObjectName(QStringLiteral("txtFile"));
    auto* browse = new QPushButton(QStringLiteral("&Browse ..."));
    browse->setObjectName(QStringLiteral("cmdBrowse"));
    auto* copies = new QSpinBox;
    copies->setObjectName(QStringLiteral("txtCopies"));
    copies->setRange(1, 999);
    copies->setValue(choices.copies);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(file, 1);
    fileRow->addWidget(browse);
    auto* fields = new QFormLayout;
    auto* fileLabel = new QLabel(QStringLiteral("PDF &file:"));
    fileLabel->setBuddy(file);   // a row of two widgets gives its label no buddy of its own
    fields->addRow(fileLabel, fileRow);
    fields->addRow(QStringLiteral("&Copies:"), copies);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(note);
    layout->addLayout(fields);
    layout->addWidget(buttons);

    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    auto fileNamed = [file, ok] { ok->setEnabled(!file->text().trimmed().isEmpty()); };
    fileNamed();
    QObject::connect(file, &QLineEdit::textChanged, &dialog, fileNamed);
    QObject::connect(browse, &QPushButton::clicked, &dialog, [&dialog, file] {
        CommonDialog save;
        save.Owner = &dialog;
        save.DialogTitle = QStringLiteral("Print to PDF File");
        save.Filter = QStringLiteral("PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*");
        save.FileName = file->text();
        if (save.ShowSave())
            file->setText(save.FileName);
    });
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    if (RunModal(dialog) != QDialog::Accepted || file->text().trimmed().isEmpty())
        return false;
    choices.printerName.clear();
    choices.pdfFile = file->text().trimmed();
    choices.copies = copies->value();
    return true;
}
}  // namespace

bool PrinterInstalled()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

PrintDialogHandler SetPrintDialogHandler(PrintDialogHandler handler)
{
    return std::exchange(TheHandler(), std::move(handler));
}

bool ShowPrinterDialog(PrintChoices& choices, int form, QWidget* owner)
{
    const bool printer = PrinterInstalled();
    if (TheHandler()) {
        PrintChoices answer = choices;
        if (!TheHandler()(answer, form, printer))
            return false;
        choices = answer;
        return true;
    }
    return printer ? ShowSystemDialog(choices, form, owner) : ShowPdfDialog(choices, form, owner);
}

void ApplyPrintChoices(const PrintChoices& choices, QPrinter& printer)
{
    if (!choices.pdfFile.isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(choices.pdfFile);
    } else if (!choices.printerName.isEmpty()) {
        printer.setPrinterName(choices.printerName);
    }
    printer.setCopyCount(choices.copies);
    printer.setPageOrientation(choices.orientation);
    if (choices.pageSize.isValid())
        printer.setPageSize(choices.pageSize);
    printer.setPaperSource(choices.paperSource);
    if (choices.resolution > 0)
        printer.setResolution(choices.resolution);
}
