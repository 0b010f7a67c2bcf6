#include <QtTest>

#include "code/LabelList.h"
#include "code/SymbolTable.h"
#include "code/frmLabel.h"
#include "platform/SettingsStore.h"
#include "support/MainFormFixture.h"

#include <QMenu>
#include <QTreeWidget>

namespace {
QStringList Shown(const frmLabel* form)
{
    QStringList shown;
    for (int i = 0; i < form->ListView->topLevelItemCount(); ++i)
        shown << form->ListView->topLevelItem(i)->text(0) + ' ' + form->ListView->topLevelItem(i)->text(1);
    return shown;
}

const QStringList Listed{"delay $1010", "LIMIT $0040", "BEGIN $E000", "LIMIT $0040"};
}  // namespace

class frmLabelTest : public QObject {
    Q_OBJECT
    MainFormFixture f;

private slots:
    void init()
    {
        f.Start();
        // Names and values both out of order, one name twice, one entry without a label.
        SymbolTable = {{0x1010, 1, {0x39}, "delay", "delay RTS"}, {0x0040, 0, {}, "LIMIT", ""},
                       {0x1000, 1, {0x01}, "", "   NOP"}, {0xE000, 0, {}, "BEGIN", ""}, {0x0040, 0, {}, "LIMIT", ""}};
        SymbolCount = 5;
    }

    void sortOrdersAndTheirChecks()
    {
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(Shown(labels), Listed);
        const std::pair<const char*, QStringList> orders[] = {
            {"mnuPopupSortName", {"BEGIN $E000", "delay $1010", "LIMIT $0040", "LIMIT $0040"}},
            {"mnuPopupSortValue", {"LIMIT $0040", "LIMIT $0040", "delay $1010", "BEGIN $E000"}},
            {"mnuPopupSortNone", Listed}};
        for (const auto& [entry, shown] : orders) {
            f.form->Menu(entry)->trigger();
            QCOMPARE(Shown(labels), shown);
            labels->ListView_RightButton(QPoint(10, 10));   // the popup checks the order in use
            for (const auto& [name, rows] : orders)
                QCOMPARE(f.form->Menu(name)->isChecked(), name == entry);
            f.form->MenuOf("mnuPopupSort")->close();
        }
        SymbolCount = 2;   // only the entries in use count
        QCOMPARE(LabelRows("N").size(), 2);
        f.form->Menu("mnuPopupSortName")->trigger();
        QPointer<frmLabel> watch = labels;
        labels->parentWidget()->close();
        QTRY_VERIFY(watch.isNull());
        QCOMPARE(GetSetting("Settings", "LabelSort"), QString("N"));
    }
};

QTEST_MAIN(frmLabelTest)
#include "frmLabel_test.moc"
