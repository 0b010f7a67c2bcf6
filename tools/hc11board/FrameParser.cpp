#include "hc11board/FrameParser.h"

namespace hc11board {

namespace {

// Length of a frame from its letter; 0 for a byte that starts no frame. "W"
// and "P" have 5 bytes around their data, whose count is only known later.
std::size_t FixedLength(std::uint8_t first)
{
    switch (first) {
    case letter::Read: return 5;
    case letter::Write:
    case letter::Program: return 5;
    case letter::Erase: return 4;
    case letter::Step: return 15;
    case letter::Execute: return 14;
    default: return 0;
    }
}

} // namespace

std::size_t FrameParser::ExpectedLength() const
{
    const std::uint8_t first = frame_[0];
    if ((first == letter::Write || first == letter::Program) && frame_.size() > 3)
        return 5 + std::size_t(frame_[3]);
    return FixedLength(first);
}

bool FrameParser::Valid() const
{
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < frame_.size(); ++i)
        sum = std::uint8_t(sum + frame_[i]);
    if (sum != 0)
        return false;
    // The erase frame repeats its letter; anything else there is not an erase.
    if (frame_[0] == letter::Erase)
        return frame_[1] == letter::Erase && frame_[2] == letter::Erase;
    return true;
}

std::optional<Frame> FrameParser::Feed(std::uint8_t byte, std::uint64_t nowMs)
{
    if (!frame_.empty() && nowMs - lastByteMs_ > SilenceMs) {
        frame_.clear();
        ++rejected_;
    }
    lastByteMs_ = nowMs;

    if (frame_.empty()) {
        if (FixedLength(byte) != 0)
            frame_.push_back(byte);
        return std::nullopt;
    }
    frame_.push_back(byte);
    if (frame_.size() < ExpectedLength())
        return std::nullopt;

    std::optional<Frame> complete;
    if (Valid())
        complete = Frame{std::move(frame_)};
    else
        ++rejected_;
    frame_.clear();
    return complete;
}

} // namespace hc11board
