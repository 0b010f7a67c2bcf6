// The memory side of the HC11 core: whatever sits behind an address (RAM, the
// register block, a board's devices, a host's event handlers) answers through
// a Bus. Every address the core hands over is already reduced to 16 bits.
#pragma once

#include <array>
#include <cstdint>

namespace hc11 {

class Bus {
public:
    virtual ~Bus() = default;
    virtual std::uint8_t Read(std::uint16_t address) = 0;
    virtual void Write(std::uint16_t address, std::uint8_t value) = 0;
};

// 64 KB of plain RAM: the bus of the tests, the benchmarks and any target
// without devices.
class FlatMemory final : public Bus {
public:
    std::array<std::uint8_t, 65536> bytes{};

    std::uint8_t Read(std::uint16_t address) override { return bytes[address]; }
    void Write(std::uint16_t address, std::uint8_t value) override { bytes[address] = value; }
};

} // namespace hc11
