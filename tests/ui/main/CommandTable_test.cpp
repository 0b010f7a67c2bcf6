#include "engine/state/TargetState.h"
#include "platform/SettingsStore.h"
#include "support/ui/MainFormFixture.h"
#include "ui/main/CommandTable.h"

#include <QLabel>
#include <QMenu>
#include <QSet>
#include <QToolBar>

#include <span>

using namespace commands;

class CommandTableTest : public QObject {
    Q_OBJECT
private slots:
    // The menus and the toolbar start as their rows say, in both modes; every button has its own picture.
    void everyEntryAndButtonStartsAsItsRowSays()
    {
        // Checked by an empty settings store rather than by their rows.
        const QStringList checkedBySettings = {"mnuDebugCodeOn", "mnuPopupSerialAscii"};
        for (bool simulator : {false, true}) {
            MainFormFixture f;
            SaveSetting("Settings", "SimEnabled", simulator ? "True" : "False");
            frmMain& form = f.Start();
            int count = 0;
            const MenuRow* rows = MenuRows(count);
            QSet<QString> names;
            for (const MenuRow& row : std::span(rows, count)) {
                if (!row.name || row.level == 0)
                    continue;
                const QString name = QString::fromLatin1(row.name);
                QVERIFY2(!names.contains(name), row.name);
                names.insert(name);
                QAction* entry = form.Menu(name);
                QCOMPARE(entry->text(), QString::fromUtf8(row.caption));
                QVERIFY2(entry->isVisible() == !(row.flags & Hidden), row.name);
                entry->setVisible(true);   // the toolkit reports a hidden entry as disabled
                // The start does not apply the target-mode rule: all window entries are on.
                QVERIFY2(entry->isEnabled() == !(row.flags & Off), row.name);
                QVERIFY2(entry->isChecked() == ((row.flags & Checked) || checkedBySettings.contains(name)), row.name);
            }
            QVERIFY(names.size() > 90);
            const ToolbarRow* buttons = ToolbarRows(count);
            QCOMPARE(form.tbToolbar->actions().size(), count);
            QSet<qint64> pictures;
            for (int position = 1; position <= count; ++position) {
                const ToolbarRow& row = buttons[position - 1];
                QAction* button = form.Button(position);
                QVERIFY(button->isSeparator() == (row.kind == ToolbarRow::Separator) &&
                        button->isVisible() == (row.kind != ToolbarRow::Empty));
                if (row.kind != ToolbarRow::Button)
                    continue;
                QVERIFY2(button->isEnabled() == !(row.flags & Off), row.toolTip);
                const QImage image = button->icon().pixmap(16, 16).toImage();
                pictures.insert(qHashBits(image.constBits(), image.sizeInBytes()));
            }
            QCOMPARE(pictures.size(), 24);
        }
    }

    void barsSeparatorsAndPanels()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.show();
        const QList<QAction*> debug = form.MenuOf("mnuDebug")->actions();
        const qsizetype reset = debug.indexOf(form.Menu("mnuDebugResetCounter"));
        QVERIFY(debug[reset - 1]->isSeparator() && !debug[reset - 1]->isVisible());
        QCOMPARE(debug[reset - 2], form.Menu("mnuDebugGoToAddress"));
        // Seven panels, the editor's three hidden.
        for (int panel = 1; panel <= 7; ++panel)
            QCOMPARE(form.Panel(panel)->isVisible(), panel <= 4);
        ClockCount = 123456789;
        form.ClockCountUpdate();
        QCOMPARE(form.PanelText(4), QString("Clock= 123456789"));   // wider than its eight digits
        form.Menu("mnuDebugResetCounter")->trigger();
        QVERIFY(ClockCount == 0 && form.PanelText(4) == "Clock= 00000000");
    }
};

QTEST_MAIN(CommandTableTest)
#include "CommandTable_test.moc"
