// A ROM image on the board, with no built-in monitor: the chip runs from its
// reset vector, and the SCI's line is the host's line both ways. What the
// host writes goes onto the SCI's receive line at once; the chip's receiver
// takes it a character at a time at the rate the program set.
#pragma once

#include "hc11/asm/S19Reader.h"
#include "hc11board/Board.h"
#include "hc11board/BoardProgram.h"

namespace hc11board {

class RomRunner final : public BoardProgram {
public:
    // The image's bytes at $E000-$FFFF go into the flash, the others into RAM.
    // An image that sets the special-mode reset vector at $BFFE is a boot
    // EPROM, as a monitor firmware's: the board is strapped for special
    // test mode and its bytes at $BC00-$BFFF are the EPROM's.
    RomRunner(const hc11::as11::S19Image& image, const FlashTiming& timing);

    void Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs) override;
    bool FreeRunning() const override { return true; }
    std::uint64_t Run(std::uint64_t cycles) override;
    std::uint64_t Cycles() const override { return board_.Hc11().Cycles(); }
    // A board strapped for its monitor firmware has the firmware's 9.8304 MHz
    // crystal: E = 2.4576 MHz, and the SCI's BAUD $20 gives 38400 bit/s.
    std::uint64_t EClockHertz() const override { return hertz_; }
    void Reset() override { board_.Reset(); }
    std::vector<std::uint8_t> TakeOutput() override;

    Board& Hardware() { return board_; }

private:
    static hc11::chip::OperatingMode ModeFor(const hc11::as11::S19Image& image);

    hc11::chip::OperatingMode mode_;
    std::uint64_t hertz_;
    Board board_;
};

} // namespace hc11board
