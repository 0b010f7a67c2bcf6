#include "engine/link/MonitorFrames.h"

#include "engine/state/Conversions.h"

namespace monitor {

namespace {
void AppendWord(QByteArray& frame, std::int32_t value)
{
    frame.append(static_cast<char>((value >> 8) & 0xFF));
    frame.append(static_cast<char>(value & 0xFF));
}

QByteArray DataFrame(char letter, std::int32_t address, std::span<const std::uint8_t> data)
{
    QByteArray frame(1, letter);
    AppendWord(frame, address);
    frame.append(static_cast<char>(data.size()));
    frame.append(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size()));
    AppendChecksum(frame);
    return frame;
}

QByteArray RegisterFrame(char letter, const CpuRegisterRecord& registers, std::span<const std::uint8_t> code)
{
    const SaveAreaBytes saved = SaveAreaOf(registers);
    QByteArray frame(1, letter);
    frame.append(reinterpret_cast<const char*>(saved.data()), SaveAreaSize);
    frame.append(reinterpret_cast<const char*>(code.data()), static_cast<qsizetype>(code.size()));
    AppendChecksum(frame);
    return frame;
}
} // namespace

SaveAreaBytes SaveAreaOf(const CpuRegisterRecord& r)
{
    auto high = [](std::int32_t v) { return static_cast<std::uint8_t>((v >> 8) & 0xFF); };
    auto low = [](std::int32_t v) { return static_cast<std::uint8_t>(v & 0xFF); };
    return {r.A, r.B, high(r.IX), low(r.IX), high(r.IY), low(r.IY), high(r.SP), low(r.SP), r.CCR};
}

void RegistersFromSaveArea(std::span<const std::uint8_t, SaveAreaSize> b, CpuRegisterRecord& r)
{
    r.A = b[0];
    r.B = b[1];
    r.IX = b[2] * 256 + b[3];
    r.IY = b[4] * 256 + b[5];
    r.SP = b[6] * 256 + b[7];
    r.CCR = b[8];
}

void AppendChecksum(QByteArray& frame)
{
    const std::uint8_t sum = ChecksumOf(frame, static_cast<int>(frame.size()) - 1);
    frame.append(static_cast<char>((256 - sum) % 256));
}

bool ChecksumValid(const QByteArray& reply)
{
    return ChecksumOf(reply, static_cast<int>(reply.size()) - 1) == 0;
}

QByteArray ReadFrame(std::int32_t address, int count)
{
    QByteArray frame(1, 'R');
    AppendWord(frame, address);
    frame.append(static_cast<char>(count % MaxReadCount));   // 256 travels as 0
    AppendChecksum(frame);
    return frame;
}

QByteArray ReadReplyData(const QByteArray& reply)
{
    return reply.size() < 2 ? QByteArray() : reply.mid(1, reply.size() - 2);
}

QByteArray WriteFrame(std::int32_t address, std::span<const std::uint8_t> data)
{
    return DataFrame('W', address, data);
}

QByteArray ProgramFrame(std::int32_t address, std::span<const std::uint8_t> data)
{
    return DataFrame('P', address, data);
}

QByteArray EraseFrame()
{
    QByteArray frame("EEE");
    AppendChecksum(frame);
    return frame;
}

QByteArray StepFrame(const CpuRegisterRecord& registers, const std::array<std::uint8_t, StepCodeSize>& code)
{
    return RegisterFrame('S', registers, code);
}

QByteArray ExecuteFrame(const CpuRegisterRecord& registers)
{
    const std::array<std::uint8_t, 3> jump = {JmpExtended, static_cast<std::uint8_t>((registers.PC >> 8) & 0xFF),
                                              static_cast<std::uint8_t>(registers.PC & 0xFF)};
    return RegisterFrame('X', registers, jump);
}

} // namespace monitor
