// Twips (1440 to the inch) and pixels at the primary screen's logical
// resolution: the unit of every stored placement.
#include "platform/widgets/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
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

int TwipsToPixelsX(double twips) { return static_cast<int>(std::lround(twips * DpiX() / TwipsPerInch)); }
int TwipsToPixelsY(double twips) { return static_cast<int>(std::lround(twips * DpiY() / TwipsPerInch)); }
double PixelsToTwipsX(int pixels) { return pixels * TwipsPerInch / DpiX(); }
double PixelsToTwipsY(int pixels) { return pixels * TwipsPerInch / DpiY(); }
