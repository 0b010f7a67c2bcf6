// A stand-in for any tool window: it has the menu-like methods that the main
// window's refresh, run and download call by name, and each call is written
// to one shared log as "frmStack.mnuRefresh". PluggedWindows plugs it in
// under the given names for as long as it lives.
#pragma once

#include "ui/main/ToolWindows.h"

#include <QStringList>
#include <QWidget>

class FakeToolWindow : public QWidget {
    Q_OBJECT
public:
    static QStringList& Log();

    Q_INVOKABLE void mnuRefresh() { Called("mnuRefresh"); }
    Q_INVOKABLE void Redraw() { Called("Redraw"); }
    Q_INVOKABLE void ClearMarks() { Called("ClearMarks"); }
    Q_INVOKABLE void mnuGoToPCAddress() { Called("mnuGoToPCAddress"); }

private:
    void Called(const char* method);
};

class PluggedWindows {
public:
    explicit PluggedWindows(const QStringList& windows);
    ~PluggedWindows();

private:
    QStringList windows_;
    QList<toolwindows::Factory> previous_;
};
