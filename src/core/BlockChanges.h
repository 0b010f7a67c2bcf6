// Which bits of a copied block of target bytes changed between two stops of
// the target, so that a window can mark what the last step, run or Play
// changed. A stop is the first reading of the block after the target has
// executed code; readings in between (a refresh, a value typed in) are
// compared with the same stop, so they mark what changed since then too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class BlockChanges {
public:
    // A fresh reading of the whole block, with TargetMoves (core/TargetMoves.h) at the time.
    void Read(std::span<const std::uint8_t> block, std::uint64_t runs);

    // The bits of count bytes at offset (the first byte the high one) that
    // differ now from the stop before the latest; 0 before there are two stops.
    std::uint32_t ChangedBits(std::size_t offset, int count) const;

    // Nothing known: the next reading starts over (another target).
    void Forget();

private:
    std::vector<std::uint8_t> now_;
    std::vector<std::uint8_t> latestStop_;
    std::vector<std::uint8_t> stopBefore_;
    std::optional<std::uint64_t> latestStopRuns_;
};

// The trackers of the two blocks the register windows draw from.
extern BlockChanges RegisterBlockChanges;
extern BlockChanges PiaBlockChanges;
