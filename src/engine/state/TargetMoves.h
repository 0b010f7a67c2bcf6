// How often the target has been set moving: every step command and every run
// (Play, Animate, a free run) adds one as it starts. The views compare what
// they read against what they knew before the last move, so a value that a
// step or run changed can be told apart from one that stayed.
#pragma once

#include <cstdint>

extern std::uint32_t TargetMoves;

inline void NoteTargetMoves()
{
    ++TargetMoves;
}
