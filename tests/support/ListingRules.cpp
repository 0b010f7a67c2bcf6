#include "support/ListingRules.h"

#include "code/ListingReader.h"

#include <sstream>

// The assembler's tests read its listings with the IDE's own symbol reader, so
// the two cannot drift apart.
namespace asmtest {

bool ReadListingLine(const std::string& line, ListingEntry& entry)
{
    SymbolEntry symbol;
    if (!::ReadListingLine(QString::fromLatin1(line.data(), qsizetype(line.size())), symbol))
        return false;
    entry = ListingEntry{};
    entry.address = symbol.SymbolAddress;
    entry.code.assign(symbol.SymbolCode.begin(), symbol.SymbolCode.begin() + symbol.SymbolCodeSize);
    entry.label = symbol.SymbolLabel.toStdString();
    entry.source = symbol.SymbolSource.toStdString();
    return true;
}

std::vector<ListingEntry> ReadListing(const std::string& listing)
{
    std::vector<ListingEntry> entries;
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        ListingEntry entry;
        if (ReadListingLine(line, entry))
            entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace asmtest
