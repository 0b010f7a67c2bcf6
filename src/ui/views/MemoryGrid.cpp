#include "ui/views/MemoryGrid.h"

#include "engine/state/Conversions.h"

#include <algorithm>

void MemoryGrid::SetLinesPerPage(int lines)
{
    lines_ = std::clamp(lines, 0, MaxLines);
    KeepCursorOnPage();
}

int MemoryGrid::Rows() const
{
    return std::min(lines_, (0x10000 - page_) / BytesPerRow);
}

void MemoryGrid::SetPage(std::int32_t page)
{
    page_ = std::clamp(page, 0, std::max(End(), 0)) & ~(BytesPerRow - 1);
    KeepCursorOnPage();
}

void MemoryGrid::KeepCursorOnPage()
{
    row_ = std::clamp(row_, 0, std::max(Rows() - 1, 0));
}

bool MemoryGrid::Key(MemoryKey key)
{
    if (lines_ < 1)
        return false;
    const std::int32_t before = page_;
    const int last = Rows() - 1;
    const std::int32_t pageBytes = lines_ * BytesPerRow;
    switch (key) {
    case MemoryKey::Left:
        if (byte_ > 0) {
            --byte_;
        } else if (row_ > 0) {
            --row_;
            byte_ = BytesPerRow - 1;
        } else if (page_ >= BytesPerRow) {
            SetPage(page_ - BytesPerRow);
            byte_ = BytesPerRow - 1;
        }
        break;
    case MemoryKey::Right:
        if (byte_ < BytesPerRow - 1) {
            ++byte_;
        } else if (row_ < last) {
            ++row_;
            byte_ = 0;
        } else if (page_ < End()) {
            SetPage(page_ + BytesPerRow);
            byte_ = 0;
        }
        break;
    case MemoryKey::Up:
        if (row_ > 0)
            --row_;
        else if (page_ >= BytesPerRow)
            SetPage(page_ - BytesPerRow);
        break;
    case MemoryKey::Down:
        if (row_ < last)
            ++row_;
        else if (page_ < End())
            SetPage(page_ + BytesPerRow);
        break;
    case MemoryKey::PageUp:
        if (page_ == 0)
            row_ = 0;
        else
            SetPage(std::max(page_ - pageBytes, 0));
        break;
    case MemoryKey::PageDown:
        if (page_ + pageBytes > End()) {
            SetPage(End());
            row_ = Rows() - 1;
        } else {
            SetPage(page_ + pageBytes);
        }
        break;
    case MemoryKey::Home:
        byte_ = 0;
        break;
    case MemoryKey::End:
        byte_ = BytesPerRow - 1;
        break;
    case MemoryKey::Tab:
        side_ = side_ == MemorySide::Hex ? MemorySide::Char : MemorySide::Hex;
        break;
    }
    return page_ != before;
}

void MemoryGrid::Click(int row, int column)
{
    if (lines_ < 1 || row < 0 || row >= Rows() || column < 0 || column >= ColumnCount)
        return;
    row_ = row;
    if (IsByteColumn(column)) {
        side_ = SideOf(column);
        byte_ = ByteOf(column);
    } else if (column == 0) {
        byte_ = 0;
    } else if (column == 1) {
        side_ = MemorySide::Hex;
        byte_ = 0;
    } else {
        // The spacer between the sides: the nearest byte of the side the cursor is on.
        byte_ = side_ == MemorySide::Hex ? BytesPerRow - 1 : 0;
    }
}

bool MemoryGrid::GoTo(std::int32_t address)
{
    const std::int32_t before = page_;
    address = std::clamp(address, 0, 0xFFFF);
    side_ = MemorySide::Hex;
    byte_ = address % BytesPerRow;
    if (lines_ > 0 && address > End() + BytesPerRow - 1) {
        // The page can't start at the address: it ends at $FFFF instead.
        SetPage(End());
        row_ = lines_ - 1 - (0xFFFF - address) / BytesPerRow;
    } else {
        SetPage(address);
        row_ = 0;
    }
    return page_ != before;
}

bool MemoryGrid::Scroll(int value)
{
    const std::int32_t before = page_;
    SetPage(std::clamp(value, 0, ScrollMaximum()) * BytesPerRow);
    return page_ != before;
}

std::int32_t MemoryGrid::DragAddress(int value) const
{
    // The thumb at the bottom means the end, which no step of 512 may reach.
    if (value >= ScrollMaximum())
        return End();
    return std::min((value + 1) / 32 * 512, End());
}

int MemoryGrid::ColumnOf(MemorySide side, int byte)
{
    return (side == MemorySide::Hex ? FirstHexColumn : FirstCharColumn) + byte;
}

bool MemoryGrid::IsByteColumn(int column)
{
    return (column >= FirstHexColumn && column < FirstHexColumn + BytesPerRow) ||
           (column >= FirstCharColumn && column < FirstCharColumn + BytesPerRow);
}

int MemoryGrid::ByteOf(int column)
{
    return column - (SideOf(column) == MemorySide::Char ? FirstCharColumn : FirstHexColumn);
}

// ---- Cells ---------------------------------------------------------------------

QString AddressCell(std::int32_t address)
{
    return QStringLiteral(" $") + HexPadded(address, 4) + QLatin1Char(':');
}

QString HexCell(std::uint8_t byte)
{
    return HexPadded(byte, 2);
}

QString CharCell(std::uint8_t byte)
{
    return byte >= 32 && byte < 127 ? QString(QLatin1Char(static_cast<char>(byte))) : QStringLiteral(".");
}

// ---- Editor ---------------------------------------------------------------------

int CellCapacity(MemorySide side)
{
    return side == MemorySide::Hex ? 2 : 1;
}

bool TypeIntoBox(MemorySide side, int capacity, QChar typed, QString& text, int& caret, int& selection)
{
    if (caret >= capacity)
        return false;
    if (side == MemorySide::Hex) {
        typed = typed.toUpper();
        if (!((typed >= QLatin1Char('0') && typed <= QLatin1Char('9')) ||
              (typed >= QLatin1Char('A') && typed <= QLatin1Char('F'))))
            return false;
    } else if (typed.unicode() < 32 || typed.unicode() > 126) {
        return false;
    }
    text.replace(caret, selection, typed);
    ++caret;
    selection = 0;
    if (text.size() > capacity)
        text.remove(caret, 1);   // overtype: the character behind the caret goes
    text.truncate(capacity);
    return true;
}

int CellByte(MemorySide side, const QString& text)
{
    if (text.isEmpty())
        return -1;
    if (side == MemorySide::Hex)
        return HexToLong(text.left(2)) & 0xFF;
    return text.at(0).unicode() & 0xFF;
}
