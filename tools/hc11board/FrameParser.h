// Cuts the byte stream from the host into monitor frames. A byte-at-a-time
// state machine, as the monitor's receive loop: between frames anything that is
// not a command letter is ignored; a frame is complete when its length is
// reached (for "W" and "P" the length comes from the count at offset 3); a
// frame whose sum over offset 1 to its last byte is not 0 is dropped without a
// word; so is a frame left incomplete by a pause of more than SilenceMs.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace hc11board {

namespace letter {
constexpr std::uint8_t Read = 'R';
constexpr std::uint8_t Write = 'W';
constexpr std::uint8_t Program = 'P';
constexpr std::uint8_t Erase = 'E';
constexpr std::uint8_t Step = 'S';
constexpr std::uint8_t Execute = 'X';
} // namespace letter

// A complete frame with a good checksum: bytes[0] is the letter, the last
// byte the checksum.
struct Frame {
    std::vector<std::uint8_t> bytes;

    std::uint8_t Letter() const { return bytes[0]; }
    std::uint16_t Address() const { return std::uint16_t(bytes[1] << 8 | bytes[2]); }
};

class FrameParser {
public:
    static constexpr std::uint64_t SilenceMs = 50;

    // Takes one byte that arrived at the time nowMs (any monotonic millisecond
    // count); gives a frame when this byte completed a good one.
    std::optional<Frame> Feed(std::uint8_t byte, std::uint64_t nowMs);

    // Forgets a partial frame.
    void Clear() { frame_.clear(); }

    bool InFrame() const { return !frame_.empty(); }
    // Frames that were complete but dropped, and partial ones given up.
    int Rejected() const { return rejected_; }

private:
    std::size_t ExpectedLength() const;
    bool Valid() const;

    std::vector<std::uint8_t> frame_;
    std::uint64_t lastByteMs_ = 0;
    int rejected_ = 0;
};

} // namespace hc11board
