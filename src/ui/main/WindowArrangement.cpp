#include "ui/main/WindowArrangement.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double ColumnWidth = 2600;
constexpr double RegistersHeight = 2450;
constexpr double CascadeStepPixels = 24;

// A size rounded to whole twips the way the arrangements divide it: to
// nearest, halves to even.
long Whole(double twips)
{
    return std::lrint(twips);
}

WindowPlacement At(double left, double top, double width, double height)
{
    return WindowPlacement{0, left, top, width, height};
}
}  // namespace

std::vector<DebuggerPlacement> DebuggerPlacements(double W, double H)
{
    const double d = std::max(W - 2 * ColumnWidth, 5200.0);
    const double low = H - RegistersHeight;
    return {
        {"frmLabel", "Label", At(d + ColumnWidth, RegistersHeight, ColumnWidth, low)},
        {"frmWatch", "Watch", At(d + ColumnWidth, 0, ColumnWidth, RegistersHeight)},
        {"frmStack", "Stack", At(d, RegistersHeight, ColumnWidth, low)},
        {"frmRegCPU", "RegCPU", At(d, 0, ColumnWidth, RegistersHeight)},
        {"frmDisAsm", "DisAsm", At(0, 0, d, H)},
    };
}

std::vector<WindowPlacement> TileHorizontalPlacements(int n, double W, double H)
{
    std::vector<WindowPlacement> placements;
    if (n <= 0)
        return placements;
    const long h = Whole(H) / n;
    for (int i = 0; i < n; ++i)
        placements.push_back(At(0, double(i) * h, W, h));
    return placements;
}

std::vector<WindowPlacement> TileVerticalPlacements(int n, double W, double H)
{
    std::vector<WindowPlacement> placements;
    if (n <= 0)
        return placements;
    const long w = Whole(W) / n;
    for (int i = 0; i < n; ++i)
        placements.push_back(At(double(i) * w, 0, w, H));
    return placements;
}

std::vector<WindowPlacement> CascadePlacements(int n, double W, double H, double twipsPerPixelX,
                                               double twipsPerPixelY)
{
    std::vector<WindowPlacement> placements;
    if (n <= 0)
        return placements;
    const double sx = std::min<double>(Whole(W * 0.2) / n, CascadeStepPixels * twipsPerPixelX);
    const double sy = std::min<double>(Whole(H * 0.2) / n, CascadeStepPixels * twipsPerPixelY);
    for (int i = 0; i < n; ++i)
        placements.push_back(At(i * sx, i * sy, W * 0.8, H * 0.8));
    return placements;
}
