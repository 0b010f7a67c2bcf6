// The program answers --version and --help on standard output before the
// application object exists, so with no display.

#include "platform/Version.h"

#include <QProcess>

class CommandLineTest : public QObject {
    Q_OBJECT
private slots:
    // With Qt told to use an X display that is not there, starting the GUI
    // would fail.
    void theProgramAnswersWithoutADisplay()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove("DISPLAY");
        env.remove("WAYLAND_DISPLAY");
        env.insert("QT_QPA_PLATFORM", "xcb");
        for (const QString question : {"--version", "--help"}) {
            QProcess run;
            run.setProcessEnvironment(env);
            run.start(qEnvironmentVariable("ORVANE_PROGRAM_DIR") + "/orvane", {question});
            QVERIFY(run.waitForFinished(10000) && run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0);
            const QString out = run.readAllStandardOutput();
            QVERIFY2(question == "--version" ? out == QString("orvane %1\n").arg(VersionText()) : out.contains("--help"),
                     qPrintable(out));
            QCOMPARE(run.readAllStandardError(), QByteArray());
        }
    }
};

QTEST_MAIN(CommandLineTest)
#include "CommandLine_test.moc"
