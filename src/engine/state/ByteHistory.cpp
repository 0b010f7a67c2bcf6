#include "engine/state/ByteHistory.h"

#include "engine/state/TargetMoves.h"

ByteHistory SeenBytes;

void ByteHistory::Seen(std::int32_t address, std::uint8_t value)
{
    Byte& byte = bytes_[static_cast<std::size_t>(address & 0xFFFF)];
    // The first reading after a move makes the previous one the reference;
    // further readings before the next move keep that reference.
    if (byte.known && byte.seenAt != TargetMoves) {
        byte.before = byte.latest;
        byte.hasBefore = true;
    }
    byte.latest = value;
    byte.seenAt = TargetMoves;
    byte.known = true;
}

void ByteHistory::Seen(std::int32_t address, std::span<const std::uint8_t> bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i)
        Seen(address + static_cast<std::int32_t>(i), bytes[i]);
}

std::uint8_t ByteHistory::ChangedBits(std::int32_t address) const
{
    const Byte& byte = bytes_[static_cast<std::size_t>(address & 0xFFFF)];
    return byte.hasBefore ? byte.before ^ byte.latest : 0;
}

std::uint32_t ByteHistory::ChangedBits(std::int32_t address, int count) const
{
    std::uint32_t bits = 0;
    for (int i = 0; i < count; ++i)
        bits = bits << 8 | ChangedBits(address + i);
    return bits;
}

void ByteHistory::Clear()
{
    bytes_.fill(Byte{});
}
