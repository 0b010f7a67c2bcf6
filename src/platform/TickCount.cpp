#include "platform/TickCount.h"

#include <QElapsedTimer>

namespace {
std::function<std::uint32_t()>& Source()
{
    static std::function<std::uint32_t()> source;
    return source;
}
}  // namespace

std::function<std::uint32_t()> SetTickCountSource(std::function<std::uint32_t()> source)
{
    return std::exchange(Source(), std::move(source));
}

std::uint32_t GetTickCount()
{
    if (Source())
        return Source()();
    static QElapsedTimer clock = [] { QElapsedTimer t; t.start(); return t; }();
    return static_cast<std::uint32_t>(clock.elapsed());
}
