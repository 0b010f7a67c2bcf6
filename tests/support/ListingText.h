// Listing lines in the assembler's fixed columns, for the tests of the
// symbol reader: line number in 1-4, address in 6-9, up to five code bytes
// from column 11 on, source text from column 28.
#pragma once

#include <QString>
#include <QStringList>

// Bytes are given as their two hex characters; fewer than five leave the
// remaining places blank.
QString ListingLine(const QString& number, const QString& address, const QStringList& bytes, const QString& source);
// The same with a line number and address written from values.
QString ListingLine(int number, int address, const QStringList& bytes, const QString& source);

// Writes the lines, each ended by lineEnd, as single-byte text to a new
// file in folder; returns its full path.
QString WriteListing(const QString& folder, const QString& name, const QStringList& lines,
                     const QString& lineEnd = QStringLiteral("\r\n"));
