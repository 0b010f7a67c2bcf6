// What the serial-line benchmarks share: the board emulator's program, a mean
// time over rounds, a figure printed as "name: value unit", and how late a
// timer is served while the program is busy. Nothing here needs a window.
#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <algorithm>
#include <cstdio>

inline QString BoardProgram()
{
    return qEnvironmentVariable("ORVANE_PROGRAM_DIR", QStringLiteral(ORVANE_PROGRAM_DIR)) +
           QStringLiteral("/hc11board");
}

// Starts the board emulator; its first line of output names the pseudo-terminal
// it serves. Empty when the program did not start.
inline QString StartBoard(QProcess& board, const QStringList& arguments)
{
    board.start(BoardProgram(), arguments);
    if (!board.waitForStarted(5000))
        return {};
    while (!board.canReadLine() && board.waitForReadyRead(5000)) {
    }
    return QString::fromLocal8Bit(board.readLine()).trimmed();
}

template <class Operation>
double MeanMs(int rounds, Operation operation)
{
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < rounds; ++i)
        operation();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6 / rounds;
}

inline void Print(const char* name, double value, const char* unit)
{
    std::printf("%s: %.3f %s\n", name, value, unit);
}

// A 10 ms timer that runs while it lives: the worst lateness of its ticks is
// the longest that any event waited for the event loop meanwhile.
class TimerLateness {
public:
    static constexpr int IntervalMs = 10;

    TimerLateness()
    {
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            const double gapMs = static_cast<double>(clock_.nsecsElapsed()) / 1e6;
            clock_.start();
            worstMs_ = std::max(worstMs_, gapMs - IntervalMs);
        });
        clock_.start();
        timer_.start(IntervalMs);
    }
    double WorstMs() const { return worstMs_; }

private:
    QTimer timer_;
    QElapsedTimer clock_;
    double worstMs_ = 0;
};
