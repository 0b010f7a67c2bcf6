#include <QtTest>

#include "code/LabelList.h"
#include "code/SymbolTable.h"
#include "code/frmLabel.h"
#include "core/AppSettings.h"
#include "platform/SettingsStore.h"
#include "support/MainFormFixture.h"

#include <QMdiSubWindow>
#include <QMenu>
#include <QTreeWidget>

namespace {
// Names and values both out of order, one name twice, one entry without a label.
void LoadTable()
{
    SymbolTable = {{0x1010, 1, {0x39}, "delay", "delay RTS"}, {0x0040, 0, {}, "LIMIT", ""},
                   {0x1000, 1, {0x01}, "", "   NOP"}, {0xE000, 0, {}, "BEGIN", ""}, {0x0040, 0, {}, "LIMIT", ""}};
    SymbolCount = 5;
}

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
private slots:
    void init() { f.Start(); }

    void sortOrders()
    {
        LoadTable();
        frmLabel* labels = frmLabel::Open();
        const QStringList listed{"delay $1010", "LIMIT $0040", "BEGIN $E000", "LIMIT $0040"};
        QCOMPARE(Shown(labels), listed);
        f.form->Menu("mnuPopupSortName")->trigger();
        QCOMPARE(Shown(labels), (QStringList{"BEGIN $E000", "delay $1010", "LIMIT $0040", "LIMIT $0040"}));
        f.form->Menu("mnuPopupSortValue")->trigger();
        QCOMPARE(Shown(labels), (QStringList{"LIMIT $0040", "LIMIT $0040", "delay $1010", "BEGIN $E000"}));
        f.form->Menu("mnuPopupSortNone")->trigger();
        QCOMPARE(Shown(labels), listed);
        SymbolCount = 2;   // only the entries in use count
        QCOMPARE(LabelRows("N").size(), 2);
    }

    void anEmptyWindowShowsTheStoredOrderInItsPopup()
    {
        SymbolTable.clear();
        SymbolCount = 0;
        SaveTextSetting("LabelSort", "V");
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(frmLabel::Open(), labels);   // a second open brings the same window
        QVERIFY(f.form->Menu("mnuViewLabel")->isChecked());
        QCOMPARE(labels->ListView->topLevelItemCount(), 0);
        for (const auto& [mode, entry] : {std::pair{"V", "mnuPopupSortValue"}, {"N", "mnuPopupSortName"},
                                          {"?", "mnuPopupSortNone"}}) {
            labels->LabelSortMode = mode;
            labels->ListView_RightButton(QPoint(10, 10));
            QVERIFY(f.form->MenuOf("mnuPopupSort")->isVisible());
            for (const char* name : {"mnuPopupSortName", "mnuPopupSortValue", "mnuPopupSortNone"})
                QCOMPARE(f.form->Menu(name)->isChecked(), qstrcmp(name, entry) == 0);
            f.form->MenuOf("mnuPopupSort")->close();
        }
    }

    void closingStoresOrderAndPlacementAndClearsTheViewEntry()
    {
        f.form->showNormal();
        f.form->resize(1000, 800);
        QCoreApplication::processEvents();
        frmLabel* labels = frmLabel::Open();
        const WindowPlacement fresh = CurrentPlacement(labels);
        QVERIFY(qAbs(fresh.Left - 7800) < 20 && qAbs(fresh.Width - 2600) < 20);
        QVERIFY(qAbs(fresh.Height - f.form->PlacementDefault("Label").Height) < 20);

        f.form->Menu("mnuPopupSortName")->trigger();
        auto* frame = qobject_cast<QMdiSubWindow*>(labels->parentWidget());
        frame->move(TwipsToPixelsX(1440), 0);
        QPointer<frmLabel> watch = labels;
        frame->close();
        QTRY_VERIFY(watch.isNull());
        QVERIFY(!frmLabel::Instance());
        QVERIFY(!f.form->Menu("mnuViewLabel")->isChecked());
        QCOMPARE(GetSetting("Settings", "LabelSort"), QString("N"));
        QCOMPARE(GetSetting("Windows", "LabelState"), QString("0"));

        LoadTable();
        labels = frmLabel::Open();   // takes both back
        QCOMPARE(labels->LabelSortMode, QString("N"));
        QCOMPARE(Shown(labels).first(), QString("BEGIN $E000"));
        QVERIFY(qAbs(CurrentPlacement(labels).Left - 1440) < 20);
    }

private:
    MainFormFixture f;
};

QTEST_MAIN(frmLabelTest)
#include "frmLabel_test.moc"
