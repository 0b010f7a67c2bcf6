#include "support/FakeToolWindow.h"

QStringList& FakeToolWindow::Log()
{
    static QStringList log;
    return log;
}

std::function<void(const QString&)>& FakeToolWindow::OnCall()
{
    static std::function<void(const QString&)> hook;
    return hook;
}

void FakeToolWindow::Called(const char* method)
{
    const QString call = objectName() + QLatin1Char('.') + QLatin1String(method);
    Log() << call;
    if (OnCall())
        OnCall()(call);
}

PluggedWindows::PluggedWindows(const QStringList& windows) : windows_(windows)
{
    FakeToolWindow::Log().clear();
    FakeToolWindow::OnCall() = nullptr;
    for (const QString& window : windows_)
        previous_ << toolwindows::SetFactory(window, [](frmMain&) -> QWidget* { return new FakeToolWindow; });
}

PluggedWindows::~PluggedWindows()
{
    // The real windows come back for the tests that follow in this process.
    for (qsizetype i = 0; i < windows_.size(); ++i)
        toolwindows::SetFactory(windows_[i], previous_[i]);
    FakeToolWindow::OnCall() = nullptr;
}
