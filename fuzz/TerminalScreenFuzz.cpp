// libFuzzer target: the serial terminal fed any bytes, the board program's
// output, in any pieces and in both modes. The window mirrors the screen by
// applying each reported change to its copy, so every change must turn the old
// text into the new one exactly; the caret stays in the text and a long
// session stays within its line limit.
#include "engine/state/TerminalScreen.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    // Byte 0: the line limit, small so that trimming happens; then chunks of a
    // control byte (count, simulator mode, a mode switch) and the bytes.
    const int maxLines = 1 + data[0] % 16;
    TerminalScreen screen(maxLines);
    QString mirror;
    std::size_t i = 1;
    while (i < size) {
        const std::uint8_t control = data[i++];
        if (control == 0xFF) {
            screen.SetMode(screen.CurrentMode() == TerminalScreen::Mode::Ascii ? TerminalScreen::Mode::Hex
                                                                               : TerminalScreen::Mode::Ascii);
            mirror.clear();
            continue;
        }
        const std::size_t count = std::min<std::size_t>(control & 63, size - i);
        const QByteArray bytes(reinterpret_cast<const char*>(data + i), static_cast<qsizetype>(count));
        i += count;
        const TerminalScreen::Change change = screen.Display(bytes, (control & 64) != 0);
        const QString& text = screen.Text();
        if (change.whole) {
            mirror = text;
        } else {
            if (change.droppedHead < 0 || change.droppedHead > mirror.size() || change.from < 0 ||
                change.from > text.size())
                std::abort();
            mirror.remove(0, change.droppedHead);
            mirror = mirror.left(change.from) + text.mid(change.from);
        }
        if (mirror != text || screen.Caret() < 0 || screen.Caret() > text.size())
            std::abort();
        if (screen.LineCount() != text.count(u'\n') + 1 || screen.LineCount() > maxLines + maxLines / 8 + 1)
            std::abort();
    }
    return 0;
}
