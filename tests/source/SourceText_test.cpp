// The editor's logic without windows: bytes of a file to text and back, the
// safe write, the search of Find and Replace, Go To Line's entry and the
// colouring of assembly lines.
#include <QtTest>

#include "source/AsmColouring.h"
#include "source/SourceFile.h"
#include "source/TextSearch.h"
#include "support/WorkFolder.h"

Q_DECLARE_METATYPE(AsmSpan)

class SourceTextTest : public QObject {
    Q_OBJECT
private slots:
    void bytesComeBackAsTheyWere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("crlf");
        QTest::newRow("LF") << QByteArray("  LDAA #1\nL1 RTS\n") << false;
        QTest::newRow("CRLF, no final line end") << QByteArray("  LDAA #1\r\nL1 RTS") << true;
        QTest::newRow("one byte a character") << QByteArray("* caf\xe9 \xa0\xff\r\n") << true;
        QTest::newRow("UTF-8") << QByteArray("* caf\xc3\xa9\n") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }
    void bytesComeBackAsTheyWere()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, crlf);
        const DecodedSource source = DecodeSource(bytes);
        QCOMPARE(source.encoding.crlf, crlf);
        QVERIFY(!source.text.contains('\r'));
        QByteArray back;
        QVERIFY(EncodeSource(source.text, source.encoding, back));
        QCOMPARE(back, bytes);
    }

    void oneByteFileRefusesWhatItCannotStore()
    {
        const DecodedSource source = DecodeSource("\xe9\n");
        QVERIFY(!source.encoding.utf8);
        QCOMPARE(source.text, QString(QChar(0xE9)) + "\n");
        QByteArray bytes = "unchanged";
        QVERIFY(!EncodeSource(QString(QChar(0x20AC)), source.encoding, bytes));
        QCOMPARE(bytes, QByteArray("unchanged"));
    }

    void safeWriteLeavesTheOldFileWholeOnEveryFailure()
    {
        WorkFolder folder;
        const QString path = folder.Path("prog.asm");
        QVERIFY(folder.Write("prog.asm", "old text\n"));
        QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup);
        for (SaveStep failing : {SaveStep::Open, SaveStep::Write, SaveStep::Commit}) {
            SetSaveFaultHook([failing](SaveStep step, const QString&) {
                return step == failing ? QStringLiteral("No space left on device") : QString();
            });
            QString error;
            QVERIFY(!WriteFileSafely(path, "new text\n", error));
            QCOMPARE(error, QStringLiteral("No space left on device"));
            QFile old(path);
            QVERIFY(old.open(QIODevice::ReadOnly));
            QCOMPARE(old.readAll(), QByteArray("old text\n"));
            QCOMPARE(QDir(folder.dir.path()).entryList(QDir::Files), QStringList{"prog.asm"});
        }
        SetSaveFaultHook({});
        QString error;
        QVERIFY(WriteFileSafely(path, "new text\n", error));
        QFile written(path);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), QByteArray("new text\n"));
        QCOMPARE(written.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther),
                 QFileDevice::Permissions(QFileDevice::ReadGroup));
        // A folder that does not exist is the real system's failure, told in its words.
        QVERIFY(!WriteFileSafely(folder.Path("no/such/prog.asm"), "x", error));
        QVERIFY(!error.isEmpty());
    }

    void findTakesTheNearestMatchInItsDirection_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("selStart");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<bool>("down");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<int>("found");
        QTest::newRow("down behind a selected match") << "ab ab ab" << "ab" << 3 << 2 << true << true << false << 6;
        QTest::newRow("up before a selected match") << "ab ab ab" << "ab" << 3 << 2 << false << true << false << 0;
        QTest::newRow("no wrap at the end") << "ab ab ab" << "ab" << 6 << 2 << true << true << false << -1;
        QTest::newRow("up counts from the top") << "ababa" << "aba" << 5 << 0 << false << true << false << 0;
        QTest::newRow("case folded") << "mov MOV" << "MOV" << 0 << 0 << true << false << false << 0;
        QTest::newRow("case kept") << "mov MOV" << "MOV" << 0 << 0 << true << true << false << 4;
        QTest::newRow("word at the start") << "ab abc" << "ab" << 0 << 0 << true << true << true << 0;
        QTest::newRow("word at the end") << "abc_ab ab" << "ab" << 0 << 0 << true << true << true << 7;
        QTest::newRow("word inside only") << "xabx" << "ab" << 0 << 0 << true << true << true << -1;
        QTest::newRow("word up at the start") << "ab xab" << "ab" << 6 << 0 << false << true << true << 0;
        QTest::newRow("across lines") << "a\nb a\nb" << "a\nb" << 1 << 0 << true << true << false << 4;
    }
    void findTakesTheNearestMatchInItsDirection()
    {
        QFETCH(QString, text);
        QFETCH(QString, what);
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(bool, down);
        QFETCH(bool, matchCase);
        QFETCH(bool, wholeWord);
        QFETCH(int, found);
        QCOMPARE(FindMatch(text, what, selStart, selLength, {down, matchCase, wholeWord}), qsizetype(found));
    }

    void replaceAllTakesEachMatchOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("selStart");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<bool>("down");
        QTest::addColumn<QList<qsizetype>>("matches");
        QTest::newRow("down from the top") << "a a a" << "a" << 0 << 0 << true << QList<qsizetype>{0, 2, 4};
        QTest::newRow("selected match first") << "a a a" << "a" << 2 << 1 << true << QList<qsizetype>{2, 4};
        QTest::newRow("up, nearest first") << "a a a" << "a" << 4 << 0 << false << QList<qsizetype>{2, 0};
        QTest::newRow("up with a selected match") << "a a a" << "a" << 4 << 1 << false << QList<qsizetype>{4, 2, 0};
        QTest::newRow("selection in another case is not taken") << "A a" << "a" << 0 << 1 << true
                                                                << QList<qsizetype>{2};
        QTest::newRow("none") << "bbb" << "a" << 0 << 0 << true << QList<qsizetype>{};
    }
    void replaceAllTakesEachMatchOnce()
    {
        QFETCH(QString, text);
        QFETCH(QString, what);
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(bool, down);
        QFETCH(QList<qsizetype>, matches);
        QCOMPARE(MatchesToReplace(text, what, selStart, selLength, {down, false, false}), matches);
    }

    void goToLineEntry()
    {
        const struct {
            const char* entry;
            qsizetype line;
        } rows[] = {{"1", 0}, {"12", 9}, {"999999999", 9}, {"0", -1}, {"1a", -1}, {"-3", -1}, {" 2", -1}, {"", -1}};
        for (const auto& row : rows)
            QCOMPARE(LineOfEntry(QString::fromLatin1(row.entry), 9), row.line);
    }

    void colouringNamesThePartsOfALine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QList<AsmSpan>>("parts");
        using P = AsmPart;
        QTest::newRow("label, mnemonic, hex, comment")
            << "LOOP  LDAA #$1F  load" << QList<AsmSpan>{{P::Label, 0, 4}, {P::Mnemonic, 6, 4}, {P::Number, 12, 3},
                                                         {P::Comment, 17, 4}};
        QTest::newRow("four notations") << " FCB 12,$A,%101,@17"
                                        << QList<AsmSpan>{{P::Directive, 1, 3}, {P::Number, 5, 2}, {P::Number, 8, 2},
                                                          {P::Number, 11, 4}, {P::Number, 16, 3}};
        QTest::newRow("no operand: the rest is comment") << " NOP  wait 5"
                                                         << QList<AsmSpan>{{P::Mnemonic, 1, 3}, {P::Comment, 6, 6}};
        QTest::newRow("alias, symbols stay plain") << " LSLA" << QList<AsmSpan>{{P::Mnemonic, 1, 4}};
        QTest::newRow("operator % and a symbol with digits") << " LDAA X1%3"
                                                             << QList<AsmSpan>{{P::Mnemonic, 1, 4}, {P::Number, 9, 1}};
        QTest::newRow("character constant") << " LDAA #'A" << QList<AsmSpan>{{P::Mnemonic, 1, 4}, {P::String, 7, 2}};
        QTest::newRow("string with blanks") << " FCC /a b/ text"
                                            << QList<AsmSpan>{{P::Directive, 1, 3}, {P::String, 5, 5},
                                                              {P::Comment, 11, 4}};
        QTest::newRow("comment line") << "* all of it" << QList<AsmSpan>{{P::Comment, 0, 11}};
        QTest::newRow("label then comment") << "L2  ; why" << QList<AsmSpan>{{P::Label, 0, 2}, {P::Comment, 4, 5}};
        QTest::newRow("unknown word") << " FOO 1" << QList<AsmSpan>{{P::Number, 5, 1}};
    }
    void colouringNamesThePartsOfALine()
    {
        QFETCH(QString, line);
        QFETCH(QList<AsmSpan>, parts);
        QCOMPARE(ColourParts(line), parts);
    }
};

QTEST_MAIN(SourceTextTest)
#include "SourceText_test.moc"
