#include "platform/widgets/WindowPlacement.h"

#include "platform/SettingsStore.h"

#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {
const QString Section = QStringLiteral("Windows");
// What must stay on the area of a frame: a piece of the title bar to take hold of.
constexpr int GripWidth = 100;
constexpr int GripHeight = 30;

// The widget that carries the placement: the MDI frame of a child window.
QWidget* FrameOf(QWidget* window)
{
    if (auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget()))
        return frame;
    return window;
}

double ReadNumber(const QString& key, double def)
{
    bool ok = false;
    const double value = GetSetting(Section, key, QString()).toDouble(&ok);
    return ok && std::isfinite(value) ? value : def;
}

QString Number(double value)
{
    return QString::number(static_cast<float>(value));
}

// Position and size as the placement has them: a top-level window's frame
// position (title bar included) and its size.
QRect FrameRect(const QWidget* frame)
{
    return {frame->pos(), frame->size()};
}

// Where a frame may stand: an MDI child inside the main window's client area,
// once that is on the screen; a top-level window on the available area of the
// screen under its centre, or of the primary screen when none is there.
QRect AreaOf(const QWidget* frame)
{
    if (!frame->isWindow()) {
        const QWidget* client = frame->parentWidget();
        return client && client->isVisible() ? client->rect() : QRect();
    }
    const QScreen* screen = QGuiApplication::screenAt(FrameRect(frame).center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

void KeepOnArea(QWidget* frame)
{
    const QRect now = FrameRect(frame);
    const QRect kept = KeptOnArea(now, AreaOf(frame));
    if (kept.size() != now.size())
        frame->resize(kept.size());
    if (kept.topLeft() != now.topLeft())
        frame->move(kept.topLeft());
}

WindowPlacement PlacementOf(const QRect& frame)
{
    WindowPlacement p;
    p.Left = PixelsToTwipsX(frame.x());
    p.Top = PixelsToTwipsY(frame.y());
    p.Width = PixelsToTwipsX(frame.width());
    p.Height = PixelsToTwipsY(frame.height());
    return p;
}
}  // namespace

QRect KeptOnArea(const QRect& frame, const QRect& area)
{
    if (area.isEmpty())
        return frame;
    const int width = std::clamp(frame.width(), 1, area.width());
    const int height = std::clamp(frame.height(), 1, area.height());
    const int gripWidth = std::min(width, GripWidth);
    const int gripHeight = std::min(height, GripHeight);
    const int left = std::clamp(frame.x(), area.x() - (width - gripWidth), area.x() + area.width() - gripWidth);
    const int top = std::clamp(frame.y(), area.y(), area.y() + area.height() - gripHeight);
    return {left, top, width, height};
}

void LoadPlacement(QWidget* window, const QString& prefix, const WindowPlacement& defaults)
{
    WindowPlacement p;
    // Only the two special states count; any other number is the normal one.
    const double state = ReadNumber(prefix + "State", defaults.State);
    p.State = state == 1 ? 1 : state == 2 ? 2 : 0;
    p.Left = ReadNumber(prefix + "Left", defaults.Left);
    p.Top = ReadNumber(prefix + "Top", defaults.Top);
    p.Width = ReadNumber(prefix + "Width", defaults.Width);
    p.Height = ReadNumber(prefix + "Height", defaults.Height);

    // The normal geometry goes first: a window maximised afterwards returns to it
    // when the user restores it.
    MoveToPlacement(window, p);
    QWidget* frame = FrameOf(window);
    KeepOnArea(frame);
    if (p.State == 1)
        frame->setWindowState(Qt::WindowMinimized);
    else if (p.State == 2)
        frame->setWindowState(Qt::WindowMaximized);
}

void MoveToPlacement(QWidget* window, const WindowPlacement& placement)
{
    QWidget* frame = FrameOf(window);
    frame->setWindowState(Qt::WindowNoState);
    frame->move(TwipsToPixelsX(placement.Left), TwipsToPixelsY(placement.Top));
    frame->resize(std::max(1, TwipsToPixelsX(placement.Width)), std::max(1, TwipsToPixelsY(placement.Height)));
}

void WritePlacement(const QString& prefix, const WindowPlacement& placement)
{
    SaveSetting(Section, prefix + "Left", Number(placement.Left));
    SaveSetting(Section, prefix + "Top", Number(placement.Top));
    SaveSetting(Section, prefix + "Width", Number(placement.Width));
    SaveSetting(Section, prefix + "Height", Number(placement.Height));
    SaveSetting(Section, prefix + "State", QStringLiteral("0"));
}

WindowPlacement CurrentPlacement(QWidget* window)
{
    const QWidget* frame = FrameOf(window);
    WindowPlacement p = PlacementOf(FrameRect(frame));
    p.State = frame->isMinimized() ? 1 : frame->isMaximized() ? 2 : 0;
    return p;
}

void SavePlacement(QWidget* window, const QString& prefix)
{
    const WindowPlacement p = CurrentPlacement(window);
    if (p.State != 0) {
        SaveSetting(Section, prefix + "State", QString::number(p.State));
        return;
    }
    const QWidget* frame = FrameOf(window);
    WritePlacement(prefix, PlacementOf(KeptOnArea(FrameRect(frame), AreaOf(frame))));
}
