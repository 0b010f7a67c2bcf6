// The listing's fixed columns, as the IDE's symbol reader takes them:
//   1-4 line number (decimal, zero-padded), 6-9 address (hex), 11-24 up to
//   five code bytes ("BB " each), 28 on the source line.
// Bytes beyond five continue on lines of their own that carry the line
// number, the address and the bytes but no source; being shorter than 28
// characters, they never count as symbol lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hc11::as11 {

constexpr int ListingSourceColumn = 28;   // 1-based
constexpr int ListingBytesPerLine = 5;
constexpr int NoAddress = -1;

// Appends the listing lines of one source line. `address` is NoAddress for a
// line without one (comments, blank lines, lines after END).
void AppendListingLine(std::string& out, int lineNumber, int address,
                       const std::uint8_t* bytes, std::size_t count, std::string_view source);

// A note under a listing line, such as an error. It never looks like a
// listing line to the symbol reader.
void AppendListingNote(std::string& out, std::string_view text);

// One row of the symbol table at the end of the listing.
void AppendSymbolRow(std::string& out, std::string_view name, std::int32_t value);

} // namespace hc11::as11
