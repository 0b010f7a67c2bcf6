#include "ui/views/WatchTable.h"

#include "engine/state/Conversions.h"

#include <algorithm>

std::array<WatchEntry, MaxWatches> WatchTable;
std::int16_t WatchCount = 0;

namespace {
bool InTable(int index)
{
    return index >= 0 && index < WatchCount;
}

void Label(WatchEntry& entry, const QString& symbol)
{
    entry.WatchHasSymbol = !symbol.isEmpty();
    if (entry.WatchHasSymbol)
        entry.WatchSymbol = symbol.toUpper();
}
}  // namespace

bool AddWatch(std::int32_t address, const QString& symbol, bool isWord)
{
    if (WatchCount >= MaxWatches)
        return false;
    WatchEntry& entry = WatchTable[static_cast<std::size_t>(WatchCount++)];
    entry = WatchEntry{};
    entry.WatchAddress = address & 0xFFFF;
    Label(entry, symbol);
    entry.WatchIsWord = isWord;
    return true;
}

void EditWatch(int index, std::int32_t address, const QString& symbol, bool isWord)
{
    if (!InTable(index))
        return;
    WatchEntry& entry = WatchTable[static_cast<std::size_t>(index)];
    entry.WatchAddress = address & 0xFFFF;
    Label(entry, symbol);
    entry.WatchIsWord = isWord;
}

void RemoveWatch(int index)
{
    if (!InTable(index))
        return;
    std::move(WatchTable.begin() + index + 1, WatchTable.begin() + WatchCount, WatchTable.begin() + index);
    WatchTable[static_cast<std::size_t>(--WatchCount)] = WatchEntry{};
}

void ClearWatches()
{
    WatchTable.fill(WatchEntry{});
    WatchCount = 0;
}

QString WatchAddressText(int index)
{
    return FormatValue(WatchTable[static_cast<std::size_t>(index)].WatchAddress, QStringLiteral("$"), true);
}

QString WatchLabel(int index)
{
    const WatchEntry& entry = WatchTable[static_cast<std::size_t>(index)];
    return entry.WatchHasSymbol ? entry.WatchSymbol : WatchAddressText(index);
}

QString WatchValueText(int index)
{
    const WatchEntry& entry = WatchTable[static_cast<std::size_t>(index)];
    return FormatValue(entry.WatchValue, QString(QLatin1Char(entry.WatchFormat)), entry.WatchIsWord);
}

int WatchSize(int index)
{
    return WatchTable[static_cast<std::size_t>(index)].WatchIsWord ? 2 : 1;
}

std::vector<std::uint8_t> WatchBytes(int index, std::int32_t value)
{
    const auto low = static_cast<std::uint8_t>(value & 0xFF);
    if (WatchSize(index) == 1)
        return {low};
    return {static_cast<std::uint8_t>((value >> 8) & 0xFF), low};
}

bool ReadWatches(const TargetRead& read)
{
    for (int i = 0; i < WatchCount; ++i) {
        WatchEntry& entry = WatchTable[static_cast<std::size_t>(i)];
        std::vector<std::uint8_t> bytes;
        if (!read(entry.WatchAddress, WatchSize(i), bytes) || static_cast<int>(bytes.size()) != WatchSize(i))
            return false;
        entry.WatchValue = entry.WatchIsWord ? bytes[0] * 256 + bytes[1] : bytes[0];
    }
    return true;
}

void ApplySymbolReload()
{
    for (int i = 0; i < WatchCount; ++i) {
        WatchEntry& entry = WatchTable[static_cast<std::size_t>(i)];
        QString name = entry.WatchSymbol;
        if (entry.WatchHasSymbol && SymbolValue(name) != entry.WatchAddress)
            entry.WatchHasSymbol = false;
    }
}
