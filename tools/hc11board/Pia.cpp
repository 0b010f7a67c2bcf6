#include "hc11board/Pia.h"

namespace hc11board {

namespace {
// Register offsets: the input registers of ports A and B, then their output
// and direction registers.
constexpr unsigned InputA = 0, InputB = 1, OutputA = 4, DirectionA = 6;

bool IsInput(unsigned offset) { return offset == InputA || offset == InputB; }
} // namespace

std::uint8_t Pia::Read(std::uint16_t address)
{
    const unsigned offset = address - Start;
    if (!IsInput(offset))
        return registers_[offset];
    const unsigned port = offset - InputA;
    const std::uint8_t direction = registers_[DirectionA + port];
    return std::uint8_t((registers_[OutputA + port] & direction) | ~direction);
}

void Pia::Write(std::uint16_t address, std::uint8_t value)
{
    const unsigned offset = address - Start;
    if (!IsInput(offset))
        registers_[offset] = value;
}

} // namespace hc11board
