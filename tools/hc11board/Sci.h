// The HC11's serial communications interface as the board's user program sees
// it: the data register SCDR and the status register SCSR are wired to the
// board's one serial line, the same line the monitor talks on.
//
// Timing is in E-clock cycles: one character of ten bits at 38400 bit/s takes
// 521 cycles of the 2 MHz E clock, so a program that polls TDRE is held to the
// speed of the wire, as on a real board.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

namespace hc11board {

namespace scsr {
constexpr std::uint8_t TDRE = 0x80;   // transmit data register empty
constexpr std::uint8_t TC = 0x40;     // transmit complete
constexpr std::uint8_t RDRF = 0x20;   // receive data register full
} // namespace scsr

namespace sccr2 {
constexpr std::uint8_t TIE = 0x80;
constexpr std::uint8_t TCIE = 0x40;
constexpr std::uint8_t RIE = 0x20;
} // namespace sccr2

constexpr std::uint16_t Sccr2Address = 0x102D;
constexpr std::uint16_t ScsrAddress = 0x102E;
constexpr std::uint16_t ScdrAddress = 0x102F;
constexpr std::uint16_t SciVector = 0xFFD6;
constexpr std::uint64_t CyclesPerCharacter = 521;

class Sci {
public:
    // Back to the state after a reset: idle transmitter, nothing received.
    void Reset();

    // Moves the clock on: a byte waiting in the transmit data register enters
    // the shifter when the one before has gone, and the next received byte
    // lands in SCDR once the program has taken the last.
    void Advance(std::uint64_t cycle);

    // The status as the program reads it; a read that sees RDRF arms its
    // clearing by the next read of SCDR.
    std::uint8_t ReadStatus();
    // The received byte; clears RDRF when a status read saw it set.
    std::uint8_t ReadData();
    // Sends a byte: it goes on the line at once when the shifter is idle, or
    // waits in the data register until it is.
    void WriteData(std::uint8_t value);

    // The status as it stands, without the side effect of a program's read.
    std::uint8_t Status() const;
    std::uint8_t ReceivedData() const { return rxData_; }

    // A byte from the line for the program.
    void Receive(std::uint8_t byte) { rxQueue_.push_back(byte); }
    std::size_t QueuedInput() const { return rxQueue_.size(); }

    // True when the interrupt enables of SCCR2 and the status ask for service.
    bool InterruptRequested(std::uint8_t sccr2Value) const;

    // Bytes the program has sent, in order; the owner takes them away.
    std::vector<std::uint8_t> lineOutput;

private:
    std::uint64_t now_ = 0;
    std::uint64_t shifterFreeAt_ = 0;   // when the character being sent has gone
    bool txPending_ = false;            // a byte waits in the transmit data register
    std::uint8_t txData_ = 0;
    std::deque<std::uint8_t> rxQueue_;
    std::uint64_t nextReceiveAt_ = 0;
    bool rdrf_ = false;
    bool rdrfSeen_ = false;
    std::uint8_t rxData_ = 0;
};

} // namespace hc11board
