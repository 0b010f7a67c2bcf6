// What the views have seen of target memory, byte by byte, and which bytes
// changed across the last move of the target (core/TargetMoves.h). The memory
// and watch windows both report their reads here, so a byte read by one and
// then by the other after a step is judged against the same earlier value.
#pragma once

#include <array>
#include <cstdint>
#include <span>

class ByteHistory {
public:
    // A byte as read from the target; addresses wrap at 16 bits.
    void Seen(std::int32_t address, std::uint8_t value);
    void Seen(std::int32_t address, std::span<const std::uint8_t> bytes);
    // The byte's last reading differs from the last one before the move that
    // preceded it. A byte never read before that move has not changed.
    bool Changed(std::int32_t address) const;
    bool AnyChanged(std::int32_t address, int count) const;
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
