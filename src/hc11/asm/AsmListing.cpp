#include "hc11/asm/AsmListing.h"

#include <algorithm>

namespace hc11::as11 {
namespace {

constexpr char Hex[] = "0123456789ABCDEF";

// Columns 1-27 of a line: number, address and up to five bytes.
void AppendPrefix(std::string& out, int lineNumber, int address,
                  const std::uint8_t* bytes, std::size_t count)
{
    char p[ListingSourceColumn - 1];
    std::fill(std::begin(p), std::end(p), ' ');
    // Four columns hold the number; longer sources count on from 0000 again.
    int n = lineNumber % 10000;
    for (int i = 3; i >= 0; --i, n /= 10)
        p[i] = char('0' + n % 10);
    if (address != NoAddress) {
        for (int i = 0; i < 4; ++i)
            p[5 + i] = Hex[(address >> (12 - 4 * i)) & 15];
    }
    for (std::size_t b = 0; b < count; ++b) {
        p[10 + 3 * b] = Hex[bytes[b] >> 4];
        p[11 + 3 * b] = Hex[bytes[b] & 15];
    }
    out.append(p, sizeof p);
}

void TrimLineEnd(std::string& out)
{
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    out.push_back('\n');
}

} // namespace

void AppendListingLine(std::string& out, int lineNumber, int address,
                       const std::uint8_t* bytes, std::size_t count, std::string_view source)
{
    const std::size_t first = std::min<std::size_t>(count, ListingBytesPerLine);
    AppendPrefix(out, lineNumber, address, bytes, first);

    if (address != NoAddress && !source.empty() && source[0] != ' ' && source[0] != '\t') {
        // The symbol reader takes the label up to the first blank: write
        // "LOOP:" as "LOOP " and give a lone label the blank it needs.
        const std::size_t end = std::min(source.find_first_of(" \t"), source.size());
        const bool colon = end > 1 && source[end - 1] == ':';
        out.append(source.substr(0, colon ? end - 1 : end));
        if (colon)
            out.push_back(' ');
        out.append(source.substr(end));
        if (end == source.size() && !colon)
            out.push_back(' ');
        out.push_back('\n');
    } else {
        out.append(source);
        TrimLineEnd(out);
    }

    for (std::size_t done = first; done < count; done += ListingBytesPerLine) {
        const int at = address == NoAddress ? NoAddress : int((address + done) & 0xFFFF);
        AppendPrefix(out, lineNumber, at, bytes + done,
                     std::min<std::size_t>(count - done, ListingBytesPerLine));
        TrimLineEnd(out);
    }
}

void AppendListingNote(std::string& out, std::string_view text)
{
    out.append("***** ");
    out.append(text);
    out.push_back('\n');
}

void AppendSymbolRow(std::string& out, std::string_view name, std::int32_t value)
{
    // Indented, so column 1 never holds a line number.
    out.push_back(' ');
    out.append(name);
    for (std::size_t i = name.size(); i < 32; ++i)
        out.push_back(' ');
    out.append(" $");
    for (int i = 0; i < 4; ++i)
        out.push_back(Hex[(value >> (12 - 4 * i)) & 15]);
    out.push_back('\n');
}

} // namespace hc11::as11
