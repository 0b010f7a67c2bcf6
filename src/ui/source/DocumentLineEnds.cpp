#include "ui/source/DocumentLineEnds.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {
constexpr int LineEndProperty = QTextFormat::UserProperty + 1;

QTextBlockFormat Keeping(LineEnd end)
{
    QTextBlockFormat format;
    format.setProperty(LineEndProperty, static_cast<int>(end));
    return format;
}
}  // namespace

void KeepLineEnds(QTextDocument& document, const QString& text, LineEnd usual)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    cursor.beginEditBlock();   // one change for the layout, however many lines are marked
    QTextBlock block = document.begin();
    ForEachLineEnd(text, false, [&](qsizetype, qsizetype, LineEnd end) {
        block = block.next();
        if (end != usual) {
            cursor.setPosition(block.position());
            cursor.setBlockFormat(Keeping(end));
        }
    });
    cursor.endEditBlock();
    document.setUndoRedoEnabled(undo);
}

QString TextWithLineEnds(const QTextDocument& document, LineEnd usual)
{
    // The raw text has a paragraph separator between blocks; each becomes the
    // end in front of the next block. Formats are few, so each is read once.
    QString text = document.toRawText();
    QString withEnds;
    withEnds.reserve(text.size() + document.blockCount());
    QTextBlock block = document.begin();
    int lastFormat = -1;
    QLatin1String end;
    qsizetype from = 0;
    for (qsizetype at = text.indexOf(QChar::ParagraphSeparator); at >= 0;
         from = at + 1, at = text.indexOf(QChar::ParagraphSeparator, from)) {
        block = block.next();
        if (block.blockFormatIndex() != lastFormat) {
            lastFormat = block.blockFormatIndex();
            const QVariant kept = block.blockFormat().property(LineEndProperty);
            end = TextOf(kept.isValid() ? static_cast<LineEnd>(kept.toInt()) : usual);
        }
        withEnds += QStringView(text).mid(from, at - from);
        withEnds += end;
    }
    withEnds += QStringView(text).mid(from);
    return withEnds;
}

void InsertLines(QTextCursor& cursor, const QString& text)
{
    QStringList lines;
    qsizetype from = 0;
    ForEachLineEnd(text, true, [&](qsizetype at, qsizetype length, LineEnd) {
        lines << text.mid(from, at - from);
        from = at + length;
    });
    if (lines.isEmpty()) {
        cursor.insertText(text);
        return;
    }
    lines << text.mid(from);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const QTextBlock next = cursor.block().next();
    const bool behindLine = cursor.atBlockEnd() && next.isValid();
    const QTextBlockFormat inFrontOfNext = next.isValid() ? next.blockFormat() : QTextBlockFormat();
    const QTextBlockFormat usual;   // no end kept: the usual one
    cursor.insertText(lines.first());
    for (qsizetype i = 1; i < lines.size(); ++i) {
        cursor.insertBlock(i == 1 && behindLine ? inFrontOfNext : usual);
        cursor.insertText(lines[i]);
    }
    if (behindLine)
        QTextCursor(cursor.block().next()).setBlockFormat(usual);
    cursor.endEditBlock();
}
