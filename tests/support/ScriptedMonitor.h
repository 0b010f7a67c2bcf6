// A board's monitor played on the scripted serial line, over a 64 KB memory:
// "R" is answered with the bytes, "W" stores them and answers ACK. A store
// can be bent (Stored), as a register that reads back other than it was
// written; every frame is kept. Silent: no answer at all, as a dead board.
#pragma once

#include "support/MainFormFixture.h"
#include "target/MonitorFrames.h"

#include <QList>

#include <array>
#include <cstdint>
#include <functional>

struct ScriptedMonitor {
    std::array<std::uint8_t, 65536> memory{};
    QList<QByteArray> frames;
    bool silent = false;
    // What a written byte becomes in memory; unchanged by default.
    std::function<std::uint8_t(std::int32_t address, std::uint8_t written)> Stored;

    explicit ScriptedMonitor(MainFormFixture& f)
    {
        f.line.SetResponder([this](const QByteArray& frame) { return Answer(frame); });
    }

    QByteArray Answer(const QByteArray& frame)
    {
        frames << frame;
        if (silent || frame.size() < 4)
            return {};
        const int address = (std::uint8_t(frame[1]) << 8) | std::uint8_t(frame[2]);
        const int count = std::uint8_t(frame[3]) == 0 ? 256 : std::uint8_t(frame[3]);
        if (frame[0] == 'R') {
            QByteArray reply(1, char(monitor::Ack));
            for (int i = 0; i < count; ++i)
                reply += char(memory[(address + i) & 0xFFFF]);
            monitor::AppendChecksum(reply);
            return reply;
        }
        if (frame[0] == 'W') {
            for (int i = 0; i < count; ++i) {
                const int at = (address + i) & 0xFFFF;
                const auto byte = std::uint8_t(frame[4 + i]);
                memory[at] = Stored ? Stored(at, byte) : byte;
            }
        }
        return QByteArray(1, char(monitor::Ack));
    }

    // How many frames of a kind ("R", "W") the host has sent.
    int Count(char letter) const
    {
        int n = 0;
        for (const QByteArray& frame : frames)
            n += frame.startsWith(letter);
        return n;
    }
};
