// What the serial-line benchmarks share: the board emulator's program, a mean
// time over rounds, a figure printed as "name: value unit", and the count of
// failures that the program reported in message boxes.
#pragma once

#include "platform/widgets/MsgBox.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QString>
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

// Every message box the run shows counts as a failure and is answered OK.
inline void CountMessageBoxesAsFailures(int& failures)
{
    SetMsgBoxHandler([&failures](const QString&, int, const QString&) {
        ++failures;
        return MbResultOk;
    });
}
