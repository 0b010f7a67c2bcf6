// The assembler's error file: a line is an error row when the text before its
// first colon is a line number above 0 ("12: unknown mnemonic", "$C: ...").
// Headers, summaries and blank lines are no rows.
#pragma once

#include <QList>
#include <QString>
#include <functional>

class QIODevice;

struct ErrorRow {
    int line;       // 1-based line in the source
    QString text;   // the whole line, as the user reads it
};

// The error row of one line of the file, if it is one.
bool ErrorRowOf(const QString& line, ErrorRow& row);

// Reads rows to the end of the device; afterEachLine runs after every line
// (the event pass). False when the device fails; the rows so far are kept.
bool ReadErrorRows(QIODevice& file, QList<ErrorRow>& rows, const std::function<void()>& afterEachLine = {});
