#include <QtTest>

#include "core/AppSettings.h"
#include "platform/SettingsStore.h"
#include "platform/WindowPlacement.h"
#include "support/TestSettings.h"

#include <QFile>
#include <QWidget>

class AppSettingsTest : public QObject {
    Q_OBJECT
private slots:
    void emptyStoreGivesTheDefaults()
    {
        TestSettings store;
        COMPort = 4;
        ScreenFont = {"Other", 20, true, true};
        LoadPortAndFonts();
        QCOMPARE(int(COMPort), 2);
        QCOMPARE(ScreenFont.Name, QString("Fixedsys"));
        QCOMPARE(ScreenFont.Size, 9.0f);
        QVERIFY(!ScreenFont.Bold && !ScreenFont.Italic);
        QCOMPARE(PrintFont.Name, QString("Courier New"));
        QCOMPARE(PrintFont.Size, 8.0f);
        QVERIFY(GetFlagSetting("Toolbar", true));
        QVERIFY(!GetFlagSetting("IncludeSym", false));
        QCOMPARE(GetTextSetting("LabelSort", ""), QString());
    }

    void unreadableOrEmptyFileGivesTheDefaults()
    {
        TestSettings store;
        QFile file(store.FilePath());
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QCOMPARE(GetNumberSetting("COMPort", 2), 2.0);

        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("\x01\x02garbage without sections\n[Settings\nCOMPort");
        file.close();
        QCOMPARE(GetNumberSetting("COMPort", 2), 2.0);

        // A store that cannot be read at all (here a folder in the file's place)
        // reads as empty, not as an error.
        QVERIFY(QFile::remove(store.FilePath()));
        QVERIFY(QDir().mkpath(store.FilePath()));
        QCOMPARE(GetNumberSetting("COMPort", 2), 2.0);
    }

    void valuesRoundTripInTheirTextForms()
    {
        TestSettings store;
        COMPort = 3;
        ScreenFont = {"DejaVu Sans Mono", 10.5f, true, false};
        PrintFont = {"Courier New", 12, false, true};
        SavePortAndFonts();
        SaveFlagSetting("SimEnabled", true);
        QCOMPARE(GetSetting("Settings", "SimEnabled"), QString("True"));
        QCOMPARE(GetSetting("Settings", "ScreenFontBold"), QString("True"));
        QCOMPARE(GetSetting("Settings", "ScreenFontSize"), QString("10.5"));
        QCOMPARE(GetSetting("Settings", "COMPort"), QString("3"));

        COMPort = 1;
        ScreenFont = PrintFont = {};
        LoadPortAndFonts();
        QCOMPARE(int(COMPort), 3);
        QCOMPARE(ScreenFont.Name, QString("DejaVu Sans Mono"));
        QCOMPARE(ScreenFont.Size, 10.5f);
        QVERIFY(ScreenFont.Bold && !ScreenFont.Italic);
        QCOMPARE(PrintFont.Size, 12.0f);
        QVERIFY(!PrintFont.Bold && PrintFont.Italic);
    }

    void textsWithCommasAndOddTruthValuesReadBack()
    {
        TestSettings store;
        SaveTextSetting("LabelSort", "Name, Value");
        QCOMPARE(GetTextSetting("LabelSort", ""), QString("Name, Value"));
        SaveSetting("Settings", "CodeOn", "false");
        QVERIFY(!GetFlagSetting("CodeOn", true));
        SaveSetting("Settings", "CodeOn", "-1");
        QVERIFY(GetFlagSetting("CodeOn", false));
        SaveSetting("Settings", "CodeOn", "perhaps");
        QVERIFY(GetFlagSetting("CodeOn", true));
        SaveSetting("Settings", "COMPort", "9");
        LoadPortAndFonts();
        QCOMPARE(int(COMPort), 2);   // only ports 1 to 4 exist
    }

    void placementDefaultsFollowTheClientArea()
    {
        const WindowPlacement stack = DefaultPlacement("Stack", 12000, 9000);
        QCOMPARE(stack.Left, 5200.0);
        QCOMPARE(stack.Top, 2450.0);
        QCOMPARE(stack.Height, 9000.0 - 2450);
        const WindowPlacement serial = DefaultPlacement("Serial", 10000, 8000);
        QCOMPARE(serial.Left, 1000.0);
        QCOMPARE(serial.Width, 8000.0);
        QCOMPARE(serial.Height, 6400.0);
        QCOMPARE(DefaultPlacement("RegTimer", 1, 1).Height, 5000.0);
        QCOMPARE(DefaultPlacement("DisAsm", 1, 7000).Height, 7000.0);
        QCOMPARE(DefaultPlacement("Main", 1, 1).State, 2);
        QCOMPARE(DefaultPlacement("RegCPU", 1, 1).State, 0);
    }

    void twipsConvertBothWays()
    {
        for (int pixels : {0, 1, 15, 640, 1920})
            QCOMPARE(TwipsToPixelsX(PixelsToTwipsX(pixels)), pixels);
        QCOMPARE(TwipsToPixelsY(1440), qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchY()));
    }

    void maximisedWindowKeepsItsNormalPlacement()
    {
        TestSettings store;
        QWidget window;
        LoadPlacement(&window, "Test", {0, 1500, 750, 6000, 4500});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const WindowPlacement normal = CurrentPlacement(&window);
        QCOMPARE(TwipsToPixelsX(normal.Width), TwipsToPixelsX(6000));
        SavePlacement(&window, "Test");

        window.showMaximized();
        QTRY_VERIFY(window.isMaximized());
        SavePlacement(&window, "Test");
        QCOMPARE(GetSetting("Windows", "TestState"), QString("2"));
        QCOMPARE(GetSetting("Windows", "TestWidth").toDouble(), normal.Width);

        QWidget again;
        LoadPlacement(&again, "Test", {});
        again.show();
        QTRY_VERIFY(again.isMaximized());
        again.showNormal();
        QTRY_VERIFY(!again.isMaximized());
        QCOMPARE(again.width(), TwipsToPixelsX(normal.Width));
        QCOMPARE(again.height(), TwipsToPixelsY(normal.Height));
    }
};

QTEST_MAIN(AppSettingsTest)
#include "AppSettings_test.moc"
