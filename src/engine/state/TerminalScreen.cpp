#include "engine/state/TerminalScreen.h"

#include "engine/state/CodePage852.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace {
QString FreshHexRow()
{
    return QString(49, QLatin1Char(' ')) + QLatin1Char('|') + QString(17, QLatin1Char(' '));
}

QChar HexDigit(int v)
{
    return QLatin1Char("0123456789ABCDEF"[v & 15]);
}
}  // namespace

TerminalScreen::TerminalScreen(int maxLines) : maxLines_(std::max(1, maxLines)) {}

void TerminalScreen::SetMode(Mode mode)
{
    mode_ = mode;
    Clear();
}

void TerminalScreen::Clear()
{
    text_.clear();
    caret_ = lineStart_ = lineEnd_ = lineFeeds_ = 0;
    hexColumn_ = 0;
    hexRowStart_ = 0;
    untaken_ = {};
}

TerminalScreen::Change TerminalScreen::Display(const QByteArray& bytes, bool simulatorMode)
{
    dirtyFrom_ = INT_MAX;
    cleared_ = false;
    const qsizetype count = simulatorMode ? std::min<qsizetype>(bytes.size(), 1) : bytes.size();
    for (qsizetype i = 0; i < count; ++i) {
        const auto b = static_cast<std::uint8_t>(bytes[i]);
        if (mode_ == Mode::Ascii)
            AsciiStep(b);
        else
            HexStep(b);
    }
    const Change change = TrimAndReport();
    untaken_ = Merged(untaken_, change);
    return change;
}

TerminalScreen::Change TerminalScreen::TakeChanges()
{
    // Nothing untaken: a replacement from the end by nothing.
    return std::exchange(untaken_, Change{false, 0, static_cast<int>(text_.size())});
}

TerminalScreen::Change TerminalScreen::Merged(const Change& earlier, const Change& later)
{
    if (earlier.whole || later.whole)
        return {true, 0, 0};
    // The later drop takes the unchanged head first; once it reaches into
    // what the earlier change rewrote, everything from there is new.
    const int droppedUnchanged = std::min(later.droppedHead, earlier.from);
    return {false, earlier.droppedHead + droppedUnchanged,
            std::min(earlier.from - droppedUnchanged, later.from)};
}

void TerminalScreen::Replace(int pos, int count, const QString& s)
{
    text_.replace(pos, count, s);
    dirtyFrom_ = std::min(dirtyFrom_, pos);
}

void TerminalScreen::FindCaretLine()
{
    lineStart_ = caret_ > 0 ? static_cast<int>(text_.lastIndexOf(QLatin1Char('\n'), caret_ - 1)) + 1 : 0;
    const qsizetype end = text_.indexOf(QLatin1Char('\n'), caret_);
    lineEnd_ = end < 0 ? static_cast<int>(text_.size()) : static_cast<int>(end);
}

void TerminalScreen::AsciiStep(std::uint8_t b)
{
    const int col = caret_ - lineStart_;
    switch (b) {
    case 7:
        if (Beep)
            Beep();
        return;
    case 8:
        if (caret_ == 0)
            return;
        if (text_[caret_ - 1] == QLatin1Char('\n')) {
            // To the end of the line before; the lines stay apart.
            --caret_;
            FindCaretLine();
        } else {
            --caret_;
            Replace(caret_, 1, QStringLiteral(" "));
        }
        return;
    case 9: {
        // Overwrites up to the next multiple of 8, never past the line's end,
        // and inserts what does not fit.
        const int k = 8 - col % 8;
        const int over = std::min(k, lineEnd_ - caret_);
        Replace(caret_, over, QString(k, QLatin1Char(' ')));
        lineEnd_ += k - over;
        caret_ += k;
        return;
    }
    case 10:
        if (lineEnd_ < text_.size()) {
            caret_ = lineEnd_ + 1;
            FindCaretLine();
        } else {
            Replace(lineEnd_, 0, QStringLiteral("\n"));
            ++lineFeeds_;
            caret_ = lineStart_ = lineEnd_ = static_cast<int>(text_.size());
        }
        return;
    case 12:
        Clear();
        cleared_ = true;
        return;
    case 13:
        caret_ = lineStart_;
        return;
    default:
        break;
    }
    if (b < 32)
        return;
    const bool atLineEnd = caret_ == lineEnd_;
    Replace(caret_, atLineEnd ? 0 : 1, QString(FromCodePage852(b)));
    if (atLineEnd)
        ++lineEnd_;
    ++caret_;
}

void TerminalScreen::HexStep(std::uint8_t b)
{
    if (text_.isEmpty()) {
        hexColumn_ = 0;
        hexRowStart_ = 0;
        Replace(0, 0, FreshHexRow());
    }
    if (hexColumn_ == HexBytesPerRow) {
        // The caret stands at the end of the row: a new row behind it.
        Replace(static_cast<int>(text_.size()), 0, QLatin1Char('\n') + FreshHexRow());
        ++lineFeeds_;
        hexColumn_ = 0;
        hexRowStart_ += HexRowLength + 1;
    }
    const QString hex = QString(HexDigit(b >> 4)) + HexDigit(b);
    Replace(hexRowStart_ + 3 * hexColumn_, 2, hex);
    const int cell = hexRowStart_ + 51 + hexColumn_;
    Replace(cell, 1, QString(b >= 32 ? FromCodePage852(b) : QLatin1Char('.')));
    caret_ = cell + 1;
    lineStart_ = hexRowStart_;
    ++hexColumn_;
}

TerminalScreen::Change TerminalScreen::TrimAndReport()
{
    Change change;
    change.whole = cleared_;
    change.from = std::min(dirtyFrom_, static_cast<int>(text_.size()));
    if (lineFeeds_ <= maxLines_ + maxLines_ / 8)
        return change;
    // Drop the oldest lines down to MaxLines. A caret that backspaces went up
    // into them moves to the first line kept (a Hex caret is always on the last row).
    int head = 0;
    for (int drop = lineFeeds_ + 1 - maxLines_; drop > 0; --drop)
        head = static_cast<int>(text_.indexOf(QLatin1Char('\n'), head)) + 1;
    text_.remove(0, head);
    lineFeeds_ = static_cast<int>(text_.count(QLatin1Char('\n')));
    caret_ = std::max(caret_ - head, 0);
    hexRowStart_ -= head;
    FindCaretLine();
    if (change.whole || change.from < head) {
        change.whole = true;
        change.from = 0;
    } else {
        change.droppedHead = head;
        change.from -= head;
    }
    return change;
}
