// The host's frames as the byte vectors the board emulator takes, the replies
// the monitor should give, and a small SCI program.
#pragma once

#include "engine/link/MonitorFrames.h"
#include "support/ScriptedMonitor.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace boardtest {

using Bytes = std::vector<std::uint8_t>;

inline Bytes ToBytes(const QByteArray& bytes) { return Bytes(bytes.begin(), bytes.end()); }
inline Bytes ReadFrame(std::uint16_t address, int count) { return ToBytes(monitor::ReadFrame(address, count)); }
inline Bytes WriteFrame(std::uint16_t address, const Bytes& data) { return ToBytes(monitor::WriteFrame(address, data)); }
inline Bytes ProgramFrame(std::uint16_t address, const Bytes& data) { return ToBytes(monitor::ProgramFrame(address, data)); }

// Registers for "S" and "X"; the stack and CCR as a monitor's caller would set them.
inline CpuRegisterRecord Regs(std::uint8_t a = 0, std::uint8_t b = 0, int ix = 0, int iy = 0, int sp = 0x01FF,
                              std::uint8_t ccr = 0xD0)
{
    return {.A = a, .B = b, .IX = ix, .IY = iy, .SP = sp, .CCR = ccr};
}

// "S" with up to four code bytes, filled with NOP.
inline Bytes StepFrame(const CpuRegisterRecord& r, std::initializer_list<std::uint8_t> code)
{
    std::array<std::uint8_t, monitor::StepCodeSize> buffer;
    buffer.fill(monitor::Nop);
    std::copy(code.begin(), code.end(), buffer.begin());
    return ToBytes(monitor::StepFrame(r, buffer));
}

// "X": the code buffer jumps to pc.
inline Bytes ExecuteFrame(CpuRegisterRecord r, std::uint16_t pc)
{
    r.PC = pc;
    return ToBytes(monitor::ExecuteFrame(r));
}

// A reply of the monitor: ACK, the bytes, their checksum.
inline Bytes Reply(const Bytes& data)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data.data()), qsizetype(data.size()));
    return ToBytes(ScriptedMonitor::ReadReply(bytes));
}

// The reply to a step that leaves these registers.
inline Bytes StepReply(const CpuRegisterRecord& r)
{
    const monitor::SaveAreaBytes saved = monitor::SaveAreaOf(r);
    return Reply(Bytes(saved.begin(), saved.end()));
}

// A program at $2000 that sends the zero-terminated text at $2020 through
// the SCI, waiting for TDRE before each byte, then loops on itself.
inline const Bytes PrintProgram = {
    0xCE, 0x20, 0x20, 0xA6, 0x00, 0x27, 0x0D,   //       LDX #$2020; next: LDAA 0,X; BEQ done
    0xF6, 0x10, 0x2E, 0xC5, 0x80, 0x27, 0xF9,   // wait: LDAB SCSR; BITB #TDRE; BEQ wait
    0xB7, 0x10, 0x2F, 0x08, 0x20, 0xEF,         //       STAA SCDR; INX; BRA next
    0x20, 0xFE,                                 // done: BRA *
};

} // namespace boardtest
