// The rows of a register window as data, and the plain rules that turn a row
// and the host's copy of the target into a cell text or a write. A window is a
// table of these rows plus a read and a value source (RegisterWindow.h).
#pragma once

#include <QString>

#include <cstdint>
#include <span>
#include <vector>

// Where an accepted value goes.
enum class RowWrite : std::uint8_t {
    Target,    // OutByte or OutBytes at the row's address
    HostPC,    // PC of CpuRegisters: no back-end holds a PC
    Nowhere,   // the dialog opens, but no address belongs to the row
    SimulatedLine,   // the simulated chip's line (a pin, a level, the SPI device) the row's address names
};

struct RegisterRow {
    const char* name;              // the list item's text, a constant
    std::int32_t address = 0;      // read from (block windows) and written to
    bool isWord = false;           // 16 bits, high byte at address; otherwise 8
    char format = '$';             // default display format: ' ', '$' or '%'
    bool readOnly = false;         // the row takes no value
    RowWrite write = RowWrite::Target;
    bool flagLetters = false;      // CCR: "%" and the letters of the set flags; format fixed
    const char* title = nullptr;   // the register's full name, for the row's tooltip
    const char* bits = nullptr;    // names of bits 7 to 0, blank-separated, "-" where unused
};

// The row's tooltip: its name and full name, then what its bits are.
QString RowToolTip(const RegisterRow& row);

// The cell of a row: the value in the row's format, or for a flag row the
// flag letters whatever the format.
QString CellText(const RegisterRow& row, std::int32_t value, char format);

// "%" and bits 7 to 0 of a condition code register: the flag's letter
// (S X H I N Z V C) where the bit is set, "0" where it is clear.
QString FlagText(std::uint8_t ccr);

// What the value dialog starts from: the cell, except that a flag row offers
// its plain binary form, which the dialog's parser reads.
QString EntryTextOf(const RegisterRow& row, std::int32_t value, const QString& cell);

// The bytes a value becomes on the target: one for an 8-bit row (the low
// byte), two for a 16-bit row, high byte first.
std::vector<std::uint8_t> WriteBytesOf(const RegisterRow& row, std::int32_t value);

// A row's value in a copy of a target block that starts at base: the byte at
// the row's address, or for a 16-bit row that byte times 256 plus the next.
std::int32_t BlockValue(const RegisterRow& row, std::span<const std::uint8_t> block, std::int32_t base);
