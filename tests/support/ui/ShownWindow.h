// The main window of a GUI test as a user has it: started, in the simulator
// when the test wants no board, and shown at a size on the (offscreen)
// screen until the window system has exposed it, so that layouts, visible
// rows and grabs are those of a window in use.
#pragma once

#include "platform/SettingsStore.h"
#include "support/ui/MainFormFixture.h"

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSize>
#include <QTest>

// Starts the fixture's main window with the simulator chosen in its settings,
// on flat memory or on the whole chip.
inline frmMain& StartInSimulator(MainFormFixture& f, bool onChip = false)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("SimEnabled"), QStringLiteral("True"));
    if (onChip)
        SaveSetting(QStringLiteral("Settings"), QStringLiteral("SimPeripherals"), QStringLiteral("True"));
    return f.Start();
}

// Shows the window at size; false when it was never exposed.
[[nodiscard]] inline bool ShowAt(frmMain& form, QSize size)
{
    form.showNormal();
    form.resize(size);
    return QTest::qWaitForWindowExposed(&form);
}

// Opens a tool window by its menu entry; null when the window is not of type W.
template <class W>
W* OpenByMenu(frmMain& form, const char* entry, const char* window)
{
    form.Menu(entry)->trigger();
    return qobject_cast<W*>(form.Window(window));
}

// Brings a child window (a tool window or an editor) to the front, as a click on its frame does,
// and lets the windows answer.
inline void Activate(frmMain& form, QWidget* window)
{
    form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(window->parentWidget()));
    QCoreApplication::processEvents();
}

// With ORVANE_SCREENSHOT set to a folder, saves a picture of the widget there.
inline void SaveScreenshot(QWidget* widget, const char* file)
{
    const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
    if (!folder.isEmpty())
        QVERIFY(widget->grab().save(QDir(folder).filePath(file)));
}
