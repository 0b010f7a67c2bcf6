// Symbols on the windows: the Load Symbols command asks for a listing and
// tells the open windows, and the label window sorts and keeps its order.

#include "engine/code/LabelList.h"
#include "engine/code/SymbolTable.h"
#include "engine/source/SourceRecords.h"
#include "platform/SettingsStore.h"
#include "support/ListingText.h"
#include "support/ui/FileChooser.h"
#include "support/ui/MainFormFixture.h"
#include "ui/code/frmLabel.h"

#include <QMenu>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace {
const QStringList ThreeSymbols{ListingLine(1, 0x1000, {"86", "01"}, "START LDAA #1"),
                               ListingLine(2, 0x1002, {"20", "FE"}, "LOOP BRA LOOP"),
                               ListingLine(3, 0x0040, {}, "LIMIT EQU $40")};
QStringList Shown(const frmLabel* form)
{
    QStringList shown;
    for (int i = 0; i < form->ListView->topLevelItemCount(); ++i)
        shown << form->ListView->topLevelItem(i)->text(0) + ' ' + form->ListView->topLevelItem(i)->text(1);
    return shown;
}
}  // namespace

class frmLabelTest : public QObject {
    Q_OBJECT
    QTemporaryDir dir;
    std::unique_ptr<MainFormFixture> f;

private slots:
    void init()
    {
        SymbolTable.clear();
        SymbolCount = 0;
        LstFile = "PROG.LST";
        f = std::make_unique<MainFormFixture>();
        f->Start();
    }
    void cleanup() { f.reset(); }

    void menuCommandAsksForAListingAndLoadsIt()
    {
        frmLabel* labels = frmLabel::Open();
        int told = 0;
        QObject::connect(f->form.get(), &frmMain::SymbolsLoaded, [&] { ++told; });
        FileChooser chooser;
        chooser.answer = WriteListing(dir.path(), "blink.lst", ThreeSymbols);
        f->form->Menu("mnuFileLoadSymbols")->trigger();
        QCOMPARE(chooser.kinds, QList{CommonDialog::Kind::Open});
        QCOMPARE(chooser.asked[0].DialogTitle + " " + chooser.asked[0].FileName, QString("Load Symbols PROG.LST"));   // the last listing is offered
        QVERIFY(LstFile == "blink.lst" && f->form->PanelText(3) == "Symbols: blink.lst");
        // The label window is redrawn, the others are told.
        QVERIFY(told == 1 && labels->ListView->topLevelItemCount() == 3);

        chooser.answer.clear();   // the user cancels: nothing changes
        f->form->mnuFileLoadSymbols_Click();
        QVERIFY(SymbolCount == 3 && LstFile == "blink.lst" && f->boxes.boxes.isEmpty());

        // A file that cannot be opened keeps the old table and panel.
        f->form->Dialog.FileName = dir.filePath("missing.lst");
        f->form->LoadSymbols();
        QVERIFY(SymbolCount == 3 && f->form->PanelText(3) == "Symbols: blink.lst");
        QCOMPARE(f->boxes.boxes.value(0).caption, QString("Orvane - Read Error"));
    }

    void theLabelWindowSortsAndStoresItsOrder()
    {
        // Names and values both out of order, one name twice, one entry without a label.
        SymbolTable = {{0x1010, 1, {0x39}, "delay", "delay RTS"}, {0x0040, 0, {}, "LIMIT", ""},
                       {0x1000, 1, {0x01}, "", "   NOP"}, {0xE000, 0, {}, "BEGIN", ""}, {0x0040, 0, {}, "LIMIT", ""}};
        SymbolCount = 5;
        const QStringList Listed{"delay $1010", "LIMIT $0040", "BEGIN $E000", "LIMIT $0040"};
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(Shown(labels), Listed);
        const std::pair<const char*, QStringList> orders[] = {
            {"mnuPopupSortName", {"BEGIN $E000", "delay $1010", "LIMIT $0040", "LIMIT $0040"}},
            {"mnuPopupSortValue", {"LIMIT $0040", "LIMIT $0040", "delay $1010", "BEGIN $E000"}},
            {"mnuPopupSortNone", Listed}};
        for (const auto& [entry, shown] : orders) {
            f->form->Menu(entry)->trigger();
            QCOMPARE(Shown(labels), shown);
            labels->ListView_RightButton(QPoint(10, 10));   // the popup checks the order in use
            for (const auto& [name, rows] : orders)
                QCOMPARE(f->form->Menu(name)->isChecked(), name == entry);
            f->form->MenuOf("mnuPopupSort")->close();
        }
        SymbolCount = 2;   // only the entries in use count
        QCOMPARE(LabelRows("N").size(), 2);
        f->form->Menu("mnuPopupSortName")->trigger();
        QPointer<frmLabel> watch = labels;
        labels->parentWidget()->close();
        QTRY_VERIFY(watch.isNull());
        QCOMPARE(GetSetting("Settings", "LabelSort"), QString("N"));
    }
};

QTEST_MAIN(frmLabelTest)
#include "frmLabel_test.moc"
