// Where each window opens before it has ever been saved.
#pragma once

#include "platform/widgets/WindowPlacement.h"

#include <QString>

// The narrowest the disassembly opens, in twips.
constexpr double MinimumCodeWidth = 5200;

// The placement a window has before it was ever saved, by key prefix ("Main",
// "DisAsm", "RegCPU" ...). clientWidth and clientHeight are the main window's
// client area in twips; screen sizes are the main window's own default.
// codeWidth is the disassembly's, which its font decides (at least
// MinimumCodeWidth); the CPU, stack, watch and label windows stand beside it.
WindowPlacement DefaultPlacement(const QString& prefix, double clientWidth, double clientHeight,
                                 double codeWidth = MinimumCodeWidth);
