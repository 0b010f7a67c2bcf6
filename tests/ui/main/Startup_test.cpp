#include <QtTest>

#include "engine/state/AppSettings.h"
#include "engine/state/TargetState.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "support/MainFormFixture.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QToolBar>

namespace {
// A child whose user answers Cancel to the closing question.
class RefusingChild : public QWidget {
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

const QString PortError = "HC11 Board: Communication Port Error !";
}  // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    void firstStartWithAnEmptyStore()
    {
        QTemporaryDir folder;
        SetProgramFolder(folder.path());
        MainFormFixture f;
        frmMain& form = f.Start();
        SetProgramFolder({});
        QCOMPARE(QDir::current().canonicalPath(), QDir(folder.path()).canonicalPath());
        QCOMPARE(form.HelpFile, QDir(folder.path()).filePath("Orvane.HLP"));
        QCOMPARE(f.line.LastPort(), 2);
        QCOMPARE(form.PanelText(2) + form.PanelText(3), QString("Program: <None>Symbols: <None>"));
        QVERIFY(form.tmrComm.isActive() && !form.tmrRefresh.isActive());
    }

    // No message box in any start case: an absent board is told at the first
    // target operation. (A real device's cases are the Options test's.)
    void startCases()
    {
        const struct { const char* simEnabled; bool cts; bool fails; QString panel; } rows[] = {
            {"False", true, false, "HC11 Board: Ready"},
            {"False", false, false, "HC11 Board: Not Connected !"},
            {"True", true, false, "Simulator mode"},
            {"False", true, true, PortError},
            {"True", true, true, PortError},
        };
        for (const auto& row : rows) {
            MainFormFixture f;
            SaveSetting("Settings", "SimEnabled", row.simEnabled);
            f.line.SetCTS(row.cts);
            if (row.fails)
                f.line.FailOpen("Device or resource busy");
            frmMain& form = f.Start();
            QCOMPARE(form.PanelText(1), row.panel);
            QCOMPARE(bool(BoardConnected), !row.fails);
            QCOMPARE(f.line.IsOpen(), !row.fails);   // in simulator mode too
            QVERIFY(f.boxes.boxes.isEmpty());
        }
    }

    void settingsRoundTripThroughAStartAndAnEnd()
    {
        MainFormFixture f;
        SaveSetting("Settings", "HexTerminal", "True");
        SaveSetting("Settings", "Toolbar", "False");
        SaveSetting("Settings", "COMPort", "3");
        SaveSetting("Settings", "ScreenFontName", "Courier New");
        frmMain& form = f.Start();
        form.show();
        QVERIFY(form.Menu("mnuPopupSerialHex")->isChecked());
        QVERIFY(!form.Menu("mnuPopupSerialAscii")->isChecked());
        QVERIFY(!form.tbToolbar->isVisible());
        QCOMPARE(f.line.LastPort(), 3);

        form.Menu("mnuViewStatusBar")->trigger();
        QVERIFY(!form.sbStatusBar->isVisible());
        form.Menu("mnuDebugIncludeSym")->setChecked(true);
        TargetMode = SimulatorMode;
        form.close();

        const char* saved[][2] = {{"StatusBar", "False"}, {"Toolbar", "False"}, {"IncludeSym", "True"},
                                  {"CodeOn", "True"}, {"HexTerminal", "True"}, {"SimEnabled", "True"},
                                  {"COMPort", "3"}, {"ScreenFontName", "Courier New"}, {"PrintFontSize", "8"},
                                  {"PortDevice2", "/dev/ttyUSB0"}};
        for (const auto& [key, value] : saved)
            QCOMPARE(GetSetting("Settings", key), QString(value));
        QCOMPARE(GetSetting("Windows", "MainState"), QString("2"));
    }

    void cancelledChildKeepsTheProgramAndTheSettings()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        form.show();
        form.mdiArea()->addSubWindow(new RefusingChild)->show();
        form.Menu("mnuDebugIncludeSym")->setChecked(true);
        form.Menu("mnuFileExit")->trigger();
        QVERIFY(form.isVisible());
        QCOMPARE(GetSetting("Settings", "IncludeSym", "unset"), QString("unset"));
    }
};

QTEST_MAIN(StartupTest)
#include "Startup_test.moc"
