#include "core/TargetMoves.h"

std::uint32_t TargetMoves = 0;
