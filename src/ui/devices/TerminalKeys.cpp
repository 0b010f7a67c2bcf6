#include "ui/devices/TerminalKeys.h"

#include "engine/state/CodePage852.h"

#include <Qt>

QByteArray TerminalKeyBytes(int key, bool control, const QString& text, bool boardMode, bool boardRunning)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return boardMode ? QByteArrayLiteral("\r\n") : QByteArray();
    case Qt::Key_Backspace:
        return boardMode ? QByteArrayLiteral("\b") : QByteArray();
    case Qt::Key_Delete:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_End:
    case Qt::Key_Home:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return {};
    case Qt::Key_A:
    case Qt::Key_C:
    case Qt::Key_V:
    case Qt::Key_X:
    case Qt::Key_Z:
        // No select-all, copy, paste, cut or undo; without Control the letter goes on.
        if (control)
            return {};
        break;
    default:
        break;
    }
    if (!boardMode || !boardRunning || text.size() != 1)
        return {};
    const std::optional<std::uint8_t> byte = ToCodePage852(text[0]);
    return byte ? QByteArray(1, static_cast<char>(*byte)) : QByteArray();
}
