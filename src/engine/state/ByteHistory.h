// What the views have seen of target memory, byte by byte, and which bytes
// changed across the last move of the target (engine/state/TargetMoves.h), so that a
// window can mark what the last step, run or Play changed. The register,
// memory and watch windows all report their reads here, so a byte read by
// one and then by another after a step is judged against the same earlier
// value.
#pragma once

#include <array>
#include <cstdint>
#include <span>

class ByteHistory {
public:
    // A byte as read from the target; addresses wrap at 16 bits.
    void Seen(std::int32_t address, std::uint8_t value);
    void Seen(std::int32_t address, std::span<const std::uint8_t> bytes);
    // The bits in which the byte's last reading differs from the last one
    // before the move that preceded it. A byte never read before that move
    // has not changed.
    std::uint8_t ChangedBits(std::int32_t address) const;
    // The changed bits of count bytes (up to 4), the first byte the high one.
    std::uint32_t ChangedBits(std::int32_t address, int count) const;
    bool Changed(std::int32_t address) const { return ChangedBits(address) != 0; }
    // Nothing known: the next reading starts over (another target).
    void Clear();

private:
    struct Byte {
        std::uint32_t seenAt = 0;   // TargetMoves at the last reading
        std::uint8_t latest = 0;
        std::uint8_t before = 0;    // the last reading before that move
        bool known = false;
        bool hasBefore = false;
    };
    std::array<Byte, 65536> bytes_{};
};

// The one history of the process.
extern ByteHistory SeenBytes;
