// Line ends in a source file: a file may end its lines in CR LF, LF or a lone
// CR, even mixed; the editor keeps each line's own (see the editor's
// DocumentLineEnds) and a line the user adds takes the end most lines have.
#pragma once

#include <QChar>
#include <QLatin1String>
#include <QString>
#include <cstdint>

enum class LineEnd : std::uint8_t { CrLf, Lf, Cr };

// The end that most lines of text have (CR LF, LF, CR first at a tie);
// otherwise when the text has no line end at all.
LineEnd UsualLineEnd(const QString& text, LineEnd otherwise);

// A character the text control takes for a line break: a Unicode line or
// paragraph separator, or one of its frame marks.
inline bool TextControlBreak(QChar c)
{
    return c == QChar::LineSeparator || c == QChar::ParagraphSeparator || c == QChar(0xFDD0) || c == QChar(0xFDD1);
}

// The text holds a character that the text control would take for a line break.
bool BreaksInTheTextControl(const QString& text);

inline QLatin1String TextOf(LineEnd end)
{
    return end == LineEnd::CrLf ? QLatin1String("\r\n") : end == LineEnd::Lf ? QLatin1String("\n") : QLatin1String("\r");
}

// Calls found(at, length, end) for each line end of text, in order: CR LF,
// LF and CR, and with separators too the text control's own breaks (as LF).
template <typename Found>
void ForEachLineEnd(const QString& text, bool separators, Found found)
{
    const qsizetype size = text.size();
    const QChar* chars = text.constData();
    for (qsizetype i = 0; i < size; ++i) {
        if (chars[i] == u'\r') {
            const bool crlf = i + 1 < size && chars[i + 1] == u'\n';
            found(i, 1 + crlf, crlf ? LineEnd::CrLf : LineEnd::Cr);
            i += crlf;
        } else if (chars[i] == u'\n' || (separators && TextControlBreak(chars[i]))) {
            found(i, 1, LineEnd::Lf);
        }
    }
}
