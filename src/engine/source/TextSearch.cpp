#include "engine/source/TextSearch.h"

namespace {
bool IsWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool StandsAlone(const QString& text, qsizetype at, qsizetype length)
{
    const qsizetype end = at + length;
    return (at == 0 || !IsWordChar(text[at - 1])) && (end >= text.size() || !IsWordChar(text[end]));
}

// The first match at or behind from that ends at or before limit; -1 if none.
// Case-insensitive matching folds each character alone, so positions are
// those of the text itself.
qsizetype NextMatch(const QString& text, const QString& what, qsizetype from, qsizetype limit,
                    const SearchOptions& options)
{
    const Qt::CaseSensitivity cs = options.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const QStringView region = QStringView(text).left(limit);
    for (qsizetype at = region.indexOf(what, from, cs); at >= 0; at = region.indexOf(what, at + 1, cs))
        if (!options.wholeWord || StandsAlone(text, at, what.size()))
            return at;
    return -1;
}

// Matches before limit, counted without overlap from the top.
QList<qsizetype> MatchesBefore(const QString& text, const QString& what, qsizetype limit,
                               const SearchOptions& options)
{
    QList<qsizetype> matches;
    for (qsizetype at = NextMatch(text, what, 0, limit, options); at >= 0;
         at = NextMatch(text, what, at + what.size(), limit, options))
        matches << at;
    return matches;
}
}  // namespace

qsizetype FindMatch(const QString& text, const QString& what, qsizetype selStart, qsizetype selLength,
                    const SearchOptions& options)
{
    if (what.isEmpty())
        return -1;
    if (options.down)
        return NextMatch(text, what, selStart + selLength, text.size(), options);
    const QList<qsizetype> before = MatchesBefore(text, what, selStart, options);
    return before.isEmpty() ? -1 : before.last();
}

QList<qsizetype> MatchesToReplace(const QString& text, const QString& what, qsizetype selStart,
                                  qsizetype selLength, const SearchOptions& options)
{
    QList<qsizetype> matches;
    if (what.isEmpty())
        return matches;
    // The selected text is replaced when it is the search text exactly, whatever the case option.
    const bool selectionMatches = QStringView(text).mid(selStart, selLength) == what;
    if (selectionMatches)
        matches << selStart;
    if (options.down) {
        for (qsizetype at = NextMatch(text, what, selStart + selLength, text.size(), options); at >= 0;
             at = NextMatch(text, what, at + what.size(), text.size(), options))
            matches << at;
    } else {
        const QList<qsizetype> before = MatchesBefore(text, what, selStart, options);
        for (auto it = before.rbegin(); it != before.rend(); ++it)
            matches << *it;
    }
    return matches;
}

qsizetype LineOfEntry(const QString& entry, qsizetype lastLine)
{
    if (entry.isEmpty())
        return -1;
    for (QChar c : entry)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return -1;
    bool ok = false;
    const qlonglong number = entry.toLongLong(&ok);
    if (!ok || number < 1)
        return -1;
    return qMin<qsizetype>(number - 1, lastLine);
}
