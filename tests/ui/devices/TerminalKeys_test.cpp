#include "ui/devices/TerminalKeys.h"

class TerminalKeysTest : public QObject {
    Q_OBJECT
private slots:
    // What the keys send: the Windows 1250 letters of the key table arrive in
    // code page 852, the edit keys send nothing.
    void keys()
    {
        const struct { int key; bool control; QString text; bool board, running; QByteArray sent; } rows[] = {
            {Qt::Key_Return, false, "\r", true, false, "\r\n"}, {Qt::Key_Backspace, false, "\b", true, false, "\b"},
            {Qt::Key_Return, false, "\r", false, true, ""},      // simulator
            {Qt::Key_Q, false, "q", true, false, ""},             // idle
            {Qt::Key_Q, false, "q", true, true, "q"}, {Qt::Key_Q, false, "q", false, true, ""},
            {Qt::Key_C, true, "\x03", true, true, ""}, {Qt::Key_B, true, "\x02", true, true, "\x02"},
            {Qt::Key_C, false, "c", true, true, "c"}, {Qt::Key_Delete, false, "\x7f", true, true, ""},
            {Qt::Key_Left, false, "", true, true, ""}, {Qt::Key_unknown, false, QString(QChar(0x20AC)), true, true, ""},
        };
        for (const auto& row : rows)
            QVERIFY2(TerminalKeyBytes(row.key, row.control, row.text, row.board, row.running) == row.sent,
                     qPrintable(row.text));
        // Letters of the key table reach the board in code page 852.
        const std::pair<char16_t, int> letters[] = {{u'\u0160', 230}, {u'\u0141', 157}, {u'\u010D', 159}, {u'\u00DF', 225}};
        for (auto [c, code] : letters)
            QCOMPARE(TerminalKeyBytes(Qt::Key_unknown, false, QString(QChar(c)), true, true), QByteArray(1, char(code)));
    }
};

QTEST_MAIN(TerminalKeysTest)
#include "TerminalKeys_test.moc"
