#include "platform/DoEvents.h"

#include <QCoreApplication>

namespace {
std::function<void()>& Hook()
{
    static std::function<void()> hook;
    return hook;
}
}  // namespace

std::function<void()> SetDoEventsHook(std::function<void()> hook)
{
    return std::exchange(Hook(), std::move(hook));
}

void DoEvents()
{
    if (Hook())
        Hook()();
    else
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}
