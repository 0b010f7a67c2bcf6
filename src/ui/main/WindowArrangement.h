// Where the Window menu's arrangements put the child windows, in twips of
// the main window's client area (W wide, H high). Only arithmetic: the
// commands that move the windows are in ArrangeCommands.cpp.
#pragma once

#include "platform/widgets/WindowPlacement.h"

#include <vector>

struct DebuggerPlacement {
    const char* window;   // "frmLabel" ...
    const char* prefix;   // its key prefix in the section "Windows"
    WindowPlacement placement;
};

// The five debugger windows in the order they are handled: frmLabel,
// frmWatch, frmStack, frmRegCPU, frmDisAsm. The disassembly takes what two
// columns of 2600 leave, and never less than 5200.
std::vector<DebuggerPlacement> DebuggerPlacements(double W, double H);

// Placements of n editors, by their index in the list of loaded windows.
std::vector<WindowPlacement> TileHorizontalPlacements(int n, double W, double H);
std::vector<WindowPlacement> TileVerticalPlacements(int n, double W, double H);
// The step is at most 24 pixels (twipsPerPixel of each axis) and shrinks so
// that n windows of 80 percent still fit in the area.
std::vector<WindowPlacement> CascadePlacements(int n, double W, double H, double twipsPerPixelX,
                                               double twipsPerPixelY);
