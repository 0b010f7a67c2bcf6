// S-record text back in memory bytes, as the tests compare them: the
// assembler library's reader (hc11/asm/S19Reader.h) in a flat shape.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace asmtest {

struct S19Image {
    std::map<int, std::uint8_t> bytes;   // address -> byte, from the S1 records
    int start = -1;                      // the S9 record's address
    std::string header;                  // the S0 record's text
    int dataRecords = 0;
    std::string problem;                 // empty when every record is sound
};

S19Image ReadS19(const std::string& text);

} // namespace asmtest
