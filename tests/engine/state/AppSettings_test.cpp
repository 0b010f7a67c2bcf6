#include "engine/state/AppSettings.h"
#include "platform/SettingsStore.h"
#include "support/FileSizeLimit.h"
#include "support/TestSettings.h"

#include <QFile>

class AppSettingsTest : public QObject {
    Q_OBJECT
private slots:
    void emptyOrUnreadableStoreGivesTheDefaults()
    {
        TestSettings store;
        COMPort = 4;
        ScreenFont = {"Other", 20, true, true};
        LoadPortAndFonts();
        QCOMPARE(tuple(COMPort, ScreenFont.Name, ScreenFont.Size, ScreenFont.Bold, ScreenFont.Italic),
                 tuple(2, "Fixedsys", 9.0f, false, false));
        QCOMPARE(tuple(PrintFont.Name, PrintFont.Size), tuple("Courier New", 8.0f));

        QFile file(store.FilePath());
        QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
        file.write("\x01\x02garbage without sections\n[Settings\nCOMPort");
        file.close();
        QCOMPARE(GetNumberSetting("COMPort", 2), 2.0);
        // A store that cannot be read at all (a folder in the file's place) reads as empty.
        QVERIFY(QFile::remove(store.FilePath()) && QDir().mkpath(store.FilePath()));
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
        QVERIFY(GetSetting("Settings", "SimEnabled") == "True" && GetSetting("Settings", "ScreenFontSize") == "10.5");

        COMPort = 1;
        ScreenFont = PrintFont = {};
        LoadPortAndFonts();
        QVERIFY(COMPort == 3 && ScreenFont.Name == "DejaVu Sans Mono" && ScreenFont.Size == 10.5f && ScreenFont.Bold);
        QCOMPARE(tuple(PrintFont.Size, PrintFont.Bold, PrintFont.Italic), tuple(12.0f, false, true));

        for (const auto& [text, fallback, read] :
             {std::tuple{"false", true, false}, {"-1", false, true}, {"perhaps", true, true}}) {
            SaveSetting("Settings", "CodeOn", text);
            QVERIFY2(GetFlagSetting("CodeOn", fallback) == read, text);
        }
        SaveSetting("Settings", "COMPort", "9");
        LoadPortAndFonts();
        QCOMPARE(int(COMPort), 2);   // only ports 1 to 4 exist
    }

    // A change rewrites its key's line and nothing else; a full disk leaves the file as it was and is told once a run.
    void storeChangesOnlyItsLinesAndSurvivesAFullDisk()
    {
        TestSettings store;
        const auto stored = [&] {
            QFile file(store.FilePath());
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
        };
        QVERIFY(QDir().mkpath(QFileInfo(store.FilePath()).path()));
        QFile file(store.FilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("; mine\r\n[settings]\r\n  comport = 3 \r\nPrintFontName=\"Courier, New\"\r\n[Other]\r\nKey=1");
        file.close();
        SaveSetting("Settings", "COMPort", "4");   // a key that is there, one new in its section, a new section
        SaveSetting("Settings", "CodeOn", "True");
        SaveSetting("Windows", "MainLeft", "0");
        QCOMPARE(stored(), QByteArray("; mine\r\n[settings]\r\nCOMPort=4\r\nPrintFontName=\"Courier, New\"\r\n"
                                      "CodeOn=True\r\n[Other]\r\nKey=1\n[Windows]\r\nMainLeft=0\r\n"));

        QStringList told;
        SetSettingsWriteFailure([&](const QString& reason) { told << reason; });
        const QByteArray kept = stored();
        const auto saveOnAFullDisk = [&](const char* value) {
            FileSizeLimit full(kept.size());
            SaveSetting("Settings", "LabelSort", value);
        };
        saveOnAFullDisk("a");
        saveOnAFullDisk("b");
        QCOMPARE(tuple(told, stored()), tuple(QStringList{"File too large"}, kept));
        QCOMPARE(QDir(QFileInfo(store.FilePath()).path()).entryList(QDir::Files), QStringList{"Orvane.ini"});
        SaveSetting("Settings", "LabelSort", "c");
        saveOnAFullDisk("d");   // told again after a write that went through
        QCOMPARE(tuple(told.size(), GetSetting("Settings", "LabelSort")), tuple(2, "c"));
        SetSettingsWriteFailure({});
    }
};

QTEST_MAIN(AppSettingsTest)
#include "AppSettings_test.moc"
