#include "platform/widgets/WindowPlacement.h"

#include "platform/SettingsStore.h"

#include <QMdiSubWindow>
#include <QWidget>
#include <cmath>

namespace {
const QString Section = QStringLiteral("Windows");

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
    return ok ? value : def;
}

QString Number(double value)
{
    return QString::number(static_cast<float>(value));
}
}  // namespace


void LoadPlacement(QWidget* window, const QString& prefix, const WindowPlacement& defaults)
{
    WindowPlacement p;
    p.State = static_cast<int>(ReadNumber(prefix + "State", defaults.State));
    p.Left = ReadNumber(prefix + "Left", defaults.Left);
    p.Top = ReadNumber(prefix + "Top", defaults.Top);
    p.Width = ReadNumber(prefix + "Width", defaults.Width);
    p.Height = ReadNumber(prefix + "Height", defaults.Height);

    // The normal geometry goes first: a window maximised afterwards returns to it
    // when the user restores it.
    MoveToPlacement(window, p);
    QWidget* frame = FrameOf(window);
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
    WindowPlacement p;
    p.State = frame->isMinimized() ? 1 : frame->isMaximized() ? 2 : 0;
    p.Left = PixelsToTwipsX(frame->x());
    p.Top = PixelsToTwipsY(frame->y());
    p.Width = PixelsToTwipsX(frame->width());
    p.Height = PixelsToTwipsY(frame->height());
    return p;
}

void SavePlacement(QWidget* window, const QString& prefix)
{
    const WindowPlacement p = CurrentPlacement(window);
    if (p.State == 0) {
        WritePlacement(prefix, p);
        return;
    }
    SaveSetting(Section, prefix + "State", QString::number(p.State));
}
