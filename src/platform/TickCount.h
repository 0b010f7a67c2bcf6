// The millisecond tick count of the time-outs. Time-outs compare differences
// of two readings, so the origin does not matter. A test may replace the clock.
#pragma once

#include <cstdint>
#include <functional>

std::uint32_t GetTickCount();

// Replaces the clock; an empty function restores the real one. Returns the previous one.
std::function<std::uint32_t()> SetTickCountSource(std::function<std::uint32_t()> source);
