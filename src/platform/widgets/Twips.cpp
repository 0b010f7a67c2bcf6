// Twips (1440 to the inch) and pixels at the primary screen's logical
// resolution: the unit of every stored placement.
#include "platform/widgets/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace {
constexpr double TwipsPerInch = 1440.0;

double DpiX()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchX() : 96.0;
}

double DpiY()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchY() : 96.0;
}
}  // namespace

namespace {
// A stored number may be anything: far beyond every screen, or not a number.
int ToPixels(double twips, double dpi)
{
    constexpr double Farthest = 1e7;
    const double pixels = twips * dpi / TwipsPerInch;
    return std::isfinite(pixels) ? static_cast<int>(std::lround(std::clamp(pixels, -Farthest, Farthest))) : 0;
}
}  // namespace

int TwipsToPixelsX(double twips) { return ToPixels(twips, DpiX()); }
int TwipsToPixelsY(double twips) { return ToPixels(twips, DpiY()); }
double PixelsToTwipsX(int pixels) { return pixels * TwipsPerInch / DpiX(); }
double PixelsToTwipsY(int pixels) { return pixels * TwipsPerInch / DpiY(); }
