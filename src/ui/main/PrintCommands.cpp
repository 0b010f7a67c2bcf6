// The print commands of the main window: the dialog keeps its choices in
// PrintSettings for the run, and SourcePrinter lays out the pages.
#include "engine/state/AppSettings.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/MsgBox.h"
#include "platform/widgets/PrintDialog.h"
#include "ui/source/SourcePrinter.h"
#include "ui/main/frmMain.h"

void frmMain::mnuFilePrint_Click()
{
    if (ActiveDocument && ActiveDocument() && ShowPrinterDialog(PrintSettings, PrintForm, this))
        PrintDocument();
}

void frmMain::mnuFilePrintSetup_Click()
{
    ShowPrinterDialog(PrintSettings, PrintSetupForm, this);
}

void frmMain::PrintDocument()
{
    const std::optional<PrintableDocument> document = ActiveDocument ? ActiveDocument() : std::nullopt;
    if (!document)
        return;
    // Without a printer the output is a PDF file, and only the dialog can name it.
    if (PrintSettings.pdfFile.isEmpty() && !PrinterInstalled() &&
        !ShowPrinterDialog(PrintSettings, PrintForm, this))
        return;
    QPrinter printer(QPrinter::HighResolution);
    ApplyPrintChoices(PrintSettings, printer);
    // A device that makes no copies of its own gets the pages that many times.
    const int copies = printer.supportsMultipleCopies() ? 1 : PrintSettings.copies;
    const QFont font = FixedPitchFont(PrintFont.Name, PrintFont.Size, PrintFont.Bold, PrintFont.Italic);
    if (!PrintSource(document->title, document->text, font, printer, copies)) {
        const QString where = PrintSettings.pdfFile.isEmpty() ? printer.printerName() : PrintSettings.pdfFile;
        MsgBox(QStringLiteral("Cannot print to ") + where + QStringLiteral(" !"), MbOkOnly + MbExclamation,
               QStringLiteral("Orvane - Print Error"));
    }
}
