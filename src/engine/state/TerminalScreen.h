// The serial terminal's screen as a small teletype: arriving bytes overwrite
// what stands at the writing position and control bytes move it (Ascii), or
// each byte fills its two places in a prepared row of sixteen (Hex). The
// window only mirrors Text() and Caret(); every rule lives here.
//
// A line ends in one line feed in both modes: the text control counts a row
// break as a single position, so a Hex row starts 68 positions behind the one
// before (67 characters and the break).
//
// A long session must not grow without limit: past MaxLines (plus a slack, so
// that trimming is rare) the oldest lines are dropped down to MaxLines.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <functional>

class TerminalScreen {
public:
    enum class Mode { Ascii, Hex };
    static constexpr int DefaultMaxLines = 5000;
    static constexpr int HexRowLength = 67;
    static constexpr int HexBytesPerRow = 16;

    // How the text changed in one Display: drop the first droppedHead
    // characters of the old text, then replace everything from `from` on by
    // Text().mid(from). With whole set the text is simply Text().
    struct Change {
        bool whole = false;
        int droppedHead = 0;
        int from = 0;
    };

    explicit TerminalScreen(int maxLines = DefaultMaxLines);

    Mode CurrentMode() const { return mode_; }
    // A change of mode clears the screen.
    void SetMode(Mode mode);
    void Clear();

    // One step per byte, in order; the simulator's link passes only the first.
    Change Display(const QByteArray& bytes, bool simulatorMode = false);
    // What all the Displays since the last call changed, as one Change: a
    // window that redraws less often than bytes come takes it at each redraw.
    // Clear and SetMode start afresh from an empty text.
    Change TakeChanges();

    const QString& Text() const { return text_; }
    int Caret() const { return caret_; }
    int LineCount() const { return lineFeeds_ + 1; }
    std::int16_t HexColumn() const { return hexColumn_; }
    std::int32_t HexRowStart() const { return hexRowStart_; }

    // The bell (byte 7 in Ascii mode).
    std::function<void()> Beep;

private:
    void AsciiStep(std::uint8_t b);
    void HexStep(std::uint8_t b);
    // Replaces count characters at pos by s and notes the change.
    void Replace(int pos, int count, const QString& s);
    void FindCaretLine();
    Change TrimAndReport();
    // The change that earlier, then later, make together.
    static Change Merged(const Change& earlier, const Change& later);

    int maxLines_;
    Mode mode_ = Mode::Ascii;
    QString text_;
    int caret_ = 0;
    // The caret's line: its first position and the position of its line
    // feed (or the text's end on the last line).
    int lineStart_ = 0;
    int lineEnd_ = 0;
    int lineFeeds_ = 0;
    std::int16_t hexColumn_ = 0;
    std::int32_t hexRowStart_ = 0;
    // Within one Display: the lowest position changed, and whether all was.
    int dirtyFrom_ = 0;
    bool cleared_ = false;
    Change untaken_;   // since the last TakeChanges
};
