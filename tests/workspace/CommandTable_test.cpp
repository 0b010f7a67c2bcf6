#include <QtTest>

#include "core/TargetState.h"
#include "support/MainFormFixture.h"
#include "workspace/CommandTable.h"

#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>

using namespace commands;

class CommandTableTest : public QObject {
    Q_OBJECT
private slots:
    void namesAreUniqueAndEveryEntryCanBeFound()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        int count = 0;
        const MenuRow* rows = MenuRows(count);
        QSet<QString> names;
        for (int i = 0; i < count; ++i) {
            if (!rows[i].name)
                continue;
            QVERIFY2(!names.contains(rows[i].name), rows[i].name);
            names.insert(rows[i].name);
            QCOMPARE(form.Menu(rows[i].name)->text(), QString::fromUtf8(rows[i].caption));
        }
        QCOMPARE(form.menuBar()->actions().size(), 7);   // File to Help; popups stay out of the bar
        QCOMPARE(form.MenuOf("mnuViewRegBlock")->actions().size(), 7);
        QCOMPARE(form.MenuOf("mnuPopupSerial")->actions().size(), 4);
    }

    void toolbarPositionsHoldTheirButtons()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QCOMPARE(form.tbToolbar->actions().size(), 37);
        QCOMPARE(form.Button(23)->toolTip(), QString("Run"));
        QCOMPARE(form.Button(26)->toolTip(), QString("Pause"));
        QCOMPARE(form.Button(33)->toolTip(), QString("Toggle Breakpoint"));
        QCOMPARE(form.Button(36)->toolTip(), QString("About Orvane"));
        for (int separator : {1, 5, 8, 12, 15, 18, 20, 22, 27, 32, 35})
            QVERIFY(form.Button(separator)->isSeparator());
        QVERIFY(!form.Button(7)->isVisible());
        QVERIFY(!form.Button(37)->isVisible());
        QVERIFY(!form.Button(23)->isEnabled());
        QVERIFY(form.Button(34)->isEnabled());
    }

    void checkMarksChangeOnlyThroughTheirHandlers()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.show();
        // A window entry is checked by its window, never by the click alone.
        form.Menu("mnuViewSerialTerminal")->trigger();
        QVERIFY(!form.Menu("mnuViewSerialTerminal")->isChecked());

        form.Menu("mnuViewToolbar")->trigger();
        QVERIFY(!form.Menu("mnuViewToolbar")->isChecked());
        QVERIFY(!form.tbToolbar->isVisible());
        form.Menu("mnuViewToolbar")->trigger();
        QVERIFY(form.tbToolbar->isVisible());

        QVERIFY(form.Menu("mnuDebugCodeOn")->isChecked());
        form.Menu("mnuDebugCodeOn")->setEnabled(true);
        form.Menu("mnuDebugCodeOn")->trigger();
        QVERIFY(!form.Menu("mnuDebugCodeOn")->isChecked());
    }

    void resetCounterRewritesTheClockPanel()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        ClockCount = 123;
        form.ClockCountUpdate();
        QCOMPARE(form.PanelText(4), QString("Clock= 00000123"));
        ClockCount = 123456789;
        form.ClockCountUpdate();
        QCOMPARE(form.PanelText(4), QString("Clock= 123456789"));
        form.Menu("mnuDebugResetCounter")->trigger();
        QCOMPARE(ClockCount, 0);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000000"));
    }

    void statusBarHasSevenPanelsWithTheEditorsHidden()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.show();
        QCOMPARE(form.Panel(6)->text(), QString("Col."));
        QCOMPARE(form.Panel(7)->text(), QString("INS"));
        for (int panel = 1; panel <= 4; ++panel)
            QVERIFY(form.Panel(panel)->isVisible());
        for (int panel = 5; panel <= 7; ++panel)
            QVERIFY(!form.Panel(panel)->isVisible());
    }
};

QTEST_MAIN(CommandTableTest)
#include "CommandTable_test.moc"
