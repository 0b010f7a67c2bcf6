// Reads Motorola S-records into memory images: S1 records carry data, S0
// (a header) and S5 (a record count) carry none, S9 ends the file; blank
// lines pass. Every record's digits, length and checksum are checked: the
// first bad one stops the reading and names its line and what is wrong.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hc11::as11 {

struct S19Block {
    std::uint16_t address = 0;
    std::vector<std::uint8_t> bytes;
};

struct S19Image {
    std::vector<S19Block> blocks;   // the S1 records, in file order
    std::string header;             // the S0 record's text
    int start = -1;                 // the S9 record's address
    int errorLine = 0;              // 1-based; 0 when the text was good
    std::string error;
};

S19Image ReadS19(std::string_view text);

// Calls put(address, byte) for every data byte, in file order (no block the
// reader gives runs past $FFFF).
template <class Put>
void ForEachByte(const S19Image& image, Put put)
{
    for (const S19Block& block : image.blocks)
        for (std::size_t i = 0; i < block.bytes.size(); ++i)
            put(std::uint16_t(block.address + i), block.bytes[i]);
}

} // namespace hc11::as11
