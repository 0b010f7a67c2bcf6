// The print dialog and the printer choices it keeps for the run. With a
// printer installed the platform's print dialog asks; with none at all a small
// dialog offers printing to a PDF file instead and says why. A test installs a
// handler that plays the user.
#pragma once

#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QString>
#include <functional>

class QWidget;

struct PrintChoices {
    QString printerName;    // empty: the system's default printer
    QString pdfFile;        // not empty: the output goes to this PDF file
    int copies = 1;
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QPageSize pageSize;     // invalid: the printer's own
    QPrinter::PaperSource paperSource = QPrinter::Auto;
    int resolution = 0;     // dots per inch; 0: the printer's own
};

// The choices of the last confirmed dialog, held for the whole run and not
// persisted; the dialog opens with them.
extern PrintChoices PrintSettings;

// The two forms of the dialog: print, or only choose (Print Setup).
enum PrintDialogForm : int { PrintForm = 0, PrintSetupForm = 64 };

// True if the system has at least one printer.
bool PrinterInstalled();

// Shows the dialog in its form, starting from choices; on OK the choices
// are the user's and the result is true. Cancel leaves them as they were.
bool ShowPrinterDialog(PrintChoices& choices, int form, QWidget* owner);

// The handler answers instead of the user: it changes the choices and
// returns false for Cancel. printerInstalled says which dialog it stands for.
using PrintDialogHandler = std::function<bool(PrintChoices& choices, int form, bool printerInstalled)>;
// An empty handler restores the real dialogs; returns the previous one.
PrintDialogHandler SetPrintDialogHandler(PrintDialogHandler handler);

// The printer the choices name, with their settings. A setting the printer
// rejects simply stays the printer's own.
void ApplyPrintChoices(const PrintChoices& choices, QPrinter& printer);
