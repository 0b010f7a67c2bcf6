// The symbol reader of the IDE, seen from the assembler's tests: the entry a
// listing line gives (address, code bytes, label, source), with the rules of
// code/ListingReader.h.
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
