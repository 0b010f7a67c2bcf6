// Source files on disk: how the bytes of a file become the editor's text and
// back again, unchanged apart from the user's edits.
#pragma once

#include "engine/source/LineEnds.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

// How a file's bytes were read, so that they are written the same way.
struct SourceEncoding {
    bool utf8 = true;    // valid UTF-8; otherwise one byte a character
    bool bom = false;    // a UTF-8 file that starts with a byte order mark, kept out of the text
    LineEnd lineEnd = LineEnd::Lf;   // the end of most lines, which new lines take
};

struct DecodedSource {
    QString text;        // lines end as in the file
    SourceEncoding encoding;
};

// The editor's text of a file, a character for each byte or UTF-8 sequence.
// UTF-8 that the text control would break where the file has no line end is
// read a byte a character too. New documents use the default encoding.
DecodedSource DecodeSource(const QByteArray& bytes);

// The bytes of a text in a file's encoding; the line ends are the text's own.
// False when the text holds a character that a one-byte file cannot store.
bool EncodeSource(const QString& text, const SourceEncoding& encoding, QByteArray& bytes);

// Reads a whole file; on failure returns false and the platform's description.
bool ReadSourceFile(const QString& path, QByteArray& bytes, QString& error);

// The editor's text written to path in the file's encoding by WriteFileSafely;
// false with what the user is told when a character does not fit the
// encoding or the write failed.
bool SaveSourceText(const QString& path, const QString& text, const SourceEncoding& encoding, QString& error);

// a and b name the same file; a file that does not exist yet is compared by its absolute path.
bool SameFile(const QString& a, const QString& b);

// The Save As filter's entry for a file name: 1 .asm, 2 .lst, 3 .txt, 4 anything else.
int SaveFilterIndexOf(const QString& fileName);

// A file as the editor last saw it on disk; a change of size or time since
// then is somebody else's.
struct DiskStamp {
    bool exists = false;
    qint64 size = -1;
    QDateTime modified;
    bool operator==(const DiskStamp&) const = default;
};
DiskStamp StampOf(const QString& path);
