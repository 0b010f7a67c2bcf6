// A monitor for FakeSerialLine that keeps 64 KB of memory: it answers "R"
// from it, stores "W" and ACKs, and keeps every "S" and "X" frame. A step is
// answered with the registers the frame carried, unless the test has set the
// next answer; an answer switched off leaves the host waiting.
#pragma once

#include "support/FakeSerialLine.h"

#include <QByteArray>
#include <QList>
#include <array>
#include <cstdint>
#include <optional>

struct ScriptedMonitor {
    explicit ScriptedMonitor(FakeSerialLine& line);

    std::array<std::uint8_t, 65536> memory{};
    QList<QByteArray> steps;           // the "S" frames, in order
    QList<QByteArray> executes;        // the "X" frames
    // The nine save-area bytes of the next step's answer, once.
    std::optional<std::array<std::uint8_t, 9>> nextStepRegisters;
    bool answerSteps = true;
    QByteArray executeAnswer = QByteArray(1, '\x06');

    QByteArray Answer(const QByteArray& frame);
};
