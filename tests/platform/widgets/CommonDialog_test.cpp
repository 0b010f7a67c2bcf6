#include "platform/widgets/CommonDialog.h"

#include <QDir>
#include <QTemporaryDir>

class CommonDialogTest : public QObject {
    Q_OBJECT
private slots:
    void filtersBecomeQtFilters()
    {
        const char* const rows[][2] = {
            {"Assembler Files (*.asm)|*.asm|All Files (*.*)|*.*", "Assembler Files (*.asm);;All Files (*.*)"},
            {"Listings|*.lst;*.txt", "Listings (*.lst *.txt)"}, {"Dangling|", "Dangling ()"}};
        for (const auto& [filter, qt] : rows)
            QCOMPARE(QtFileFilter(filter), QString(qt));
    }

    void chosenFileMovesTheCurrentFolder()
    {
        QTemporaryDir folder;
        const QString saved = QDir::currentPath();
        const CommonDialog::Handler previous = CommonDialog::SetHandler([&](CommonDialog& d, CommonDialog::Kind kind) {
            if (kind != CommonDialog::Kind::Open)
                return false;
            d.FileName = folder.filePath("prog.asm");
            d.FilterIndex = 2;
            return true;
        });
        CommonDialog dialog;
        dialog.Filter = "Asm|*.asm|All|*.*";
        QCOMPARE((tuple{dialog.ShowOpen(), dialog.FileTitle, dialog.FilterIndex}), tuple(true, "prog.asm", 2));
        QCOMPARE(QDir::current().canonicalPath(), QDir(folder.path()).canonicalPath());

        // A cancelled dialog changes neither the fields nor the folder.
        QDir::setCurrent(saved);
        dialog.FileName = "keep";
        QCOMPARE((tuple{dialog.ShowSave(), dialog.FileName, QDir::currentPath()}), tuple(false, "keep", saved));
        CommonDialog::SetHandler(previous);
    }
};

QTEST_MAIN(CommonDialogTest)
#include "CommonDialog_test.moc"
