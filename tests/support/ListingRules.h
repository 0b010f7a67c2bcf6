// The rules by which the IDE's symbol reader takes a listing line, written
// out for the assembler's tests: a line counts only with at least 28
// characters, a decimal line number in columns 1-4, a hexadecimal address in
// 6-9 and blanks in 5, 10, 13, 16, 19, 22 and 25-27. Of a counted line the
// reader keeps the address, the code bytes, the label at column 28 (up to a
// blank, after tabs are expanded to stops of 9) and the source text; FCB,
// FCC, FDB and FILL lines keep neither bytes nor source.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace asmtest {

struct ListingEntry {
    int address = 0;
    std::vector<std::uint8_t> code;
    std::string label;
    std::string source;
};

// The entry a listing line gives, or false when the reader drops the line.
bool ReadListingLine(const std::string& line, ListingEntry& entry);

// All entries of a listing, in order.
std::vector<ListingEntry> ReadListing(const std::string& listing);

} // namespace asmtest
