#include "support/ui/FakeToolWindow.h"

QStringList& FakeToolWindow::Log()
{
    static QStringList log;
    return log;
}

void FakeToolWindow::Called(const char* method)
{
    Log() << objectName() + QLatin1Char('.') + QLatin1String(method);
}

PluggedWindows::PluggedWindows(const QStringList& windows) : windows_(windows)
{
    FakeToolWindow::Log().clear();
    for (const QString& window : windows_)
        previous_ << toolwindows::SetFactory(window, [](frmMain&) -> QWidget* { return new FakeToolWindow; });
}

PluggedWindows::~PluggedWindows()
{
    // The real windows come back for the tests that follow in this process.
    for (qsizetype i = 0; i < windows_.size(); ++i)
        toolwindows::SetFactory(windows_[i], previous_[i]);
}
