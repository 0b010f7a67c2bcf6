#include <QtTest>

#include "support/S19Image.h"

// The real programs of the program's folder: AS11.EXE from a terminal, and
// ASM.BAT as the IDE starts it, in a folder of their own.
class As11ProgramTest : public QObject {
    Q_OBJECT
private:
    QTemporaryDir work;

    QString In(const QString& name) const { return work.filePath(name); }
    void Write(const QString& name, const QByteArray& text)
    {
        QFile f(In(name));
        QVERIFY(f.open(QIODevice::WriteOnly) && f.write(text) == text.size());
    }
    QByteArray Read(const QString& name) const
    {
        QFile f(In(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // Runs a program in the work folder; gives its exit code, -1 on a crash.
    int Run(const QString& program, const QStringList& arguments = {}, QByteArray* errors = nullptr)
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
        Write("foo.bar.asm", " ORG $E000\nGO LDAA #1\n END GO\n");
        Write("foo.bar.err", "7: stale\n");
        QCOMPARE(Run(In("AS11.EXE"), {"foo.bar.asm"}), 0);
        QVERIFY(Read("foo.bar.lst").contains("0002 E000 86 01"));
        QCOMPARE(asmtest::ReadS19(Read("foo.bar.s19").toStdString()).start, 0xE000);
        QVERIFY(!QFile::exists(In("foo.bar.err")));   // a clean run leaves no old errors

        Write("bad.asm", " NOP\n LDAX 1\n BRA NOWHERE\n");
        QByteArray errors;
        QCOMPARE(Run(In("AS11.EXE"), {"bad.asm"}, &errors), 1);
        QCOMPARE(Read("bad.err"), QByteArray("2: unknown mnemonic 'LDAX'\n3: undefined symbol 'NOWHERE'\n"));
        QVERIFY(errors.contains("bad.asm:2: unknown mnemonic 'LDAX'"));
        QVERIFY(QFile::exists(In("bad.lst")) && QFile::exists(In("bad.s19")));

        QCOMPARE(Run(In("AS11.EXE"), {"missing.asm"}, &errors), 2);
        QVERIFY(errors.contains("cannot read"));
        QCOMPARE(Run(In("AS11.EXE")), 2);
    }

    void launcherLeavesTheFixedFilesAndTheMarkerLastEvenAfterACrash()
    {
        const QStringList outputs = {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err", "Temp$$$.$$$"};
        Write("Temp$$$.asm", " ORG $100\n LDAA #1\n FOO\n");
        QCOMPARE(Run(In("ASM.BAT")), 0);
        QCOMPARE(Read("Temp$$$.err"), QByteArray("3: unknown mnemonic 'FOO'\n"));
        const QDateTime marker = QFileInfo(In("Temp$$$.$$$")).lastModified();
        for (const QString& name : outputs)
            QVERIFY2(QFile::exists(In(name)) && QFileInfo(In(name)).lastModified() <= marker, qPrintable(name));

        // A clean source gives no error file.
        for (const QString& name : outputs)
            QFile::remove(In(name));
        Write("Temp$$$.asm", " NOP\n");
        QCOMPARE(Run(In("ASM.BAT")), 0);
        QVERIFY(!QFile::exists(In("Temp$$$.err")) && QFile::exists(In("Temp$$$.$$$")));

        // An assembler that crashes still gets its marker written.
        QFile::remove(In("AS11.EXE"));
        QFile::remove(In("Temp$$$.$$$"));
        Write("AS11.EXE", "#!/bin/sh\nkill -SEGV $$\n");
        QFile::setPermissions(In("AS11.EXE"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Run(In("ASM.BAT"));
        QVERIFY(QFile::exists(In("Temp$$$.$$$")));
    }
};

QTEST_APPLESS_MAIN(As11ProgramTest)
#include "As11Program_test.moc"
