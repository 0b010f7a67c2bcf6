#include "source/AsmColouring.h"

#include "source/hc11/AsmKeywords.h"
#include "source/hc11/AsmSourceLine.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QTextLayout>

using namespace hc11::as11;

namespace {
bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsNameChar(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '.';
}

// Only the inherent form: whatever follows the mnemonic is a comment.
bool TakesNoOperand(const InstructionForms& forms)
{
    for (std::size_t mode = 1; mode < forms.byMode.size(); ++mode)
        if (forms.byMode[mode])
            return false;
    return true;
}

class LineParts {
public:
    explicit LineParts(const QString& line) : bytes_(line.toLatin1()), text_(bytes_.constData(), bytes_.size()) {}

    QList<AsmSpan> Parts()
    {
        const SourceLine fields = SplitLine(text_);
        if (!fields.label.empty())
            Add(AsmPart::Label, fields.label.data(), fields.label.size());
        if (fields.mnemonic.empty()) {
            // Nothing but a label, a comment or blanks.
            const std::size_t from = fields.label.empty() ? 0 : Offset(fields.label.data()) + fields.label.size();
            const std::size_t mark = text_.find_first_not_of(" \t:", from);
            if (mark != std::string_view::npos)
                Add(AsmPart::Comment, text_.data() + mark, text_.size() - mark);
            return spans_;
        }
        const Keyword keyword = FindKeyword(fields.mnemonic);
        if (keyword.instruction)
            Add(AsmPart::Mnemonic, fields.mnemonic.data(), fields.mnemonic.size());
        else if (keyword.directive != Directive::None)
            Add(AsmPart::Directive, fields.mnemonic.data(), fields.mnemonic.size());
        std::string_view rest = fields.rest;
        std::string_view operand;
        if (keyword.instruction && TakesNoOperand(*keyword.instruction))
            operand = {};
        else if (keyword.directive == Directive::Fcc)
            operand = DelimitedString(rest);
        else
            operand = OperandField(rest);
        if (keyword.directive == Directive::Fcc)
            Add(AsmPart::String, operand.data(), operand.size());
        else
            Operand(operand);
        const std::size_t commentAt = rest.find_first_not_of(" \t", operand.size());
        if (commentAt != std::string_view::npos)
            Add(AsmPart::Comment, rest.data() + commentAt, rest.size() - commentAt);
        return spans_;
    }

private:
    // FCC's text runs from its first character to the next one like it.
    static std::string_view DelimitedString(std::string_view rest)
    {
        if (rest.empty())
            return rest;
        const std::size_t close = rest.find(rest[0], 1);
        return rest.substr(0, close == std::string_view::npos ? rest.size() : close + 1);
    }

    void Operand(std::string_view operand)
    {
        std::size_t i = 0;
        while (i < operand.size()) {
            const char c = operand[i];
            const bool tokenStart = i == 0 || !IsNameChar(operand[i - 1]);
            const char next = i + 1 < operand.size() ? operand[i + 1] : '\0';
            std::size_t end = i;
            if (c == '\'') {
                end = std::min(operand.size(), i + (i + 2 < operand.size() && operand[i + 2] == '\'' ? 3 : 2));
                Add(AsmPart::String, operand.data() + i, end - i);
                i = end;
                continue;
            }
            if (tokenStart && c == '$' && IsHexDigit(next))
                for (end = i + 1; end < operand.size() && IsHexDigit(operand[end]);) ++end;
            else if (tokenStart && c == '%' && (next == '0' || next == '1'))
                for (end = i + 1; end < operand.size() && (operand[end] == '0' || operand[end] == '1');) ++end;
            else if (tokenStart && c == '@' && next >= '0' && next <= '7')
                for (end = i + 1; end < operand.size() && operand[end] >= '0' && operand[end] <= '7';) ++end;
            else if (tokenStart && c >= '0' && c <= '9')
                for (end = i; end < operand.size() && operand[end] >= '0' && operand[end] <= '9';) ++end;
            if (end > i) {
                Add(AsmPart::Number, operand.data() + i, end - i);
                i = end;
            } else {
                ++i;
            }
        }
    }

    std::size_t Offset(const char* at) const { return static_cast<std::size_t>(at - text_.data()); }

    void Add(AsmPart part, const char* at, std::size_t length)
    {
        if (length > 0)
            spans_ << AsmSpan{part, static_cast<qsizetype>(Offset(at)), static_cast<qsizetype>(length)};
    }

    QByteArray bytes_;   // one byte a character, so offsets are the line's positions
    std::string_view text_;
    QList<AsmSpan> spans_;
};

QTextCharFormat Coloured(QColor colour, bool italic = false)
{
    QTextCharFormat format;
    format.setForeground(colour);
    format.setFontItalic(italic);
    return format;
}
}  // namespace

QList<AsmSpan> ColourParts(const QString& line)
{
    return LineParts(line).Parts();
}

namespace {
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
