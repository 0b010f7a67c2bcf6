#include <QtTest>

#include "support/S19Image.h"

// AS11.EXE from a terminal, and ASM.BAT as the IDE starts it, in a folder of their own.
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
        QCOMPARE(Run(In("ASM.BAT")), 0);
        QCOMPARE(Read("Temp$$$.err"), QByteArray("3: unknown mnemonic 'FOO'\n"));
        const QDateTime marker = QFileInfo(In("Temp$$$.$$$")).lastModified();
        for (const QString& name : {"Temp$$$.lst", "Temp$$$.s19", "Temp$$$.err", "Temp$$$.$$$"})
            QVERIFY2(QFile::exists(In(name)) && QFileInfo(In(name)).lastModified() <= marker, qPrintable(name));
    }
};

QTEST_APPLESS_MAIN(As11ProgramTest)
#include "As11Program_test.moc"
