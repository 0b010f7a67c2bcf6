#include "platform/widgets/PrintDialog.h"
#include "support/ui/FileChooser.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/PdfText.h"
#include "support/WorkFolder.h"

#include <QDialogButtonBox>
#include <QLabel>

class PrintingTest : public QObject {
    Q_OBJECT
private slots:
    void setupChoicesCarryToTheNextPrints()
    {
        if (!PdfTextAvailable())
            QSKIP("pdftotext (poppler-utils) is not installed: scripts/setup.sh installs it");
        MainFormFixture fixture;
        frmMain& form = fixture.Start();
        form.ActiveDocument = [] { return std::optional<frmMain::PrintableDocument>({"BLINK.ASM", "; blink\n\tNOP\n"}); };
        form.EditorActivated({});
        WorkFolder folder;
        const QString pdf = folder.Path(QStringLiteral("blink.pdf"));
        // The dialog notes the form and the copies it opens with, then plays the user.
        QList<QPair<int, int>> shown;
        std::function<bool(PrintChoices&)> user;
        const PrintDialogHandler previous = SetPrintDialogHandler([&](PrintChoices& choices, int dialogForm, bool) {
            shown << qMakePair(dialogForm, choices.copies);
            return user(choices);
        });
        // Print Setup only chooses: two copies into a PDF file. A cancelled Print changes nothing.
        user = [&](PrintChoices& c) { c.pdfFile = pdf; c.copies = 2; return true; };
        form.Menu(QStringLiteral("mnuFilePrintSetup"))->trigger();
        user = [](PrintChoices& c) { c.copies = 7; return false; };
        form.Menu(QStringLiteral("mnuFilePrint"))->trigger();
        QVERIFY(!QFile::exists(pdf));
        // File > Print opens with the setup's choices and prints them: two copies of one page.
        user = [](PrintChoices&) { return true; };
        form.Menu(QStringLiteral("mnuFilePrint"))->trigger();
        SetPrintDialogHandler(previous);
        QCOMPARE(shown, (QList<QPair<int, int>>{{PrintSetupForm, 1}, {PrintForm, 2}, {PrintForm, 2}}));
        const QList<QStringList> pages = PdfPages(pdf);
        QCOMPARE(pages.size(), 2);
        for (const QStringList& page : pages)
            QVERIFY2(page.value(0).startsWith("BLINK.ASM ") && page.value(0).endsWith(" 1/1") && page.contains("; blink"),
                     qPrintable(page.join('\n')));
        // The toolbar's Print asks nothing (the handler is gone) and prints the same way again.
        QFile::remove(pdf);
        form.tbToolbar_ButtonClick(form.Button(6));
        QCOMPARE(PdfPages(pdf).size(), 2);
    }

    void noPrinterDialogOffersAPdfFile()
    {
        if (PrinterInstalled())
            QSKIP("this machine has a printer: the platform's print dialog asks instead");
        WorkFolder folder;
        const QString pdf = folder.Path(QStringLiteral("listing.pdf"));
        FileChooser chooser;
        chooser.answer = pdf;
        QString note;
        ModalPlayer player([&](QDialog& dialog) {
            note = dialog.findChild<QLabel*>(QStringLiteral("lbNoPrinter"))->text();
            dialog.findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->click();
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
        PrintChoices choices;
        const bool confirmed = ShowPrinterDialog(choices, PrintForm, nullptr);
        QVERIFY2(confirmed && note.contains(QStringLiteral("No printer")), qPrintable(note));
        QCOMPARE(choices.pdfFile, QFileInfo(pdf).absoluteFilePath());
    }
};

QTEST_MAIN(PrintingTest)
#include "Printing_test.moc"
