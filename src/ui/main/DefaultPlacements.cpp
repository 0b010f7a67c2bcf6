#include "ui/main/DefaultPlacements.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSize>
#include <algorithm>

WindowPlacement DefaultPlacement(const QString& prefix, double W, double H, double codeWidth)
{
    struct Row {
        const char* prefix;
        double left, top, width, height;
    };
    // Sizes that depend on the main window's client area or on the
    // disassembly's width are computed below.
    static const Row rows[] = {
        {"RegAD", 0, 0, 2600, 1700},      {"RegOther", 0, 0, 2600, 1700},
        {"RegPA", 0, 0, 2600, 950},       {"RegPIA", 0, 0, 2600, 1450},
        {"RegPorts", 0, 0, 2600, 2730},   {"RegSCI", 0, 0, 2600, 1700},
        {"RegSPI", 0, 0, 2600, 1200},     {"RegTimer", 0, 0, 2600, 5000},
    };
    for (const Row& row : rows) {
        if (prefix == QLatin1String(row.prefix))
            return {0, row.left, row.top, row.width, row.height};
    }
    if (prefix == QLatin1String("Main")) {
        const QScreen* screen = QGuiApplication::primaryScreen();
        const QSize size = screen ? screen->size() : QSize(1024, 768);
        return {2, 0, 0, PixelsToTwipsX(size.width()), PixelsToTwipsY(size.height())};
    }
    // The disassembly, and beside it two columns: CPU over stack, watches over labels.
    const double code = std::max(codeWidth, MinimumCodeWidth);
    if (prefix == QLatin1String("DisAsm"))
        return {0, 0, 0, code, H};
    if (prefix == QLatin1String("RegCPU"))
        return {0, code, 0, 2600, 2450};
    if (prefix == QLatin1String("Stack"))
        return {0, code, 2450, 2600, H - 2450};
    if (prefix == QLatin1String("Watch"))
        return {0, code + 2600, 0, 2600, 2450};
    if (prefix == QLatin1String("Label"))
        return {0, code + 2600, 2450, 2600, H - 2450};
    if (prefix == QLatin1String("Memory"))
        return {0, 0, 0, W, H};
    if (prefix == QLatin1String("Serial"))
        return {0, W * 0.1, H * 0.1, W * 0.8, H * 0.8};
    return {};
}
