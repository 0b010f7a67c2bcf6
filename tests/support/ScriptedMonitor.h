// A board's monitor played on the scripted serial line, over a 64 KB memory:
// "R" is answered with the bytes, "W" stores them and answers ACK, "S" is
// answered with the registers the frame carried, "X" with the execute answer. A store can be bent (Stored),
// as a register that reads back other than it was written; every frame is
// kept. Silent: no answer at all, as a dead board.
#pragma once

#include "support/FakeSerialLine.h"

#include <QByteArray>
#include <QList>

#include <array>
#include <cstdint>
#include <functional>

struct ScriptedMonitor {
    explicit ScriptedMonitor(FakeSerialLine& line);

    std::array<std::uint8_t, 65536> memory{};
    QList<QByteArray> frames;          // every frame, in order
    QList<QByteArray> steps;           // the "S" frames
    QList<QByteArray> executes;        // the "X" frames
    bool silent = false;
    bool answerSteps = true;           // off: a step leaves the host waiting
    QByteArray executeAnswer = QByteArray(1, '\x06');
    // What a written byte becomes in memory; unchanged by default.
    std::function<std::uint8_t(std::int32_t address, std::uint8_t written)> Stored;

    QByteArray Answer(const QByteArray& frame);
    // A monitor's answer to a read: ACK, the data, their checksum.
    static QByteArray ReadReply(const QByteArray& data);
    // How many frames of a kind ("R", "W") the host has sent.
    int Count(char letter) const;
};
