#include "support/BoardProcess.h"

#include <csignal>

namespace {
constexpr int StartMs = 5000;
}

BoardProcess::BoardProcess(const QStringList& arguments)
{
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(qEnvironmentVariable("ORVANE_PROGRAM_DIR") + QStringLiteral("/hc11board"), arguments);
    if (!process_.waitForStarted(StartMs))
        return;
    while (!process_.canReadLine() && process_.waitForReadyRead(StartMs)) {
    }
    path_ = QString::fromLocal8Bit(process_.readLine()).trimmed();
}

BoardProcess::~BoardProcess()
{
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.terminate();
    if (!process_.waitForFinished(StartMs)) {
        process_.kill();
        process_.waitForFinished(StartMs);
    }
}

void BoardProcess::Reset()
{
    ::kill(static_cast<pid_t>(process_.processId()), SIGUSR1);
}
