#include "engine/state/TargetMoves.h"

std::uint32_t TargetMoves = 0;
