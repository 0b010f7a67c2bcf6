#include <QtTest>

#include "platform/CommonDialog.h"
#include "platform/PrintDialog.h"
#include "support/MainFormFixture.h"
#include "support/ModalPlayer.h"
#include "support/PdfText.h"
#include "support/WorkFolder.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
const QString Source = QStringLiteral("; blink\n\tORG\t$E000\nSTART\tLDAA\t#$55\n\tBRA\tSTART\n");

// Plays the print dialog: notes each form and the copies it opened with, then
// applies the user's change and answers.
struct PrintDialogPlayer {
    struct Call {
        int form;
        int copiesShown;
    };
    QList<Call> calls;
    std::function<bool(PrintChoices&)> user = [](PrintChoices&) { return true; };
    PrintDialogHandler previous;

    PrintDialogPlayer()
    {
        previous = SetPrintDialogHandler([this](PrintChoices& choices, int form, bool) {
            calls << Call{form, choices.copies};
            return user(choices);
        });
    }
    ~PrintDialogPlayer() { SetPrintDialogHandler(previous); }
};
}  // namespace

class PrintingTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void setupChoicesCarryToTheNextPrints();
    void cancelPrintsNothingAndKeepsTheChoices();
    void noDocumentNoDialog();
    void noPrinterDialogOffersAPdfFile();

private:
    // A started main window whose active document is Source, titled BLINK.ASM.
    frmMain& StartWithDocument(MainFormFixture& fixture)
    {
        frmMain& form = fixture.Start();
        form.ActiveDocument = [] {
            return std::optional<frmMain::PrintableDocument>({QStringLiteral("BLINK.ASM"), Source});
        };
        form.EditorActivated({});
        return form;
    }
};

void PrintingTest::init()
{
    PrintSettings = PrintChoices();
}

void PrintingTest::setupChoicesCarryToTheNextPrints()
{
    if (!PdfTextAvailable())
        QSKIP("pdftotext (poppler-utils) is not installed: scripts/setup.sh installs it");
    MainFormFixture fixture;
    frmMain& form = StartWithDocument(fixture);
    WorkFolder folder;
    const QString pdf = folder.Path(QStringLiteral("blink.pdf"));
    PrintDialogPlayer player;

    // Print Setup only chooses: two copies into a PDF file, and nothing printed yet.
    player.user = [&](PrintChoices& choices) {
        choices.pdfFile = pdf;
        choices.copies = 2;
        return true;
    };
    form.Menu(QStringLiteral("mnuFilePrintSetup"))->trigger();
    QVERIFY(!QFile::exists(pdf));

    // File > Print opens with those choices and prints them.
    player.user = [](PrintChoices&) { return true; };
    form.Menu(QStringLiteral("mnuFilePrint"))->trigger();
    QCOMPARE(player.calls.size(), 2);
    QCOMPARE(player.calls[0].form, int(PrintSetupForm));
    QCOMPARE(player.calls[1].form, int(PrintForm));
    QCOMPARE(player.calls[1].copiesShown, 2);
    QList<QStringList> pages = PdfPages(pdf);
    QCOMPARE(pages.size(), 2);
    for (const QStringList& page : pages) {
        QVERIFY2(page.value(0).startsWith("BLINK.ASM") && page.value(0).endsWith(" 1/1"), qPrintable(page.value(0)));
        QVERIFY2(page.contains(QStringLiteral("; blink")), qPrintable(page.join('\n')));
    }

    // The toolbar's Print asks nothing and prints the same way again.
    QFile::remove(pdf);
    form.tbToolbar_ButtonClick(form.Button(6));
    QCOMPARE(player.calls.size(), 2);
    QCOMPARE(PdfPages(pdf).size(), 2);
}

void PrintingTest::cancelPrintsNothingAndKeepsTheChoices()
{
    MainFormFixture fixture;
    frmMain& form = StartWithDocument(fixture);
    WorkFolder folder;
    const QString pdf = folder.Path(QStringLiteral("blink.pdf"));
    PrintSettings.copies = 3;
    PrintDialogPlayer player;
    player.user = [&](PrintChoices& choices) {
        choices.pdfFile = pdf;
        choices.copies = 7;
        return false;
    };
    form.Menu(QStringLiteral("mnuFilePrint"))->trigger();
    form.Menu(QStringLiteral("mnuFilePrintSetup"))->trigger();
    QCOMPARE(player.calls.size(), 2);
    QVERIFY(!QFile::exists(pdf));
    QCOMPARE(PrintSettings.copies, 3);
    QVERIFY(PrintSettings.pdfFile.isEmpty());
}

void PrintingTest::noDocumentNoDialog()
{
    MainFormFixture fixture;
    frmMain& form = fixture.Start();
    PrintDialogPlayer player;
    // Without a provider, and with one that has no active document.
    form.mnuFilePrint_Click();
    form.ActiveDocument = [] { return std::optional<frmMain::PrintableDocument>(); };
    form.mnuFilePrint_Click();
    form.PrintDocument();
    QVERIFY(player.calls.isEmpty());
    QVERIFY(fixture.boxes.boxes.isEmpty());
}

void PrintingTest::noPrinterDialogOffersAPdfFile()
{
    if (PrinterInstalled())
        QSKIP("this machine has a printer: the platform's print dialog asks instead");
    WorkFolder folder;
    const QString pdf = folder.Path(QStringLiteral("listing.pdf"));
    const CommonDialog::Handler previousFile = CommonDialog::SetHandler([&](CommonDialog& d, CommonDialog::Kind kind) {
        if (kind != CommonDialog::Kind::Save)
            return false;
        d.FileName = pdf;
        return true;
    });
    QString note;
    bool okBeforeFile = true;
    ModalPlayer player([&](QDialog& dialog) {
        note = dialog.findChild<QLabel*>(QStringLiteral("lbNoPrinter"))->text();
        QPushButton* ok = nullptr;
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            if (button->text().contains(QStringLiteral("OK")))
                ok = button;
        okBeforeFile = ok->isEnabled();
        dialog.findChild<QPushButton*>(QStringLiteral("cmdBrowse"))->click();
        dialog.findChild<QSpinBox*>(QStringLiteral("txtCopies"))->setValue(3);
        ok->click();
    });
    PrintChoices choices;
    const bool confirmed = ShowPrinterDialog(choices, PrintForm, nullptr);
    CommonDialog::SetHandler(previousFile);
    QVERIFY(confirmed);
    QVERIFY2(note.contains(QStringLiteral("No printer")) && note.contains(QStringLiteral("PDF")), qPrintable(note));
    QVERIFY(!okBeforeFile);   // no file named yet
    QCOMPARE(choices.pdfFile, QFileInfo(pdf).absoluteFilePath());
    QCOMPARE(choices.copies, 3);
}

QTEST_MAIN(PrintingTest)
#include "Printing_test.moc"
