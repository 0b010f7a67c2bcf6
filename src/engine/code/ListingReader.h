// Reading the assembler's listing by fixed columns. A listing line that
// counts becomes one SymbolTable entry: its address, its code bytes, its label
// and its source text. Nothing here knows assembler syntax beyond the four
// data directives whose lines keep a label but no code.
//
//   0003 1000 86 12            START LDAA #$12
//   ^    ^    ^  ^  ^  ^  ^    ^
//   1    6    11 14 17 20 23   28   (columns, counted from 1)
#pragma once

#include "engine/code/SymbolTable.h"

#include <QString>
#include <functional>
#include <stdexcept>

class QIODevice;

// True when the line, as read and before its tabs are expanded, has at least
// 28 characters, a number in columns 1-4, a hexadecimal address in 6-9 and
// blanks in columns 5, 10, 13, 16, 19, 22 and 25-27.
bool ListingLineCounts(const QString& line);

// Fills entry from a line that counts and returns true; a line that doesn't
// count leaves entry untouched and gives false.
bool ReadListingLine(const QString& line, SymbolEntry& entry);

// A failure while reading: the text is what the user is told.
class ListingReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The lines of single-byte text, split at CR LF, LF or a lone CR, however
// long they are and whatever bytes they hold.
class ListingLines {
public:
    explicit ListingLines(QIODevice& device);
    // The next line without its end; false at the end of the data. A failing
    // device throws ListingReadError with its own error text.
    bool Next(QString& line);

private:
    bool Fill();

    QIODevice& device_;
    QByteArray buffer_;
    qsizetype position_ = 0;
    bool atEnd_ = false;
};

// Rebuilds SymbolTable and SymbolCount from the listing on device. afterLine
// runs after every line, counted or not. A failure part-way throws and leaves
// the entries read so far in the table; so does a listing with more counted
// lines than SymbolCount can number (32767).
void ReadSymbols(QIODevice& device, const std::function<void()>& afterLine);

// Reading a listing file into SymbolTable by ReadSymbols.
struct ListingLoad {
    bool opened = false;   // false: the file could not be opened and the old table stays
    QString failure;       // why the file could not be opened or read to its end; empty when all went well
};
ListingLoad LoadListingFile(const QString& path, const std::function<void()>& afterLine);
