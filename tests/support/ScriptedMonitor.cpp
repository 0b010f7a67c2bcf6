#include "support/ScriptedMonitor.h"

#include "target/MonitorFrames.h"

ScriptedMonitor::ScriptedMonitor(FakeSerialLine& line)
{
    line.SetResponder([this](const QByteArray& frame) { return Answer(frame); });
}

QByteArray ScriptedMonitor::Answer(const QByteArray& frame)
{
    if (frame.isEmpty())
        return {};
    const auto byte = [&frame](int i) { return static_cast<std::uint8_t>(frame[i]); };
    QByteArray answer;
    switch (frame[0]) {
    case 'R': {
        const int address = byte(1) * 256 + byte(2);
        const int count = byte(3) == 0 ? 256 : byte(3);
        answer.append('R');
        for (int i = 0; i < count; ++i)
            answer.append(static_cast<char>(memory[(address + i) & 0xFFFF]));
        monitor::AppendChecksum(answer);
        return answer;
    }
    case 'W': {
        const int address = byte(1) * 256 + byte(2);
        for (int i = 0; i < byte(3); ++i)
            memory[(address + i) & 0xFFFF] = byte(4 + i);
        return QByteArray(1, '\x06');
    }
    case 'S':
        steps << frame;
        if (!answerSteps)
            return {};
        answer.append('S');
        for (int i = 0; i < 9; ++i)
            answer.append(static_cast<char>(nextStepRegisters ? (*nextStepRegisters)[i] : byte(1 + i)));
        nextStepRegisters.reset();
        monitor::AppendChecksum(answer);
        return answer;
    case 'X':
        executes << frame;
        return executeAnswer;
    default: return {};
    }
}
