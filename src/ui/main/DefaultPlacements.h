// Where each window opens before it has ever been saved.
#pragma once

#include "platform/widgets/WindowPlacement.h"

#include <QString>

// The placement a window has before it was ever saved, by key prefix ("Main",
// "DisAsm", "RegCPU" ...). clientWidth and clientHeight are the main window's
// client area in twips; screen sizes are the main window's own default.
WindowPlacement DefaultPlacement(const QString& prefix, double clientWidth, double clientHeight);
