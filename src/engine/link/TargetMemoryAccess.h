// Blocks of the simulated target's memory. Addresses wrap at 65,536, as the
// processor's own do, so a block that starts near $FFFF goes on at $0000.
#pragma once

#include "engine/state/TargetState.h"

#include <cstdint>
#include <span>

inline std::uint16_t TargetAddress(std::int32_t address)
{
    return static_cast<std::uint16_t>(address & 0xFFFF);
}

inline void ReadTargetMemory(std::int32_t address, std::span<std::uint8_t> out)
{
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = TargetMemory[TargetAddress(address + static_cast<std::int32_t>(i))];
}

inline void WriteTargetMemory(std::int32_t address, std::span<const std::uint8_t> data)
{
    for (std::size_t i = 0; i < data.size(); ++i)
        TargetMemory[TargetAddress(address + static_cast<std::int32_t>(i))] = data[i];
}
