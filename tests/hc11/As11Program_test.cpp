#include "support/S19Image.h"
#include "support/WorkFolder.h"

#include <sys/stat.h>

// AS11.EXE from a terminal, and ASM.BAT as the IDE starts it, in a folder of their own.
class As11ProgramTest : public QObject {
    Q_OBJECT
private:
    WorkFolder work;

    QString In(const QString& name) const { return work.Path(name); }
    void Write(const QString& name, const QByteArray& text) { QVERIFY(work.Write(name, text)); }
    QByteArray Read(const QString& name) const { return work.Read(name); }
    // Runs a program in the work folder; gives its exit code, -1 on a crash.
    int Run(const QString& program, const QStringList& arguments = {}, QByteArray* errors = nullptr)
    {
        QProcess p;
        p.setWorkingDirectory(work.dir.path());
        p.start(program, arguments);
        if (!p.waitForFinished(60000))
            return -2;
        if (errors)
            *errors = p.readAllStandardError();
        return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    }

private slots:
    void initTestCase()
    {
        const QString programDir = qEnvironmentVariable("ORVANE_PROGRAM_DIR");
        QVERIFY2(!programDir.isEmpty(), "ORVANE_PROGRAM_DIR is not set");
        for (const char* name : {"AS11.EXE", "ASM.BAT"})
            QVERIFY(QFile::copy(programDir + "/" + name, In(name)) && QFileInfo(In(name)).isExecutable());
    }

    void standaloneWritesBesideTheSourceAndExitsByOutcome()
    {
        Write("bad.v2.asm", " ORG $E000\n LDAA #1\n LDAX 1\n BRA NOWHERE\n");
        QByteArray errors;
        QCOMPARE(Run(In("AS11.EXE"), {"bad.v2.asm"}, &errors), 1);
        QCOMPARE(Read("bad.v2.err"), QByteArray("3: unknown mnemonic 'LDAX'\n4: undefined symbol 'NOWHERE'\n"));
        QVERIFY(errors.contains("bad.v2.asm:3: unknown mnemonic 'LDAX'"));
        QVERIFY(Read("bad.v2.lst").contains("0002 E000 86 01"));
        QCOMPARE(int(asmtest::ReadS19(Read("bad.v2.s19").toStdString()).bytes.at(0xE000)), 0x86);
    }

    void launcherLeavesTheFixedFilesAndTheMarkerLast()
    {
        Write("Temp$$$.asm", " ORG $100\n LDAA #1\n FOO\n");
        QByteArray said;
        QCOMPARE(Run(In("ASM.BAT"), {}, &said), 1);   // the assembler's status and words, passed on
        QVERIFY(said.contains("Temp$$$.asm:3: unknown mnemonic 'FOO'"));
        QCOMPARE(Read("Temp$$$.err"), QByteArray("3: unknown mnemonic 'FOO'\n"));
        const QDateTime marker = QFileInfo(In("Temp$$$.$$$")).lastModified();
        for (const char* name : {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err", "Temp$$$.$$$"})
            QVERIFY2(QFile::exists(In(name)) && QFileInfo(In(name)).lastModified() <= marker, name);
    }

    // Sources that are no files, and sources named as one of their own
    // results, are refused: nothing is read, written or deleted.
    void sourcesThatAreNoFilesOrTheirOwnResultsAreRefused()
    {
        QVERIFY(QDir(work.dir.path()).mkdir("folder.asm"));
        QVERIFY(mkfifo(qPrintable(In("pipe.asm")), 0600) == 0);   // a read would wait for a writer
        const QByteArray source = " ORG $E000\n NOP\n";
        const std::pair<const char*, const char*> rows[] = {
            {"folder.asm", "AS11: cannot read"}, {"pipe.asm", "AS11: cannot read"}, {"missing.asm", "AS11: cannot read"},
            {"self.lst", "AS11: self.lst would be replaced"}, {"self.err", "AS11: self.err would be replaced"},
            {"self.s19", "AS11: self.s19 would be replaced"}};
        for (const auto& [name, message] : rows) {
            const bool self = QString(name).startsWith("self");
            if (self)
                Write(name, source);
            QByteArray said;
            QCOMPARE(Run(In("AS11.EXE"), {name}, &said), 2);
            QVERIFY2(said.startsWith(message), said.constData());
            if (self) {
                QCOMPARE(Read(name), source);
                QCOMPARE(QDir(work.dir.path()).entryList({"self*"}, QDir::Files), QStringList{name});
                QVERIFY(QFile::remove(In(name)));
            }
        }
    }

    void failedWritesLeaveTheLastRunsFiles()
    {
        // A listing beyond a 512-byte file size limit: the disk is full for this
        // run. A stale error file cannot go when it is a folder.
        Write("full.asm", " ORG $E000\n" + QByteArray(" LDAA #1\n").repeated(200));
        Write("stale.asm", " NOP\n");
        QVERIFY(QDir(work.dir.path()).mkpath("stale.err/inside"));
        const char* runs[][3] = {{"full", "ulimit -f 1; exec ./AS11.EXE full.asm", "AS11: cannot write"},
                                 {"stale", "exec ./AS11.EXE stale.asm", "AS11: cannot remove"}};
        for (const auto& [base, command, message] : runs) {
            Write(QString(base) + ".lst", "last run");
            QByteArray said;
            QCOMPARE(Run("/bin/sh", {"-c", command}, &said), 2);
            QVERIFY2(said.startsWith(message), said.constData());
            QCOMPARE(Read(QString(base) + ".lst"), QByteArray("last run"));
        }
        // No half-written file is left behind.
        QCOMPARE(QDir(work.dir.path()).entryList({"*.lst.*", "*.s19.*", "*.err.*"}, QDir::Files), QStringList());
    }
};

QTEST_APPLESS_MAIN(As11ProgramTest)
#include "As11Program_test.moc"
