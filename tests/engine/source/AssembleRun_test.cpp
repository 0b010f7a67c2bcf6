// The assembler run against the real AS11.EXE and ASM.BAT, and against
// stand-in launchers that hang, stop early or fail, in folders of their own.

#include "engine/source/AssembleRun.h"
#include "support/FileSizeLimit.h"
#include "support/WorkFolder.h"

#include <optional>

namespace {
// A process that has ended may stay a zombie until someone reaps it.
bool Alive(int pid)
{
    QFile file(QString("/proc/%1/stat").arg(pid));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const qsizetype close = stat.lastIndexOf(')');
    return close > 0 && stat.size() > close + 2 && stat[close + 2] != 'Z';
}
}  // namespace

class AssembleRunTest : public QObject {
    Q_OBJECT
private:
    WorkFolder program;   // the program's folder: AS11.EXE and ASM.BAT
    WorkFolder sources;

    QString Src(const QString& name) const { return sources.Path(name); }

    // A launcher of our own in place of ASM.BAT.
    void StandIn(const QByteArray& script)
    {
        const QString path = program.Path("ASM.BAT");
        QFile::remove(path);
        QVERIFY(program.Write("ASM.BAT", "#!/bin/sh\n" + script));
        QVERIFY(QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner));
    }
    AssembleRun::Outcome Assemble(AssembleRun& run, const QString& base, int timeoutMs = 10000)
    {
        return run.Run(Src(base + ".asm"), Src(base + ".lst"), Src(base + ".s19"), Src(base + ".err"), timeoutMs);
    }

private slots:
    void init()   // the real pair, fresh for every test
    {
        for (const char* name : {"AS11.EXE", "ASM.BAT"}) {
            QFile::remove(program.Path(name));
            QVERIFY(QFile::copy(qEnvironmentVariable("ORVANE_PROGRAM_DIR") + "/" + name, program.Path(name)));
        }
    }

    void programFolderStaysUntouchedAndStaleResultsGo()
    {
        // A run writes nothing in the (read-only) program folder; its work folder and an old error file go.
        QVERIFY(sources.Write("foo.bar.asm", " ORG $E000\n NOP\n"));
        for (const char* old : {".lst", ".s19", ".err"})
            QVERIFY(sources.Write(QString("foo.bar") + old, "old"));
        const QStringList programBefore = QDir(program.dir.path()).entryList(QDir::Files | QDir::Hidden);
        QTemporaryDir work;
        AssembleRun run(program.dir.path(), work.filePath("run"));
        const AssembleRun::Outcome outcome = Assemble(run, "foo.bar");
        QVERIFY2(outcome.problems.isEmpty(), qPrintable(outcome.problems.join('\n')));
        QVERIFY(outcome.listingArrived && outcome.machineCodeArrived && !outcome.errorsArrived);
        QVERIFY(sources.Read("foo.bar.lst").contains("E000 01") && !QFile::exists(Src("foo.bar.err")));
        QCOMPARE(QDir(program.dir.path()).entryList(QDir::Files | QDir::Hidden), programBefore);
        QVERIFY(!QFileInfo::exists(work.filePath("run")));
    }

    // The disk fills up as the results come back: the last run's files stay
    // as they were and nothing half-written is left beside them.
    void resultsComeBackWholeOrNotAtAll()
    {
        QVERIFY(sources.Write("big.asm", " ORG $E000\n LDAX #1\n" + QByteArray(" LDAA #1\n").repeated(200)));
        for (const char* old : {"big.lst", "big.s19", "big.err"})
            QVERIFY(sources.Write(old, "last run"));
        QTemporaryDir work;
        AssembleRun run(program.dir.path(), work.filePath("run"));
        std::optional<FileSizeLimit> full;   // from the batch's start: the assembler itself writes freely
        connect(&run, &AssembleRun::Started, &run, [&] { full.emplace(1000); });
        const AssembleRun::Outcome outcome = Assemble(run, "big");
        full.reset();
        QCOMPARE(outcome.writeError, QString("File too large"));
        QVERIFY(!outcome.listingArrived && !outcome.machineCodeArrived && !outcome.errorsArrived);
        for (const char* old : {"big.lst", "big.s19", "big.err"})
            QCOMPARE(sources.Read(old), QByteArray("last run"));
        QCOMPARE(QDir(sources.dir.path()).entryList({"big*"}, QDir::Files),
                 (QStringList{"big.asm", "big.err", "big.lst", "big.s19"}));
        QVERIFY(!QFileInfo::exists(work.filePath("run")));
    }

    void batchThatNeverEndsIsStoppedAndCleanedUp()
    {
        for (bool cancel : {false, true})
            NeverEnding(cancel);
    }

private:
    void NeverEnding(bool cancel)
    {
        const QString sleeperPid = sources.Path("sleeper.pid");
        // Half a listing, then an assembler that hangs under the batch.
        StandIn("echo partial > 'Temp$$$.lst'\nsleep 60 &\necho $! > '" + sleeperPid.toUtf8() + "'\nwait\n");
        QVERIFY(sources.Write("hang.asm", " NOP\n") && sources.Write("hang.lst", "the last good listing"));
        QTemporaryDir work;
        AssembleRun run(program.dir.path(), work.filePath("run"));
        if (cancel)
            connect(&run, &AssembleRun::Started, &run, &AssembleRun::Cancel);
        const AssembleRun::Outcome outcome = Assemble(run, "hang", cancel ? 60000 : 300);

        QCOMPARE(outcome.status, cancel ? AssembleRun::Status::Cancelled : AssembleRun::Status::TimedOut);
        QCOMPARE(outcome.problems, cancel ? QStringList() : QStringList{"ASM.BAT did not finish within 0.3 seconds !"});
        QVERIFY(!outcome.listingArrived && !QFileInfo::exists(work.filePath("run")));
        QCOMPARE(sources.Read("hang.lst"), QByteArray("the last good listing"));
        // The assembler under the batch was stopped too.
        const int sleeper = sources.Read("sleeper.pid").trimmed().toInt();
        QVERIFY(sleeper > 0);
        QTRY_VERIFY(!Alive(sleeper));
        QVERIFY(!run.Running());
    }

private slots:
    void runsThatCannotStartOrFinishSayWhy()
    {
        using S = AssembleRun::Status;
        const struct {
            const char *missingTool, *launcher, *source;   // launcher empty: the real one
            S status;
            const char* problem;
            bool oldListingKept;
        } rows[] = {
            {"AS11.EXE", "", "ok", S::NotStarted, "Can't Find AS11.EXE !", true},
            {"ASM.BAT", "", "ok", S::NotStarted, "Can't Find ASM.BAT !", true},
            {"", "", "gone", S::NotStarted, "Can't copy ", true},
            {"", "exit 0\n", "ok", S::NoMarker, "ASM.BAT ended without leaving Temp$$$.$$$ !", true},
            {"", "echo 'AS11: cannot write Temp$$$.lst' >&2\n: > 'Temp$$$.$$$'\nexit 2\n", "ok", S::Finished,
             "AS11: cannot write Temp$$$.lst !", false},
        };
        QVERIFY(sources.Write("ok.asm", " NOP\n"));
        for (const auto& row : rows) {
            const QString source = row.source, missing = row.missingTool, hidden = program.Path("hidden");
            if (*row.launcher)
                StandIn(row.launcher);
            if (!missing.isEmpty())
                QVERIFY(QFile::rename(program.Path(missing), hidden));
            QVERIFY(sources.Write(source + ".lst", "old"));
            QTemporaryDir work;
            AssembleRun run(program.dir.path(), work.filePath("run"));
            const AssembleRun::Outcome outcome = Assemble(run, source);
            if (!missing.isEmpty())
                QVERIFY(QFile::rename(hidden, program.Path(missing)));
            QCOMPARE(tuple(outcome.status, outcome.problems.size()), tuple(row.status, 1));
            QVERIFY2(outcome.problems[0].startsWith(row.problem), qPrintable(outcome.problems[0]));
            QCOMPARE(sources.Read(source + ".lst") == "old", row.oldListingKept);
            QVERIFY(QDir(work.filePath("run")).entryList({"Temp*"}, QDir::Files).isEmpty());
        }
    }
};

QTEST_MAIN(AssembleRunTest)
#include "AssembleRun_test.moc"
