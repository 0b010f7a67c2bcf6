#include "support/TerminalRows.h"

#include "engine/state/CodePage852.h"
#include "engine/state/TerminalScreen.h"

#include <random>

namespace {
// The old text brought up to date by a Change, as the window does it.
QString Apply(QString old, const TerminalScreen& screen, const TerminalScreen::Change& change)
{
    if (change.whole)
        return screen.Text();
    old.remove(0, change.droppedHead);
    return old.left(change.from) + screen.Text().mid(change.from);
}

}  // namespace

class TerminalScreenTest : public QObject {
    Q_OBJECT
private slots:
    void asciiSteps()
    {
        const struct { QByteArray bytes; QString text; int caret; } rows[] = {
            {"AB\rX", "XB", 1},                                     // carriage return overwrites
            {"ABC\rA\nZ", "ABC\nZ", 5},                             // line feed on the last line adds one
            {"ab\ncd\r\x08\r\nX", "ab\nXd", 4},                    // line feed in the middle moves only
            {"\x08", "", 0}, {"A\n\x08", "A\n", 1},                  // backspace at 0 and at a line start
            {"AB\x08", "A ", 1}, {"A\nB\x08\x08\x08Z", "Z\n ", 1},   // backspace blanks
            {"abc\tX", "abc     X", 9}, {"12345678\tX", "12345678        X", 17},
            {"abcdef\nline2\r\x08\r\t", "        \nline2", 8},       // tab overwrites, never past the line end
            {"abc\ndef\x0cZ", "Z", 1},                               // form feed clears, next byte at the top
            {"a\x01\x1b\x7f", "a\x7f", 2},                           // other control bytes do nothing
            {"\xc9\xcd\xbb\xa0", QString::fromUtf8("╔═╗á"), 4},      // code page 852
        };
        for (const auto& row : rows) {
            TerminalScreen screen;
            QString mirror;
            // Byte by byte and all at once give the same screen.
            for (char b : row.bytes)
                mirror = Apply(mirror, screen, screen.Display(QByteArray(1, b)));
            TerminalScreen once;
            const QString all = Apply(QString(), once, once.Display(row.bytes));
            QCOMPARE((QStringList{screen.Text(), mirror, all}), QStringList(3, row.text));
            QVERIFY2(screen.Caret() == row.caret && once.Caret() == row.caret, qPrintable(row.text));
        }
    }

    void bellBeepsInAsciiOnlyAndTheSimulatorShowsOneByte()
    {
        TerminalScreen screen;
        int beeps = 0;
        screen.Beep = [&] { ++beeps; };
        screen.Display("\x07x\x07");
        QCOMPARE(tuple(beeps, screen.Text()), tuple(2, "x"));
        screen.Display("yz", true);   // the simulator's output register holds one byte
        QCOMPARE(screen.Text(), QString("xy"));
        screen.SetMode(TerminalScreen::Mode::Hex);
        screen.Display("\x07");
        QCOMPARE(tuple(beeps, screen.Text()), tuple(2, HexRow("07", ".")));
    }

    void hexRows()
    {
        TerminalScreen screen;
        screen.Display("abc");
        screen.SetMode(TerminalScreen::Mode::Hex);
        QCOMPARE(screen.Text(), QString());
        QString mirror = Apply(QString(), screen, screen.Display("0123456789:;<=>?"));
        QCOMPARE(screen.Text(), HexRow("30 31 32 33 34 35 36 37 38 39 3A 3B 3C 3D 3E 3F", "0123456789:;<=>?"));
        QCOMPARE(screen.Caret(), 67);
        mirror = Apply(mirror, screen, screen.Display("A\xff"));
        QCOMPARE(tuple(screen.HexRowStart(), screen.HexColumn(), screen.Caret()), tuple(68, 2, 68 + 53));
        QCOMPARE(screen.Text().mid(68), HexRow("41 FF", QString("A") + FromCodePage852(0xff)));
        QCOMPARE(mirror, screen.Text());
        // Switching back clears, and the next Hex byte starts a new layout.
        screen.SetMode(TerminalScreen::Mode::Ascii);
        screen.SetMode(TerminalScreen::Mode::Hex);
        screen.Display("\n");
        QCOMPARE(screen.Text(), HexRow("0A", "."));
    }

    // Random traffic in both modes with a small cap: the window's mirror follows, block by block or
    // several at once; the line count stays bounded, and the newest text survives.
    void changesKeepTheMirrorAndTheCap()
    {
        for (auto mode : {TerminalScreen::Mode::Ascii, TerminalScreen::Mode::Hex}) {
            TerminalScreen screen(20);
            screen.SetMode(mode);
            std::mt19937 random(7);
            const char alphabet[] = "abcdefgh\r\n\n\t\x08\x08 xyz";
            QString mirror, drawn;
            for (int block = 0; block < 400; ++block) {
                QByteArray bytes;
                for (int n = random() % 40; n > 0; --n)
                    bytes += alphabet[random() % (sizeof alphabet - 1)];
                if (block % 97 == 96)
                    bytes += '\x0c';
                mirror = Apply(mirror, screen, screen.Display(bytes));
                QCOMPARE(mirror, screen.Text());
                if (random() % 5 == 0) {
                    drawn = Apply(drawn, screen, screen.TakeChanges());
                    QCOMPARE(drawn, screen.Text());
                }
                QVERIFY(screen.LineCount() <= 20 + 20 / 8 + 1 && screen.Caret() >= 0 && screen.Caret() <= screen.Text().size());
            }
            QCOMPARE(screen.LineCount(), int(screen.Text().count('\n')) + 1);
            if (mode == TerminalScreen::Mode::Hex)
                QCOMPARE(screen.Text().mid(screen.HexRowStart() + 49, 1), QString("|"));
        }
        // Ascii lines written at the end: the oldest go, the newest stay.
        TerminalScreen screen(10);
        for (int i = 0; i < 100; ++i)
            screen.Display(QByteArray::number(i) + "\r\n");
        QVERIFY(screen.LineCount() <= 12 && screen.Text().endsWith("98\n99\n"));
        screen.Display("\rX");
        QVERIFY(screen.Text().endsWith("99\nX"));
        // Lines written and backspaced over in one block: the caret went up past the cap.
        screen.Display(QByteArray(30, '\n') + QByteArray(60, '\x08'));
        QVERIFY(screen.LineCount() <= 12);
    }

    void codePage()
    {
        for (int b = 0; b < 256; ++b)
            QCOMPARE(ToCodePage852(FromCodePage852(std::uint8_t(b))), std::optional<std::uint8_t>(b));
        QCOMPARE(ToCodePage852(QChar(0x20AC)), std::optional<std::uint8_t>());   // the euro sign
    }
};

QTEST_MAIN(TerminalScreenTest)
#include "TerminalScreen_test.moc"
