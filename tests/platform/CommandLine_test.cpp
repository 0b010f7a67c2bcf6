// The command line answers --version and --help on standard output, before
// the application object exists: the real program answers with no display.
#include <QtTest>

#include "platform/CommandLine.h"
#include "platform/Version.h"

#include <QProcess>
#include <sstream>
#include <vector>

namespace {
const QString Version = QString("orvane %1\n").arg(VersionText());
}  // namespace

class CommandLineTest : public QObject {
    Q_OBJECT
private slots:
    void answersTheTwoQuestionsAndLeavesTheRestToQt()
    {
        const struct {
            std::vector<const char*> args;
            std::optional<int> status;
            QString start;   // of what is printed
        } rows[] = {
            {{"--version"}, 0, Version},
            {{"--help"}, 0, "Usage: orvane [--help] [--version]\n"},
            {{"-h"}, 0, "Usage: orvane"},
            {{"-platform", "offscreen", "--version"}, 0, Version},   // wherever it stands
            {{}, std::nullopt, ""},
            {{"-platform", "offscreen", "--style", "Fusion", "-version"}, std::nullopt, ""},
        };
        for (const auto& row : rows) {
            std::vector<const char*> argv{"orvane"};
            argv.insert(argv.end(), row.args.begin(), row.args.end());
            std::ostringstream out;
            QCOMPARE(AnswerCommandLine(int(argv.size()), argv.data(), out), row.status);
            const QString printed = QString::fromStdString(out.str());
            QVERIFY2(row.status ? printed.startsWith(row.start) : printed.isEmpty(), qPrintable(printed));
        }
    }

    // With Qt told to use an X display that is not there, starting the GUI
    // would fail: the answers come before it.
    void theProgramAnswersWithoutADisplay()
    {
        const QString program = qEnvironmentVariable("ORVANE_PROGRAM_DIR") + "/orvane";
        QVERIFY2(QFile::exists(program), qPrintable(program));
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove("DISPLAY");
        env.remove("WAYLAND_DISPLAY");
        env.insert("QT_QPA_PLATFORM", "xcb");
        for (const char* question : {"--version", "--help"}) {
            QProcess run;
            run.setProcessEnvironment(env);
            run.start(program, {question});
            QVERIFY(run.waitForFinished(10000));
            QCOMPARE(run.exitStatus(), QProcess::NormalExit);
            QCOMPARE(run.exitCode(), 0);
            const QString out = QString::fromUtf8(run.readAllStandardOutput());
            QVERIFY2(question == QString("--version") ? out == Version : out.contains("--version"), qPrintable(out));
            QCOMPARE(run.readAllStandardError(), QByteArray());
        }
    }
};

QTEST_MAIN(CommandLineTest)
#include "CommandLine_test.moc"
