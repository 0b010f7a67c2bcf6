#include <QtTest>

#include "engine/state/TargetState.h"
#include "platform/SettingsStore.h"
#include "support/ui/MainFormFixture.h"
#include "ui/main/CommandTable.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>

using namespace commands;

namespace {
QSet<QString> Names(const char* list)
{
    const QStringList names = QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return {names.begin(), names.end()};
}

// Everything else starts enabled, visible and without a check mark.
const QSet<QString> StartOff = Names(
    "mnuFileClose mnuFileSave mnuFileSaveAs mnuFilePrint "
    "mnuEditUndo mnuEditRedo mnuEditCut mnuEditCopy mnuEditPaste mnuEditDelete mnuEditSelectAll "
    "mnuEditFind mnuEditFindNext mnuEditReplace mnuEditGoToLine "
    "mnuDebugEditWatch mnuDebugCodeOn mnuDebugIncludeSym mnuDebugToggleBreakpoint "
    "mnuDebugClearAllBreakpoints mnuDebugSetNewPC mnuDebugGetResVec mnuDebugGoToPCAddress mnuDebugGoToAddress "
    "mnuRunRun mnuRunPlay mnuRunAnimate mnuRunStepInto mnuRunStepOver mnuRunStepOut mnuRunRunTo mnuRunPause");
const QSet<QString> StartHidden = Names(
    "mnuDebugBar6 mnuDebugRefresh mnuPopupViewAddWatch mnuPopupViewEditWatch mnuPopupViewRemoveWatch "
    "mnuPopupViewBar1");
// With an empty settings store.
const QSet<QString> StartChecked = Names("mnuViewToolbar mnuViewStatusBar mnuDebugCodeOn mnuPopupSerialAscii");
const QSet<int> ButtonsOn = {2, 3, 19, 21, 34, 36};
}  // namespace

class CommandTableTest : public QObject {
    Q_OBJECT
private slots:
    void everyEntryAndButtonStartsAsTheTableSays()
    {
        for (bool simulator : {false, true}) {
            MainFormFixture f;
            SaveSetting("Settings", "SimEnabled", simulator ? "True" : "False");
            frmMain& form = f.Start();
            int count = 0;
            const MenuRow* rows = MenuRows(count);
            QSet<QString> names;
            for (int i = 0; i < count; ++i) {
                if (!rows[i].name || rows[i].level == 0)
                    continue;
                const QString name = QString::fromLatin1(rows[i].name);
                QVERIFY2(!names.contains(name), rows[i].name);
                names.insert(name);
                QAction* entry = form.Menu(name);
                QCOMPARE(entry->text(), QString::fromUtf8(rows[i].caption));
                QVERIFY2(entry->isVisible() == !StartHidden.contains(name), rows[i].name);
                // The toolkit reports a hidden entry as disabled; it is enabled once shown.
                entry->setVisible(true);
                // The start does not apply the target-mode rule: all window entries are on.
                QVERIFY2(entry->isEnabled() == !StartOff.contains(name), rows[i].name);
                QVERIFY2(entry->isChecked() == StartChecked.contains(name), rows[i].name);
            }
            QVERIFY(names.size() > 90);
            QCOMPARE(form.tbToolbar->actions().size(), 37);
            for (int position = 1; position <= 37; ++position) {
                QAction* button = form.Button(position);
                const bool separator = QList<int>{1, 5, 8, 12, 15, 18, 20, 22, 27, 32, 35}.contains(position);
                QCOMPARE(button->isSeparator(), separator);
                QCOMPARE(button->isVisible(), position != 7 && position != 37);
                if (!separator && button->isVisible())
                    QVERIFY2(button->isEnabled() == ButtonsOn.contains(position), qPrintable(button->toolTip()));
            }
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
        QCOMPARE(ClockCount, 0);
        QCOMPARE(form.PanelText(4), QString("Clock= 00000000"));
    }

    void aRepeatedCommandSharesItsHelpTopic()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QCOMPARE(form.HelpContextOf("mnuPopupStackRefresh"), form.HelpContextOf("mnuDebugRefresh"));
        QVERIFY(form.HelpContextOf("mnuDebugRefresh") > 0);
    }
};

QTEST_MAIN(CommandTableTest)
#include "CommandTable_test.moc"
