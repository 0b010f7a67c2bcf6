#include "core/BlockChanges.h"

BlockChanges RegisterBlockChanges;
BlockChanges PiaBlockChanges;

void BlockChanges::Read(std::span<const std::uint8_t> block, std::uint64_t runs)
{
    now_.assign(block.begin(), block.end());
    if (latestStopRuns_ == runs)
        return;
    // The first reading since the target ran is the new stop.
    stopBefore_ = std::move(latestStop_);
    latestStop_ = now_;
    latestStopRuns_ = runs;
}

std::uint32_t BlockChanges::ChangedBits(std::size_t offset, int count) const
{
    if (stopBefore_.size() != now_.size())
        return 0;
    std::uint32_t bits = 0;
    for (int i = 0; i < count && offset + i < now_.size(); ++i)
        bits = bits << 8 | std::uint32_t(now_[offset + i] ^ stopBefore_[offset + i]);
    return bits;
}

void BlockChanges::Forget()
{
    now_.clear();
    latestStop_.clear();
    stopBefore_.clear();
    latestStopRuns_.reset();
}
