// Frames as the host builds them, for the tests of the board emulator: the
// letter, the payload, and the checksum that makes offsets 1 to the end sum to 0.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace boardtest {

using Bytes = std::vector<std::uint8_t>;

inline Bytes WithChecksum(Bytes frame)
{
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < frame.size(); ++i)
        sum = std::uint8_t(sum + frame[i]);
    frame.push_back(std::uint8_t(-sum));
    return frame;
}

inline Bytes ReadFrame(std::uint16_t address, std::uint8_t count)
{
    return WithChecksum({'R', std::uint8_t(address >> 8), std::uint8_t(address), count});
}

inline Bytes DataFrame(std::uint8_t letter, std::uint16_t address, const Bytes& data)
{
    Bytes frame{letter, std::uint8_t(address >> 8), std::uint8_t(address), std::uint8_t(data.size())};
    frame.insert(frame.end(), data.begin(), data.end());
    return WithChecksum(frame);
}

inline Bytes EraseFrame() { return {'E', 'E', 'E', 0x76}; }

struct Regs {
    std::uint8_t a = 0, b = 0;
    std::uint16_t ix = 0, iy = 0, sp = 0x01FF;
    std::uint8_t ccr = 0xD0;
};

inline Bytes RegisterBytes(std::uint8_t letter, const Regs& r)
{
    return {letter, r.a, r.b, std::uint8_t(r.ix >> 8), std::uint8_t(r.ix), std::uint8_t(r.iy >> 8),
            std::uint8_t(r.iy), std::uint8_t(r.sp >> 8), std::uint8_t(r.sp), r.ccr};
}

// "S" with up to four code bytes, filled with NOP.
inline Bytes StepFrame(const Regs& r, std::initializer_list<std::uint8_t> code)
{
    Bytes frame = RegisterBytes('S', r);
    frame.insert(frame.end(), code.begin(), code.end());
    while (frame.size() < 14)
        frame.push_back(0x01);
    return WithChecksum(frame);
}

// "X": the code buffer jumps to pc.
inline Bytes ExecuteFrame(const Regs& r, std::uint16_t pc)
{
    Bytes frame = RegisterBytes('X', r);
    frame.insert(frame.end(), {0x7E, std::uint8_t(pc >> 8), std::uint8_t(pc)});
    return WithChecksum(frame);
}

// The 11-byte step reply the monitor should give for these registers; byte 0
// is the monitor's ACK.
inline Bytes StepReply(const Regs& r)
{
    Bytes reply = RegisterBytes(6, r);
    return WithChecksum(reply);
}

// A program at $2000 that sends the zero-terminated text at $2020 through
// the SCI, waiting for TDRE before each byte, then loops on itself.
inline const Bytes PrintProgram = {
    0xCE, 0x20, 0x20,         // LDX  #$2020
    0xA6, 0x00,               // LDAA 0,X
    0x27, 0x0D,               // BEQ  done
    0xF6, 0x10, 0x2E,         // LDAB SCSR
    0xC5, 0x80,               // BITB #TDRE
    0x27, 0xF9,               // BEQ  *-5
    0xB7, 0x10, 0x2F,         // STAA SCDR
    0x08,                     // INX
    0x20, 0xEF,               // BRA  next byte
    0x20, 0xFE,               // done: BRA *
};

// A program at $2100 that answers every received byte with that byte + 1.
inline const Bytes EchoProgram = {
    0xF6, 0x10, 0x2E,         // LDAB SCSR
    0xC5, 0x20,               // BITB #RDRF
    0x27, 0xF9,               // BEQ  *-5
    0xB6, 0x10, 0x2F,         // LDAA SCDR
    0x4C,                     // INCA
    0xF6, 0x10, 0x2E,         // LDAB SCSR
    0xC5, 0x80,               // BITB #TDRE
    0x27, 0xF9,               // BEQ  *-5
    0xB7, 0x10, 0x2F,         // STAA SCDR
    0x20, 0xE9,               // BRA  start
};

} // namespace boardtest
