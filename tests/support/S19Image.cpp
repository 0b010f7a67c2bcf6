#include "support/S19Image.h"

#include <sstream>

namespace asmtest {
namespace {

int HexByte(const std::string& line, std::size_t at)
{
    if (at + 2 > line.size())
        return -1;
    int v = 0;
    for (std::size_t i = at; i < at + 2; ++i) {
        const char c = line[i];
        v <<= 4;
        if (c >= '0' && c <= '9')
            v |= c - '0';
        else if (c >= 'A' && c <= 'F')
            v |= c - 'A' + 10;
        else
            return -1;
    }
    return v;
}

} // namespace

S19Image ReadS19(const std::string& text)
{
    S19Image image;
    std::istringstream in(text);
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();   // objcopy ends its records with CR LF
        const auto fail = [&](const std::string& why) {
            if (image.problem.empty())
                image.problem = "record " + std::to_string(number) + ": " + why + ": " + line;
        };
        if (line.size() < 4 || line[0] != 'S') {
            fail("not a record");
            continue;
        }
        const int count = HexByte(line, 2);
        if (count < 3 || line.size() != std::size_t(4 + 2 * count)) {
            fail("length does not match the count");
            continue;
        }
        int sum = 0;
        for (int i = 0; i < count + 1; ++i)
            sum += HexByte(line, 2 + 2 * i);
        if ((sum & 0xFF) != 0xFF)
            fail("bad checksum");
        const int address = HexByte(line, 4) * 256 + HexByte(line, 6);
        if (line[1] == '1') {
            ++image.dataRecords;
            for (int i = 0; i < count - 3; ++i)
                image.bytes[(address + i) & 0xFFFF] = std::uint8_t(HexByte(line, 8 + 2 * i));
        } else if (line[1] == '9') {
            image.start = address;
        } else if (line[1] == '0') {
            for (int i = 0; i < count - 3; ++i)
                image.header.push_back(char(HexByte(line, 8 + 2 * i)));
        }
    }
    return image;
}

} // namespace asmtest
