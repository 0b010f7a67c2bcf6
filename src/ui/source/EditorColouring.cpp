// The painter of the editors' assembly colouring: the parts come from
// ColourParts (engine/source/AsmColouring.h); this paints them as lines come into view.
#include "ui/source/EditorColouring.h"

#include "engine/source/AsmColouring.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QTextLayout>

namespace {
QTextCharFormat Coloured(QColor colour, bool italic = false)
{
    QTextCharFormat format;
    format.setForeground(colour);
    format.setFontItalic(italic);
    return format;
}

// A line's block state: coloured for its current text, or waiting.
constexpr int WaitingState = -1, ColouredState = 0;

const QTextCharFormat& FormatOf(AsmPart part)
{
    static const QTextCharFormat formats[] = {
        Coloured(QColor(0x80, 0x00, 0x80)),          // label
        Coloured(QColor(0x00, 0x00, 0xC0)),          // mnemonic
        Coloured(QColor(0x00, 0x80, 0x80)),          // directive
        Coloured(QColor(0xB0, 0x50, 0x00)),          // number
        Coloured(QColor(0x00, 0x80, 0x00)),          // string
        Coloured(QColor(0x80, 0x80, 0x80), true),    // comment
    };
    return formats[static_cast<int>(part)];
}
}  // namespace

AsmColourer::AsmColourer(QPlainTextEdit* text) : QObject(text), text_(text)
{
    text->viewport()->installEventFilter(this);
    connect(text->document(), &QTextDocument::contentsChange, this, &AsmColourer::TextChanged);
}

void AsmColourer::TextChanged(int from, int, int added)
{
    if (colouring_)
        return;
    // New lines start out waiting; a line whose text changed waits again.
    const QTextDocument* document = text_->document();
    const QTextBlock last = document->findBlock(from + added);
    for (QTextBlock block = document->findBlock(from); block.isValid(); block = block.next()) {
        block.setUserState(WaitingState);
        if (block == last)
            break;
    }
}

bool AsmColourer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && watched == text_->viewport())
        ColourVisibleLines();
    return QObject::eventFilter(watched, event);
}

void AsmColourer::ColourVisibleLines()
{
    QTextDocument* document = text_->document();
    const QRect view = text_->viewport()->rect();
    const QTextBlock first = text_->cursorForPosition(view.topLeft()).block();
    const QTextBlock last = text_->cursorForPosition(view.bottomLeft()).block();
    colouring_ = true;
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        if (block.userState() != ColouredState) {
            QList<QTextLayout::FormatRange> ranges;
            for (const AsmSpan& span : ColourParts(block.text()))
                ranges << QTextLayout::FormatRange{static_cast<int>(span.start), static_cast<int>(span.length),
                                                   FormatOf(span.part)};
            block.layout()->setFormats(ranges);
            block.setUserState(ColouredState);
            document->markContentsDirty(block.position(), block.length());
        }
        if (block == last)
            break;
    }
    colouring_ = false;
}
