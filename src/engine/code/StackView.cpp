#include "engine/code/StackView.h"

#include "engine/state/Conversions.h"

std::int32_t StackRowAddress(std::int32_t viewAddress, int row)
{
    return (viewAddress + row - 1) & 0xFFFF;
}

QString StackRowText(std::int32_t address, std::uint8_t byte)
{
    return QStringLiteral(" $") + HexPadded(address, 4) + QStringLiteral(":   $") + HexPadded(byte, 2);
}

QString StackRowAddressText(const QString& rowText)
{
    return rowText.mid(1, 5);
}

QString StackRowValueText(const QString& rowText)
{
    return rowText.mid(10, 3);
}

std::int32_t StackRowAddressOf(const QString& rowText)
{
    return HexToLong(rowText.mid(2, 4));
}

std::int32_t StackViewForSP(std::int32_t sp, int visibleRows)
{
    return (sp - visibleRows + 1) & 0xFFFF;
}

StackKeyMove MoveByKey(StackKey key, int curRow, int visibleRows, std::int32_t viewAddress)
{
    const auto moved = [&](std::int32_t by) { return StackKeyMove{curRow, (viewAddress + by) & 0xFFFF, true}; };
    switch (key) {
    case StackKey::Up:
        return curRow > 1 ? StackKeyMove{curRow - 1, viewAddress, false} : moved(-1);
    case StackKey::Down:
        return curRow < visibleRows ? StackKeyMove{curRow + 1, viewAddress, false} : moved(1);
    case StackKey::PageUp:
        return moved(-visibleRows);
    case StackKey::PageDown:
        return moved(visibleRows);
    }
    return {curRow, viewAddress, false};
}
