// The serial terminal's keys: what a key sends to the board. Nothing typed
// ever reaches the screen; the window swallows every key and sends what this
// gives (one write per key).
//
// Enter sends carriage return and line feed, Backspace the byte 8, both in
// board mode whether or not the program runs. Delete, the page, Home, End and
// arrow keys, and Control with A, C, V, X or Z do nothing. Any other key that
// has a character sends it in the DOS code page 852, in board mode and only
// while the board runs the program; a character that code page lacks sends
// nothing.
#pragma once

#include <QByteArray>
#include <QString>

QByteArray TerminalKeyBytes(int key, bool control, const QString& text, bool boardMode, bool boardRunning);
