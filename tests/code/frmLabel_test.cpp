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
// Listing order: names and values both out of order, one name twice, one entry without a label.
void LoadTable()
{
    SymbolTable = {{0x1010, 1, {0x39}, "delay", "delay RTS"},
                   {0x0040, 0, {}, "LIMIT", ""},
                   {0x1000, 2, {0x86, 0x01}, "", "   LDAA #1"},
                   {0xE000, 0, {}, "BEGIN", ""},
                   {0x0040, 0, {}, "LIMIT", ""}};
    SymbolCount = static_cast<std::int16_t>(SymbolTable.size());
}

QStringList Names(const QVector<LabelRow>& rows)
{
    QStringList names;
    for (const LabelRow& row : rows)
        names << row.Name;
    return names;
}

QStringList Shown(const frmLabel* form)
{
    QStringList shown;
    for (int i = 0; i < form->ListView->topLevelItemCount(); ++i)
        shown << form->ListView->topLevelItem(i)->text(0) + ' ' + form->ListView->topLevelItem(i)->text(1);
    return shown;
}

QString CheckedSortEntry(const frmMain& form)
{
    for (const char* name : {"mnuPopupSortName", "mnuPopupSortValue", "mnuPopupSortNone"}) {
        if (form.Menu(name)->isChecked())
            return name;
    }
    return {};
}

QMdiSubWindow* FrameOf(frmLabel* form)
{
    return qobject_cast<QMdiSubWindow*>(form->parentWidget());
}
}  // namespace

class frmLabelTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup()
    {
        SymbolTable.clear();
        SymbolCount = 0;
    }

    void rowsInEachSortOrder()
    {
        LoadTable();
        QCOMPARE(Names(LabelRows("")), (QStringList{"delay", "LIMIT", "BEGIN", "LIMIT"}));
        QCOMPARE(Names(LabelRows("X")), (QStringList{"delay", "LIMIT", "BEGIN", "LIMIT"}));
        QCOMPARE(Names(LabelRows("N")), (QStringList{"BEGIN", "delay", "LIMIT", "LIMIT"}));
        const QVector<LabelRow> byValue = LabelRows("V");
        QCOMPARE(Names(byValue), (QStringList{"LIMIT", "LIMIT", "delay", "BEGIN"}));
        QCOMPARE(byValue[3].Value, QString("$E000"));
        QCOMPARE(byValue[0].Value, QString("$0040"));
        SymbolCount = 2;   // only the entries in use count
        QCOMPARE(Names(LabelRows("N")), (QStringList{"delay", "LIMIT"}));
    }

    void opensEmptyWithTheStoredOrderInThePopup()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        SaveTextSetting("LabelSort", "V");
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(frmLabel::Instance(), labels);
        QCOMPARE(frmLabel::Open(), labels);   // a second open brings the same window
        QVERIFY(form.Menu("mnuViewLabel")->isChecked());
        QCOMPARE(labels->windowTitle(), QString("Labels"));
        QCOMPARE(labels->ListView->topLevelItemCount(), 0);
        QCOMPARE(labels->ListView->columnCount(), 2);

        form.Menu("mnuPopupSortName")->setChecked(true);
        labels->ListView_RightButton(QPoint(10, 10));
        QCOMPARE(CheckedSortEntry(form), QString("mnuPopupSortValue"));
        QVERIFY(form.MenuOf("mnuPopupSort")->isVisible());
        form.MenuOf("mnuPopupSort")->close();

        labels->LabelSortMode = "?";
        labels->ListView_RightButton(QPoint(10, 10));
        QCOMPARE(CheckedSortEntry(form), QString("mnuPopupSortNone"));
        form.MenuOf("mnuPopupSort")->close();
    }

    void popupEntriesResortAndUnsortedRestoresListingOrder()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        LoadTable();
        frmLabel* labels = frmLabel::Open();
        QCOMPARE(Shown(labels), (QStringList{"delay $1010", "LIMIT $0040", "BEGIN $E000", "LIMIT $0040"}));
        form.Menu("mnuPopupSortName")->trigger();
        QCOMPARE(labels->LabelSortMode, QString("N"));
        QCOMPARE(Shown(labels).first(), QString("BEGIN $E000"));
        form.Menu("mnuPopupSortValue")->trigger();
        QCOMPARE(Shown(labels).last(), QString("BEGIN $E000"));
        form.Menu("mnuPopupSortNone")->trigger();
        QCOMPARE(labels->LabelSortMode, QString());
        QCOMPARE(Shown(labels).first(), QString("delay $1010"));
    }

    void closingStoresOrderAndPlacementAndClearsTheViewEntry()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.showNormal();
        form.resize(1000, 800);
        QCoreApplication::processEvents();
        frmLabel* labels = frmLabel::Open();
        const WindowPlacement fresh = CurrentPlacement(labels);
        const WindowPlacement expected = form.PlacementDefault("Label");
        QVERIFY(qAbs(fresh.Left - 7800) < 20);
        QVERIFY(qAbs(fresh.Width - 2600) < 20);
        QVERIFY2(qAbs(fresh.Height - expected.Height) < 20,
                 qPrintable(QString("%1 %2").arg(fresh.Height).arg(expected.Height)));

        form.Menu("mnuPopupSortName")->trigger();
        FrameOf(labels)->move(TwipsToPixelsX(1440), TwipsToPixelsY(720));
        QPointer<frmLabel> watch = labels;
        FrameOf(labels)->close();
        QTRY_VERIFY(watch.isNull());
        QVERIFY(!frmLabel::Instance());
        QVERIFY(!form.Menu("mnuViewLabel")->isChecked());
        QCOMPARE(GetSetting("Settings", "LabelSort"), QString("N"));
        QVERIFY(qAbs(GetSetting("Windows", "LabelLeft").toDouble() - 1440) < 20);
        QCOMPARE(GetSetting("Windows", "LabelState"), QString("0"));

        // The next open takes both back; the popup entries act on the new window only.
        LoadTable();
        labels = frmLabel::Open();
        QCOMPARE(labels->LabelSortMode, QString("N"));
        QCOMPARE(Shown(labels).first(), QString("BEGIN $E000"));
        QVERIFY(qAbs(CurrentPlacement(labels).Left - 1440) < 20);
        form.Menu("mnuPopupSortValue")->trigger();
        QCOMPARE(labels->LabelSortMode, QString("V"));
    }
};

QTEST_MAIN(frmLabelTest)
#include "frmLabel_test.moc"
