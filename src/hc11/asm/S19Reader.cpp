#include "hc11/asm/S19Reader.h"

namespace hc11::as11 {

namespace {

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// One record without its line end; an empty string when it is good.
std::string ReadRecord(std::string_view line, S19Image& image)
{
    if (line.size() < 2 || line[0] != 'S')
        return "not an S-record";
    const char type = line[1];
    if (type != '0' && type != '1' && type != '5' && type != '9')
        return std::string("S") + type + " records are not for a 16-bit address space";
    std::vector<std::uint8_t> bytes;   // count, address, data, checksum
    for (std::size_t i = 2; i < line.size(); i += 2) {
        const int high = HexDigit(line[i]);
        const int low = i + 1 < line.size() ? HexDigit(line[i + 1]) : -1;
        if (high < 0 || low < 0)
            return "bad hex digit in column " + std::to_string(high < 0 ? i + 1 : i + 2);
        bytes.push_back(std::uint8_t(high << 4 | low));
    }
    if (bytes.size() < 4 || bytes[0] != bytes.size() - 1)
        return "its byte count does not match its length";
    unsigned sum = 0;
    for (const std::uint8_t b : bytes)
        sum += b;
    if ((sum & 0xFF) != 0xFF)
        return "bad checksum";
    const auto address = std::uint16_t(bytes[1] << 8 | bytes[2]);
    const std::vector<std::uint8_t> data(bytes.begin() + 3, bytes.end() - 1);
    if (type == '0')
        image.header.assign(data.begin(), data.end());
    else if (type == '9')
        image.start = address;
    if (type != '1')
        return {};
    if (address + data.size() > 0x10000)
        return "its data runs past $FFFF";
    image.blocks.push_back({address, data});
    return {};
}

} // namespace

S19Image ReadS19(std::string_view text)
{
    S19Image image;
    int lineNumber = 0;
    while (!text.empty()) {
        ++lineNumber;
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.remove_suffix(1);
        if (line.empty())
            continue;
        std::string error = ReadRecord(line, image);
        if (!error.empty()) {
            image.errorLine = lineNumber;
            image.error = std::move(error);
            return image;
        }
        if (line[1] == '9')
            break;
    }
    return image;
}

} // namespace hc11::as11
