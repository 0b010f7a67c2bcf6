#include "support/ListingRules.h"

#include <sstream>

namespace asmtest {
namespace {

// Number notation of the IDE: decimal (digits, at most 5 characters) or "$"
// and hex (2 to 5 characters); -1 when invalid or above 65535.
long ParseWide(const std::string& text)
{
    if (text.empty())
        return -1;
    long v = 0;
    if (text[0] == '$') {
        if (text.size() < 2 || text.size() > 5)
            return -1;
        for (std::size_t i = 1; i < text.size(); ++i) {
            const char c = text[i];
            const int d = (c >= '0' && c <= '9') ? c - '0'
                        : (c >= 'A' && c <= 'F') ? c - 'A' + 10
                        : (c >= 'a' && c <= 'f') ? c - 'a' + 10 : -1;
            if (d < 0)
                return -1;
            v = v * 16 + d;
        }
    } else {
        if (text.size() > 5)
            return -1;
        for (char c : text) {
            if (c < '0' || c > '9')
                return -1;
            v = v * 10 + (c - '0');
        }
    }
    return v > 65535 ? -1 : v;
}

std::string ExpandTabs(std::string s)
{
    for (std::size_t p; (p = s.find('\t')) != std::string::npos;)
        s.replace(p, 1, 9 - p % 9, ' ');
    return s;
}

std::string Upper(std::string s)
{
    for (char& c : s)
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
    return s;
}

} // namespace

bool ReadListingLine(const std::string& raw, ListingEntry& entry)
{
    if (raw.size() < 28 || ParseWide(raw.substr(0, 4)) < 0
        || ParseWide("$" + Upper(raw.substr(5, 4))) < 0)
        return false;
    for (int column : {5, 10, 13, 16, 19, 22, 25, 26, 27})
        if (raw[column - 1] != ' ')
            return false;

    const std::string line = ExpandTabs(raw);
    entry = ListingEntry{};
    entry.address = int(ParseWide("$" + Upper(line.substr(5, 4))));
    for (int place = 0; place < 5; ++place) {
        const std::size_t at = 10 + 3 * place;
        if (line[at] != ' ')
            entry.code.push_back(std::uint8_t(std::stoi(line.substr(at, 2), nullptr, 16)));
    }
    std::size_t n = 0;
    if (line[27] != ' ') {
        const std::size_t blank = line.find(' ', 27);
        if (blank != std::string::npos) {
            n = blank - 27;
            entry.label = line.substr(27, n);
        }
    }
    std::string directive = line.substr(27 + n);
    directive.erase(0, directive.find_first_not_of(' '));
    directive = Upper(directive);
    if (directive.rfind("FCB", 0) == 0 || directive.rfind("FCC", 0) == 0
        || directive.rfind("FDB", 0) == 0 || directive.rfind("FILL", 0) == 0) {
        entry.code.clear();
        return true;
    }
    entry.source = line.substr(27);
    return true;
}

std::vector<ListingEntry> ReadListing(const std::string& listing)
{
    std::vector<ListingEntry> entries;
    std::istringstream in(listing);
    std::string line;
    ListingEntry entry;
    while (std::getline(in, line))
        if (ReadListingLine(line, entry))
            entries.push_back(entry);
    return entries;
}

} // namespace asmtest
