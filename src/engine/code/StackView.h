// The arithmetic of the stack window: one byte a row from StackViewAddress,
// addresses wrapping past $FFFF, and the moves of its keys.
#pragma once

#include <QString>

#include <cstdint>

// The address of a row, rows from 1.
std::int32_t StackRowAddress(std::int32_t viewAddress, int row);

// " $AAAA:   $VV": the address at columns 3 to 6, the value with its "$" at 11 to 13.
QString StackRowText(std::int32_t address, std::uint8_t byte);
// What the rows' text holds, by those columns: "$" and the address, "$" and
// the value, and the address as a number.
QString StackRowAddressText(const QString& rowText);
QString StackRowValueText(const QString& rowText);
std::int32_t StackRowAddressOf(const QString& rowText);

// The view that puts SP on the last of the visible rows.
std::int32_t StackViewForSP(std::int32_t sp, int visibleRows);

enum class StackKey { Up, Down, PageUp, PageDown };

// A key's effect: either the current row moves within the view, or the view
// moves and the page is read again.
struct StackKeyMove {
    int curRow;                 // the row to make current
    std::int32_t viewAddress;   // the view's first address afterwards
    bool read;                  // the view moved: read the page
};
StackKeyMove MoveByKey(StackKey key, int curRow, int visibleRows, std::int32_t viewAddress);
