#include <QtTest>

#include "support/S19Image.h"

// The real programs of the program's folder: AS11.EXE from a terminal, and
// ASM.BAT as the IDE starts it, in a folder of their own.
class As11ProgramTest : public QObject {
    Q_OBJECT
private:
    QString programDir;
    QTemporaryDir work;

    static void Write(const QString& path, const QByteArray& text)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(text);
    }
    static QByteArray Read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // Runs a program in the work folder; gives its exit code, -1 on a crash.
    int Run(const QString& program, const QStringList& arguments, QByteArray* errors = nullptr)
    {
        QProcess p;
        p.setWorkingDirectory(work.path());
        p.start(program, arguments);
        if (!p.waitForFinished(60000))
            return -2;
        if (errors)
            *errors = p.readAllStandardError();
        return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    }
    QString InWork(const QString& name) const { return work.filePath(name); }

private slots:
    void initTestCase()
    {
        programDir = qEnvironmentVariable("ORVANE_PROGRAM_DIR");
        QVERIFY2(!programDir.isEmpty(), "ORVANE_PROGRAM_DIR is not set");
        QVERIFY(QFileInfo(programDir + "/AS11.EXE").isExecutable());
        QVERIFY(QFileInfo(programDir + "/ASM.BAT").isExecutable());
    }

    void standaloneWritesBesideTheSourceAndExitsByOutcome()
    {
        const QString as11 = programDir + "/AS11.EXE";
        Write(InWork("foo.bar.asm"), " ORG $E000\nGO LDAA #1\n END GO\n");
        Write(InWork("foo.bar.err"), "7: stale\n");
        QCOMPARE(Run(as11, {"foo.bar.asm"}), 0);
        QVERIFY(Read(InWork("foo.bar.lst")).contains("0002 E000 86 01"));
        QCOMPARE(asmtest::ReadS19(Read(InWork("foo.bar.s19")).toStdString()).start, 0xE000);
        QVERIFY(!QFile::exists(InWork("foo.bar.err")));   // a clean run leaves no old errors

        Write(InWork("bad.asm"), " NOP\n LDAX 1\n BRA NOWHERE\n");
        QByteArray errors;
        QCOMPARE(Run(as11, {"bad.asm"}, &errors), 1);
        QCOMPARE(Read(InWork("bad.err")), QByteArray("2: unknown mnemonic 'LDAX'\n3: undefined symbol 'NOWHERE'\n"));
        QVERIFY(errors.contains("bad.asm:2: unknown mnemonic 'LDAX'"));
        QVERIFY(QFile::exists(InWork("bad.lst")) && QFile::exists(InWork("bad.s19")));

        QCOMPARE(Run(as11, {"missing.asm"}, &errors), 2);
        QVERIFY(errors.contains("cannot read"));
        QCOMPARE(Run(as11, {}), 2);
    }

    void launcherLeavesTheFixedFilesAndTheMarkerLast()
    {
        QVERIFY(QFile::copy(programDir + "/AS11.EXE", InWork("AS11.EXE")));
        QVERIFY(QFile::copy(programDir + "/ASM.BAT", InWork("ASM.BAT")));
        QFile::setPermissions(InWork("ASM.BAT"), QFile::permissions(programDir + "/ASM.BAT"));

        Write(InWork("Temp$$$.asm"), " ORG $100\n LDAA #1\n FOO\n");
        QCOMPARE(Run(InWork("ASM.BAT"), {}), 0);
        for (const char* name : {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err", "Temp$$$.$$$"})
            QVERIFY2(QFile::exists(InWork(name)), name);
        QCOMPARE(Read(InWork("Temp$$$.err")), QByteArray("3: unknown mnemonic 'FOO'\n"));
        const QDateTime marker = QFileInfo(InWork("Temp$$$.$$$")).lastModified();
        for (const char* name : {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err"})
            QVERIFY(QFileInfo(InWork(name)).lastModified() <= marker);

        // A clean source gives no error file.
        for (const char* name : {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err", "Temp$$$.$$$"})
            QFile::remove(InWork(name));
        Write(InWork("Temp$$$.asm"), " NOP\n");
        QCOMPARE(Run(InWork("ASM.BAT"), {}), 0);
        QVERIFY(!QFile::exists(InWork("Temp$$$.err")));
        QVERIFY(QFile::exists(InWork("Temp$$$.$$$")));
    }

    void launcherLeavesTheMarkerWhenTheAssemblerCrashes()
    {
        QFile::remove(InWork("AS11.EXE"));
        QFile::remove(InWork("Temp$$$.$$$"));
        Write(InWork("AS11.EXE"), "#!/bin/sh\nkill -SEGV $$\n");
        QFile::setPermissions(InWork("AS11.EXE"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Run(InWork("ASM.BAT"), {});
        QVERIFY(QFile::exists(InWork("Temp$$$.$$$")));
    }
};

QTEST_APPLESS_MAIN(As11ProgramTest)
#include "As11Program_test.moc"
