#include <QtTest>

#include "core/AppSettings.h"
#include "core/TargetState.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "support/MainFormFixture.h"
#include "support/PseudoTerminal.h"

#include <QCloseEvent>
#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QToolBar>

namespace {
// A child window whose user answers Cancel to the closing question.
class RefusingChild : public QWidget {
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};
}  // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    void firstStartWithAnEmptyStore()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QVERIFY(form.windowState() & Qt::WindowMaximized);
        QCOMPARE(int(COMPort), 2);
        QCOMPARE(f.line.LastPort(), 2);
        QCOMPARE(ScreenFont.Name, QString("Fixedsys"));
        QCOMPARE(ScreenFont.Size, 9.0f);
        QCOMPARE(int(TargetMode), int(BoardMode));
        QVERIFY(RunStopped);
        QCOMPARE(form.MSComm.RThreshold(), 6);
        QVERIFY(form.Menu("mnuViewToolbar")->isChecked());
        QVERIFY(form.Menu("mnuViewStatusBar")->isChecked());
        QVERIFY(form.Menu("mnuDebugCodeOn")->isChecked());
        QVERIFY(!form.Menu("mnuDebugIncludeSym")->isChecked());
        QVERIFY(!form.Menu("mnuPopupSerialHex")->isChecked());
        QVERIFY(form.Menu("mnuPopupSerialAscii")->isChecked());
        QCOMPARE(form.PanelText(4), QString("Clock= 00000000"));
        QCOMPARE(form.PanelText(2), QString("Program: <None>"));
        QCOMPARE(form.PanelText(3), QString("Symbols: <None>"));
        QVERIFY(f.boxes.boxes.isEmpty());
        QVERIFY(form.tmrComm.isActive());
        QCOMPARE(form.tmrComm.interval(), 50);
        QVERIFY(!form.tmrRefresh.isActive());
        QCOMPARE(form.tmrRefresh.interval(), 100);
    }

    void programFolderBecomesTheCurrentFolder()
    {
        QTemporaryDir folder;
        SetProgramFolder(folder.path());
        MainFormFixture f;
        frmMain& form = f.Start();
        SetProgramFolder({});
        QCOMPARE(QDir::current().canonicalPath(), QDir(folder.path()).canonicalPath());
        QCOMPARE(form.HelpFile, QDir(folder.path()).filePath("Orvane.HLP"));
    }

    // The four start cases, on the scripted line.
    void portOpensBoardPresent()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
        QVERIFY(BoardConnected);
    }

    void portOpensBoardAbsent()
    {
        MainFormFixture f;
        f.line.SetCTS(false);
        frmMain& form = f.Start();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Not Connected !"));
        QVERIFY(f.boxes.boxes.isEmpty());   // no message until the first target operation
    }

    void portOpensSimulatorOn()
    {
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", "True");
        frmMain& form = f.Start();
        QCOMPARE(int(TargetMode), int(SimulatorMode));
        QVERIFY(f.line.IsOpen());   // the port opens in simulator mode too
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(!form.Menu("mnuRunRun")->isEnabled());
        QVERIFY(!form.Button(23)->isEnabled());
    }

    void portFailsInEitherMode_data()
    {
        QTest::addColumn<QString>("simEnabled");
        QTest::newRow("board") << "False";
        QTest::newRow("simulator") << "True";
    }
    void portFailsInEitherMode()
    {
        QFETCH(QString, simEnabled);
        MainFormFixture f;
        SaveSetting("Settings", "SimEnabled", simEnabled);
        f.line.FailOpen("Device or resource busy");
        frmMain& form = f.Start();
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Communication Port Error !"));
        QVERIFY(!BoardConnected);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    // The same cases on a real serial device: a pseudo-terminal.
    void pseudoTerminalBoardReady()
    {
        PseudoTerminal pty;
        QVERIFY(pty.IsValid());
        MainFormFixture f;
        frmMain& form = f.StartOn(pty.DevicePath());
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Ready"));
    }

    void missingDeviceGivesThePortError()
    {
        MainFormFixture f;
        frmMain& form = f.StartOn("/dev/orvane-no-such-port");
        QCOMPARE(form.PanelText(1), QString("HC11 Board: Communication Port Error !"));
        QVERIFY(f.boxes.boxes.isEmpty());
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
        QVERIFY(!form.Menu("mnuViewToolbar")->isChecked());
        QVERIFY(!form.tbToolbar->isVisible());
        QCOMPARE(f.line.LastPort(), 3);

        form.Menu("mnuViewStatusBar")->trigger();
        QVERIFY(!form.sbStatusBar->isVisible());
        form.Menu("mnuDebugIncludeSym")->setChecked(true);
        TargetMode = SimulatorMode;
        form.close();

        QCOMPARE(GetSetting("Settings", "StatusBar"), QString("False"));
        QCOMPARE(GetSetting("Settings", "Toolbar"), QString("False"));
        QCOMPARE(GetSetting("Settings", "IncludeSym"), QString("True"));
        QCOMPARE(GetSetting("Settings", "CodeOn"), QString("True"));
        QCOMPARE(GetSetting("Settings", "HexTerminal"), QString("True"));
        QCOMPARE(GetSetting("Settings", "SimEnabled"), QString("True"));
        QCOMPARE(GetSetting("Settings", "COMPort"), QString("3"));
        QCOMPARE(GetSetting("Settings", "ScreenFontName"), QString("Courier New"));
        QCOMPARE(GetSetting("Settings", "PrintFontSize"), QString("8"));
        QCOMPARE(GetSetting("Settings", "PortDevice2"), QString("/dev/ttyUSB0"));
        QCOMPARE(GetSetting("Windows", "MainState"), QString("2"));
    }

    void maximisedMainWindowComesBackMaximisedWithItsNormalPlacement()
    {
        MainFormFixture f;
        SaveSetting("Windows", "MainState", "0");
        SaveSetting("Windows", "MainLeft", "300");
        SaveSetting("Windows", "MainTop", "450");
        SaveSetting("Windows", "MainWidth", "9000");
        SaveSetting("Windows", "MainHeight", "6000");
        frmMain& form = f.Start();
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QCOMPARE(form.width(), TwipsToPixelsX(9000));
        form.showMaximized();
        QTRY_VERIFY(form.isMaximized());
        form.close();
        QCOMPARE(GetSetting("Windows", "MainState"), QString("2"));
        QCOMPARE(GetSetting("Windows", "MainWidth"), QString("9000"));
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
