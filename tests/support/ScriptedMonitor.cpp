#include "support/ScriptedMonitor.h"

#include "engine/link/MonitorFrames.h"

ScriptedMonitor::ScriptedMonitor(FakeSerialLine& line)
{
    line.SetResponder([this](const QByteArray& frame) { return Answer(frame); });
}

QByteArray ScriptedMonitor::Answer(const QByteArray& frame)
{
    frames << frame;
    if (silent || frame.isEmpty())
        return {};
    const auto byte = [&frame](int i) { return static_cast<std::uint8_t>(frame.at(i)); };
    const bool addressed = frame.size() >= 4;
    const int address = addressed ? byte(1) * 256 + byte(2) : 0;
    const int count = addressed ? (byte(3) == 0 ? 256 : byte(3)) : 0;
    QByteArray answer;
    switch (frame[0]) {
    case 'R':
        if (!addressed)
            return {};
        for (int i = 0; i < count; ++i)
            answer.append(static_cast<char>(memory[(address + i) & 0xFFFF]));
        return ReadReply(answer);
    case 'W':
        for (int i = 0; addressed && i < count && 4 + i < frame.size(); ++i) {
            const int at = (address + i) & 0xFFFF;
            memory[at] = Stored ? Stored(at, byte(4 + i)) : byte(4 + i);
        }
        return QByteArray(1, char(monitor::Ack));
    case 'S':
        steps << frame;
        if (!answerSteps || frame.size() < 10)
            return {};
        answer.append('S');
        for (int i = 0; i < 9; ++i)
            answer.append(static_cast<char>(byte(1 + i)));
        monitor::AppendChecksum(answer);
        return answer;
    case 'X':
        executes << frame;
        return executeAnswer;
    default:
        return QByteArray(1, char(monitor::Ack));
    }
}

QByteArray ScriptedMonitor::ReadReply(const QByteArray& data)
{
    QByteArray reply(1, char(monitor::Ack));
    reply += data;
    monitor::AppendChecksum(reply);
    return reply;
}

int ScriptedMonitor::Count(char letter) const
{
    int n = 0;
    for (const QByteArray& frame : frames)
        n += frame.startsWith(letter);
    return n;
}
