#include "support/BoardProcess.h"

#include "engine/link/MonitorExchange.h"

#include <csignal>

namespace {
constexpr int StartMs = 5000;
// The emulator is a separate process: on a busy machine it may miss the
// monitor's 100 ms, so the exchanges wait longer while it runs.
constexpr std::uint32_t BusyMachineStretch = 5;
}

BoardProcess::BoardProcess(const QStringList& arguments)
{
    exchange_timeout::Stretch = BusyMachineStretch;
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
    exchange_timeout::Stretch = 1;
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.terminate();
    if (!process_.waitForFinished(StartMs)) {
        process_.kill();
        process_.waitForFinished(StartMs);
    }
}

void BoardProcess::Reset() { ::kill(static_cast<pid_t>(process_.processId()), SIGUSR1); }

QStringList BoardProcess::Firmware()
{
    return {QStringLiteral("--rom"), qEnvironmentVariable("ORVANE_PROGRAM_DIR") + QStringLiteral("/monitor.s19")};
}
