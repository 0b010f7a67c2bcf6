// The editor's logic without windows.

#include "engine/source/AsmColouring.h"
#include "engine/source/SourceFile.h"
#include "engine/source/TextSearch.h"
#include "platform/SafeFile.h"
#include "support/FileSizeLimit.h"
#include "support/WorkFolder.h"

class SourceTextTest : public QObject {
    Q_OBJECT
private slots:
    // Files keep their bytes through edits and saves in the editor's test, with
    // every kind of line end and encoding; here what cannot be stored.
    void oneByteFileRefusesWhatItCannotStore()
    {
        const DecodedSource source = DecodeSource("\xe9\n");
        QVERIFY(!source.encoding.utf8 && source.text == QString(QChar(0xE9)) + "\n");
        QByteArray bytes = "unchanged";
        QVERIFY(!EncodeSource(QString(QChar(0x20AC)), source.encoding, bytes) && bytes == "unchanged");
    }

    // No folder for the temporary file, a full disk, a folder in the way of the rename: the old
    // file stays whole, nothing else stays behind, the system's words come back.
    void safeWriteLeavesTheOldFileWholeOnEveryFailure()
    {
        WorkFolder folder;
        const QByteArray old = QByteArray("old text\n").repeated(40);
        QVERIFY(folder.Write("prog.asm", old) && QDir(folder.dir.path()).mkdir("taken.asm"));
        const std::pair<const char*, const char*> rows[] = {
            {"no/such/prog.asm", "No such file or directory"}, {"prog.asm", "File too large"},
            {"taken.asm", "Is a directory"}};
        for (const auto& [name, reason] : rows) {
            QString error;
            {
                FileSizeLimit full(1000);
                QVERIFY(!WriteFileSafely(folder.Path(name), QByteArray("new text\n").repeated(400), error));
            }
            QCOMPARE(tuple(error, folder.Read("prog.asm")), tuple(reason, old));
            QCOMPARE(QDir(folder.dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                     (QStringList{"prog.asm", "taken.asm"}));
        }
        // Written through a link: the linked file takes the bytes and keeps its permissions, the link stays.
        const QString path = folder.Path("prog.asm");
        QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup));
        QVERIFY(QFile::link(path, folder.Path("link.asm")));
        QString error;
        QVERIFY(WriteFileSafely(folder.Path("link.asm"), "new text\n", error));
        QVERIFY(folder.Read("prog.asm") == "new text\n" && QFileInfo(folder.Path("link.asm")).isSymLink());
        QCOMPARE(QFile::permissions(path) & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup),
                 QFileDevice::Permissions(QFileDevice::ReadGroup));
    }

    void findTakesTheNearestMatchInItsDirection()
    {
        const struct {
            const char *text, *what;
            int selStart, selLength;
            bool down, matchCase, wholeWord;
            int found;
        } rows[] = {
            {"ab ab ab", "ab", 3, 2, true, true, false, 6},     // behind a selected match
            {"ab ab ab", "ab", 3, 2, false, true, false, 0},    // before it, upward
            {"ab ab ab", "ab", 6, 2, true, true, false, -1},    // no wrap at the end
            {"ababa", "aba", 5, 0, false, true, false, 0},      // upward counts from the top
            {"mov MOV", "MOV", 0, 0, true, false, false, 0},
            {"mov MOV", "MOV", 0, 0, true, true, false, 4},
            {"ab abc", "ab", 0, 0, true, true, true, 0},
            {"abc_ab ab", "ab", 0, 0, true, true, true, 7},
            {"xabx", "ab", 0, 0, true, true, true, -1},
            {"ab xab", "ab", 6, 0, false, true, true, 0},
            {"a\nb a\nb", "a\nb", 1, 0, true, true, false, 4},
        };
        for (const auto& r : rows)
            QVERIFY2(FindMatch(r.text, r.what, r.selStart, r.selLength, {r.down, r.matchCase, r.wholeWord}) == r.found,
                     r.text);
    }

    void replaceAllTakesEachMatchOnce()
    {
        const struct { const char* text; int selStart, selLength; bool down; QList<qsizetype> matches; } rows[] = {
            {"a a a", 0, 0, true, {0, 2, 4}},   {"a a a", 2, 1, true, {2, 4}},
            {"a a a", 4, 0, false, {2, 0}},     {"a a a", 4, 1, false, {4, 2, 0}},
            {"A a", 0, 1, true, {2}},           // a selection in another case is not taken
            {"bbb", 0, 0, true, {}},
        };
        for (const auto& r : rows)
            QCOMPARE(MatchesToReplace(r.text, "a", r.selStart, r.selLength, {r.down, false, false}), r.matches);
    }

    void goToLineEntry()
    {
        for (const auto& [entry, line] : {std::pair<const char*, qsizetype>{"1", 0}, {"12", 9}, {"999999999", 9},
                                          {"0", -1}, {"1a", -1}, {"-3", -1}, {" 2", -1}, {"", -1}})
            QCOMPARE(LineOfEntry(QString::fromLatin1(entry), 9), line);
    }

    void colouringNamesThePartsOfALine()
    {
        using P = AsmPart;
        const std::pair<const char*, QList<AsmSpan>> rows[] = {
            {"LOOP  LDAA #$1F  load", {{P::Label, 0, 4}, {P::Mnemonic, 6, 4}, {P::Number, 12, 3}, {P::Comment, 17, 4}}},
            {" FCB 12,$A,%101,@17",
             {{P::Directive, 1, 3}, {P::Number, 5, 2}, {P::Number, 8, 2}, {P::Number, 11, 4}, {P::Number, 16, 3}}},
            {" NOP  wait 5", {{P::Mnemonic, 1, 3}, {P::Comment, 6, 6}}},   // no operand: the rest is comment
            {" LSLA", {{P::Mnemonic, 1, 4}}},
            {" LDAA X1%3", {{P::Mnemonic, 1, 4}, {P::Number, 9, 1}}},   // % an operator, X1 a symbol
            {" LDAA #'A", {{P::Mnemonic, 1, 4}, {P::String, 7, 2}}},
            {" FCC /a b/ text", {{P::Directive, 1, 3}, {P::String, 5, 5}, {P::Comment, 11, 4}}},
            {"* all of it", {{P::Comment, 0, 11}}},
            {"L2  ; why", {{P::Label, 0, 2}, {P::Comment, 4, 5}}},
            {" FOO 1", {{P::Number, 5, 1}}},
        };
        for (const auto& [line, parts] : rows)
            QCOMPARE(ColourParts(line), parts);
    }
};

QTEST_MAIN(SourceTextTest)
#include "SourceText_test.moc"
