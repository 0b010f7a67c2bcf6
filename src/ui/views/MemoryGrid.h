// The memory window's page and cursor, without a widget: which 16-byte rows
// of the 64 KB address space the page holds, where the cursor stands, and how
// the arrow, page, Home, End and Tab keys, a click, the scroll bar and the
// address dialog move them. The page never starts past End, the start of the
// last full page, and the cursor never leaves the page: it wraps to the
// neighbouring row on its own side (hex or characters), and a move past the
// first or last row scrolls.
//
// Columns are numbered as the window shows them: 0 the address, 1 a spacer,
// 2 to 17 the bytes in hex, 18 a spacer, 19 to 34 the same bytes as characters.
#pragma once

#include <QChar>
#include <QString>

#include <cstdint>

enum class MemorySide : std::uint8_t { Hex, Char };
enum class MemoryKey : std::uint8_t { Left, Right, Up, Down, PageUp, PageDown, Home, End, Tab };

class MemoryGrid {
public:
    static constexpr int BytesPerRow = 16;
    static constexpr int MaxLines = 64;   // one read brings 1024 bytes
    static constexpr int ColumnCount = 35;
    static constexpr int FirstHexColumn = 2;
    static constexpr int FirstCharColumn = 19;

    // The rows the window has room for, limited to 0 to 64. The page start
    // stays: a grown window near the top of memory shows fewer rows.
    void SetLinesPerPage(int lines);
    int LinesPerPage() const { return lines_; }
    // The highest page start, 65536 - LinesPerPage x 16.
    std::int32_t End() const { return 0x10000 - lines_ * BytesPerRow; }

    std::int32_t PageAddress() const { return page_; }
    // Data rows on the page: LinesPerPage, fewer where the page meets $FFFF.
    int Rows() const;
    std::int32_t RowAddress(int row) const { return page_ + row * BytesPerRow; }

    int CursorRow() const { return row_; }
    int CursorByte() const { return byte_; }
    MemorySide CursorSide() const { return side_; }
    int CursorColumn() const { return ColumnOf(side_, byte_); }
    std::int32_t CursorAddress() const { return RowAddress(row_) + byte_; }

    // Each returns true when the page start has moved, so the page must be read again.
    bool Key(MemoryKey key);
    // A click on a cell: an address cell acts as Home, a spacer sends the
    // cursor to the nearest byte of its side. Rows outside the page are ignored.
    void Click(int row, int column);
    // The address dialog's result: the byte under the cursor, on the hex
    // side, in the top row unless the page would pass End.
    bool GoTo(std::int32_t address);
    // The scroll bar: one step is one row; its range is 0 to ScrollMaximum.
    bool Scroll(int value);
    int ScrollValue() const { return page_ / BytesPerRow; }
    int ScrollMaximum() const { return 0x10000 / BytesPerRow - lines_; }
    // The address the hint shows while the thumb is dragged: steps of 512
    // bytes, and End at most; the thumb at the bottom gives End.
    std::int32_t DragAddress(int value) const;

    static int ColumnOf(MemorySide side, int byte);
    static bool IsByteColumn(int column);
    static MemorySide SideOf(int column) { return column >= FirstCharColumn ? MemorySide::Char : MemorySide::Hex; }
    static int ByteOf(int column);

private:
    void SetPage(std::int32_t page);
    void KeepCursorOnPage();

    std::int32_t page_ = 0;
    int lines_ = 0;
    int row_ = 0;
    int byte_ = 0;
    MemorySide side_ = MemorySide::Hex;
};

// ---- The cells ----------------------------------------------------------------

// " $0120:": the row's address cell.
QString AddressCell(std::int32_t address);
// Two upper-case hex digits.
QString HexCell(std::uint8_t byte);
// The byte as a character if it is printable ASCII (32 to 126), else ".".
QString CharCell(std::uint8_t byte);

// ---- The in-cell editor ---------------------------------------------------------

// What the editor box may hold: 2 hex digits or 1 character.
int CellCapacity(MemorySide side);
// A key typed into the box: the box's text, caret and selection after it, or
// false if the key is discarded. Hex digits only on the hex side ("a" to "f"
// become upper case), printable ASCII on the character side; a character
// typed inside full text replaces the one behind the caret.
// The same for a box that holds capacity characters of one side.
bool TypeIntoBox(MemorySide side, int capacity, QChar typed, QString& text, int& caret, int& selection);
inline bool TypeIntoCell(MemorySide side, QChar typed, QString& text, int& caret, int& selection)
{
    return TypeIntoBox(side, CellCapacity(side), typed, text, caret, selection);
}
// The byte the box stands for, or -1 for an empty box.
int CellByte(MemorySide side, const QString& text);
