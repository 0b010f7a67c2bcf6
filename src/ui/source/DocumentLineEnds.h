// Line ends in an editor's document: each line keeps its own through every
// edit, undo and redo, and a line the user adds takes the usual one.
//
// The document's blocks are the file's lines. The line end in front of a
// block is kept in that block's format, and only where it is not the usual
// one. The text control then keeps it right by itself: joining two lines
// drops the line end between them and keeps the first block's format, the
// one in front of both, and undo and redo give formats back with the text.
#pragma once

#include "engine/source/LineEnds.h"

class QTextCursor;
class QTextDocument;

// After document.setPlainText(text), whose lines end in CR LF, LF or CR:
// each line whose end is not the usual one keeps its own. Leaves no undo step.
void KeepLineEnds(QTextDocument& document, const QString& text, LineEnd usual);

// The document's text with every line's own end, the usual one where none is kept.
QString TextWithLineEnds(const QTextDocument& document, LineEnd usual);

// Replaces the cursor's selection by text, as one undo step. Each line break
// in the text (CR LF, LF, CR, a Unicode line or paragraph separator) starts a
// new line with the usual end. Lines put behind the end of a line come after
// it, so that line keeps its own end.
void InsertLines(QTextCursor& cursor, const QString& text);
