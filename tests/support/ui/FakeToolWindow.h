// A stand-in for any tool window: it has every menu-like method that the main
// window calls by name, and each call is written to one shared log as
// "frmStack.mnuRefresh". PluggedWindows plugs it in under the given names for
// as long as it lives.
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
    Q_INVOKABLE void PageRedraw() { Called("PageRedraw"); }
    Q_INVOKABLE void mnuGoToPCAddress() { Called("mnuGoToPCAddress"); }
    Q_INVOKABLE void mnuGoToAddress() { Called("mnuGoToAddress"); }
    Q_INVOKABLE void mnuSetNewPC() { Called("mnuSetNewPC"); }
    Q_INVOKABLE void mnuToggleBreakpoint() { Called("mnuToggleBreakpoint"); }
    Q_INVOKABLE void mnuClearAllBreakpoints() { Called("mnuClearAllBreakpoints"); }
    Q_INVOKABLE void mnuEnter() { Called("mnuEnter"); }
    Q_INVOKABLE void mnuViewHex() { Called("mnuViewHex"); }
    Q_INVOKABLE void mnuViewBin() { Called("mnuViewBin"); }
    Q_INVOKABLE void mnuViewDec() { Called("mnuViewDec"); }
    Q_INVOKABLE void mnuAutoRefresh() { Called("mnuAutoRefresh"); }
    Q_INVOKABLE void mnuGoToSPAddress() { Called("mnuGoToSPAddress"); }
    Q_INVOKABLE void mnuMemoryEnter() { Called("mnuMemoryEnter"); }
    Q_INVOKABLE void mnuMemoryAddress() { Called("mnuMemoryAddress"); }
    Q_INVOKABLE void mnuMemoryRefresh() { Called("mnuMemoryRefresh"); }

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
