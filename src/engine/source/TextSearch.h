// The search of the Find and Replace dialog over a plain text: no widgets,
// positions count characters from 0.
#pragma once

#include <QList>
#include <QString>

struct SearchOptions {
    bool down = true;
    bool matchCase = false;
    bool wholeWord = false;   // no letter, digit or '_' may touch the match
};

// The match nearest the selection in the search's direction, or -1. Down
// starts right behind the selection; up takes the last of the matches that
// lie wholly before it, counted without overlap from the top of the text.
qsizetype FindMatch(const QString& text, const QString& what, qsizetype selStart, qsizetype selLength,
                    const SearchOptions& options);

// Every match a Replace All takes, as positions in text, in the order of the
// search: after the selection going down, before it going up (the match
// nearest the selection first). A selection that is the search text itself
// comes first. Each match of the text is taken once, so a replacement that
// contains the search text is never searched again.
QList<qsizetype> MatchesToReplace(const QString& text, const QString& what, qsizetype selStart,
                                  qsizetype selLength, const SearchOptions& options);

// The 0-based line that Go To Line moves to for the typed text, limited to
// lastLine; -1 if the text is not a number from 1 up in plain digits.
qsizetype LineOfEntry(const QString& entry, qsizetype lastLine);
