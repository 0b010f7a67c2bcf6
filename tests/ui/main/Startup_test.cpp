#include "engine/state/AppSettings.h"
#include "engine/state/TargetState.h"
#include "platform/ProgramFolder.h"
#include "platform/SettingsStore.h"
#include "support/ui/MainFormFixture.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QStatusBar>
#include <QToolBar>

#include <array>

namespace {
const QString PortError = "HC11 Board: Communication Port Error !";

// The top edge lies on the area with a piece of it that the mouse can take,
// and the window is no larger than the area.
bool Reachable(const QRect& frame, const QRect& area)
{
    const int overlap = std::min(frame.right(), area.right()) - std::max(frame.left(), area.left()) + 1;
    return frame.top() >= area.top() && frame.top() <= area.bottom() && overlap >= std::min(frame.width(), 100) &&
           frame.width() <= area.width() && frame.height() <= area.height();
}
}  // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    void firstStartWithAnEmptyStore()
    {
        QTemporaryDir program, user;
        SetProgramFolder(program.path());
        const QString before = QDir::currentPath();
        // The folder the IDE was started from stays the current one; the
        // program's own folder is left for the user's home.
        for (const auto& [startedIn, currentAfter] : {std::pair{user.path(), user.path()},
                                                      std::pair{program.path(), QDir::homePath()}}) {
            QDir::setCurrent(startedIn);
            MainFormFixture f;
            frmMain& form = f.Start();
            QCOMPARE(QDir::current().canonicalPath(), QDir(currentAfter).canonicalPath());
            QVERIFY(form.HelpFile == QDir(program.path()).filePath("Orvane.HLP") && f.line.LastPort() == 2);
            QCOMPARE(form.PanelText(2) + form.PanelText(3), QString("Program: <None>Symbols: <None>"));
            QVERIFY(form.tmrComm.isActive() && !form.tmrRefresh.isActive());
        }
        QDir::setCurrent(before);
        SetProgramFolder({});
    }

    // No message box in any start case: an absent board is told at the first target operation. The
    // simulator needs no port: it shows its mode even when the port does not open.
    void startCases()
    {
        const QString busy = "Device or resource busy";
        const struct { const char* simEnabled; bool cts; bool fails; QString panel; QString tip; } rows[] = {
            {"False", true, false, "HC11 Board: Ready", ""},
            {"False", false, false, "HC11 Board: Not Connected !", ""},
            {"True", true, false, "Simulator mode", ""},
            {"False", true, true, PortError, busy},
            {"True", true, true, "Simulator mode", ""},
        };
        for (const auto& row : rows) {
            MainFormFixture f;
            SaveSetting("Settings", "SimEnabled", row.simEnabled);
            f.line.SetCTS(row.cts);
            if (row.fails)
                f.line.FailOpen(busy);
            frmMain& form = f.Start();
            const bool simulator = row.simEnabled == QString("True");
            QVERIFY2(form.PanelText(1) == row.panel && form.Panel(1)->toolTip() == row.tip, qPrintable(row.panel));
            QVERIFY(BoardConnected == (!row.fails || simulator) && f.boxes.boxes.isEmpty());
            QCOMPARE(f.line.IsOpen(), !row.fails);   // in simulator mode too
        }
    }

    void settingsRoundTripThroughAStartAndAnEnd()
    {
        MainFormFixture f;
        for (auto [key, value] : {std::pair{"HexTerminal", "True"}, {"Toolbar", "False"}, {"COMPort", "3"}})
            SaveSetting("Settings", key, value);
        frmMain& form = f.Start();
        form.show();
        QVERIFY(form.Menu("mnuPopupSerialHex")->isChecked() && !form.Menu("mnuPopupSerialAscii")->isChecked());
        QVERIFY(!form.tbToolbar->isVisible() && f.line.LastPort() == 3);

        form.Menu("mnuViewStatusBar")->trigger();
        QVERIFY(!form.sbStatusBar->isVisible());
        form.Menu("mnuDebugIncludeSym")->setChecked(true);
        TargetMode = SimulatorMode;
        form.close();

        // The port and fonts go through the settings' own save (the port read back is LastPort's above).
        const char* saved[][2] = {{"StatusBar", "False"}, {"Toolbar", "False"}, {"IncludeSym", "True"},
                                  {"CodeOn", "True"}, {"HexTerminal", "True"}, {"SimEnabled", "True"},
                                  {"PrintFontSize", "8"}, {"PortDevice2", "/dev/ttyUSB0"}};
        for (const auto& [key, value] : saved)
            QCOMPARE(GetSetting("Settings", key), QString(value));
        QCOMPARE(GetSetting("Windows", "MainState"), QString("2"));
    }

    // A placement from a screen that is gone, or edited by hand, hides no window now or later; one that fits stays.
    void placementsAreKeptOnTheScreen()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const char* const keys[] = {"MainLeft", "MainTop", "MainWidth", "MainHeight"};
        const std::array<const char*, 4> rows[] = {{"-99999999", "0", "9000", "6000"},
                                                   {"99999999", "99999999", "9000", "6000"},
                                                   {"0", "-5000", "1e30", "nan"},
                                                   {"1500", "1500", "6000", "4500"}};
        for (const auto& row : rows) {
            MainFormFixture f;
            SaveSetting("Windows", "MainState", "0");
            for (int i = 0; i < 4; ++i)
                SaveSetting("Windows", keys[i], row[i]);
            frmMain& form = f.Start();
            form.show();
            const QRect fits(TwipsToPixelsX(1500), TwipsToPixelsY(1500), TwipsToPixelsX(6000), TwipsToPixelsY(4500));
            const QRect frame(form.pos(), form.size());
            QVERIFY2(row[0] == QString("1500") ? frame == fits : Reachable(frame, area), row[0]);
            form.move(area.bottomRight() + QPoint(5000, 5000));   // its screen is unplugged
            form.close();
            int stored[4];
            for (int i = 0; i < 4; ++i)
                stored[i] = (i % 2 ? TwipsToPixelsY : TwipsToPixelsX)(GetSetting("Windows", keys[i]).toDouble());
            QVERIFY2(Reachable(QRect(stored[0], stored[1], stored[2], stored[3]), area), row[0]);
        }
        // A tool window is kept inside the main window's client area.
        MainFormFixture f;
        SaveSetting("Windows", "WatchLeft", "-99999999");
        frmMain& form = f.Start();
        form.show();
        QWidget* watch = form.LoadWindow("frmWatch");
        QVERIFY(Reachable(watch->parentWidget()->geometry(), form.mdiArea()->viewport()->rect()));
    }
};

QTEST_MAIN(StartupTest)
#include "Startup_test.moc"
