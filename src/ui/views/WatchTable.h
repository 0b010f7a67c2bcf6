// The watches: bytes or 16-bit words at target addresses that the user wants
// to see at every stop, each labelled by a symbol or by its address. The
// table lives as long as the process, outlives the watch window and isn't
// saved. Entries 0 to WatchCount - 1 are in use, in order of insertion,
// without gaps.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

constexpr int MaxWatches = 32;

struct WatchEntry {
    std::int32_t WatchAddress = 0;   // 0 to 65535
    QString WatchSymbol;             // upper case; meaningful only with WatchHasSymbol
    bool WatchHasSymbol = false;
    char WatchFormat = '$';          // ' ', '$' or '%', as a register row's
    bool WatchIsWord = false;        // high byte at the address, low byte behind it (wrapping)
    std::int32_t WatchValue = 0;     // the value read last
};

extern std::array<WatchEntry, MaxWatches> WatchTable;
extern std::int16_t WatchCount;

// A new watch in hex at the end; false, and the table unchanged, when it is full.
// An empty symbol labels the watch by its address.
bool AddWatch(std::int32_t address, const QString& symbol, bool isWord);
// A watch's address, label and width; its format stays. Indices outside the
// table are ignored.
void EditWatch(int index, std::int32_t address, const QString& symbol, bool isWord);
void RemoveWatch(int index);
void ClearWatches();

// The label: the symbol, or the address as "$" and 4 hex digits.
QString WatchLabel(int index);
QString WatchAddressText(int index);
QString WatchValueText(int index);
int WatchSize(int index);   // 1 or 2 bytes
// The bytes that a value becomes on the target, high byte first for a word.
std::vector<std::uint8_t> WatchBytes(int index, std::int32_t value);

// Reads count bytes at an address (wrapping past $FFFF) into bytes; false when
// the link failed.
using TargetRead = std::function<bool(std::int32_t address, int count, std::vector<std::uint8_t>& bytes)>;
// One read per watch, in order; the first failure ends the round with the
// watches after it unchanged, and gives false.
bool ReadWatches(const TargetRead& read);

// After symbols are loaded: a watch whose symbol moved or vanished goes on
// watching its address and is labelled by it from then on.
void ApplySymbolReload();
