#include "hc11board/Board.h"

#include "hc11/chip/RegisterMap.h"

namespace hc11board {

Board::Board(const FlashTiming& timing, hc11::chip::OperatingMode mode)
    : chip_(hc11::chip::ChipSetup{.mode = mode}), flash_([this] { return chip_.Cycles(); }, timing),
      hasBootRom_(mode == hc11::chip::OperatingMode::SpecialTest)
{
    chip_.MapDevice(Pia::Start, Pia::Last, pia_);
    chip_.MapDevice(FlashPart::WindowStart, FlashPart::WindowLast, flash_);
    if (hasBootRom_)
        chip_.MapDevice(BootRom::Start, BootRom::Last, bootRom_);
    Reset();
}

void Board::Reset()
{
    pia_.Reset();
    chip_.Reset();
}

void Board::Poke(std::uint16_t address, std::uint8_t value)
{
    namespace reg = hc11::chip::reg;
    const unsigned offset = unsigned(address - chip_.RegisterBase()) & 0xFFFF;
    if (FlashPart::Holds(address) || offset == reg::SCSR || offset == reg::SCDR)
        return;
    chip_.Poke(address, value);
}

bool Board::Program(std::uint16_t address, std::uint8_t value)
{
    if (FlashPart::Holds(address))
        return flash_.Program(address, value);
    Poke(address, value);
    return true;
}

void Board::Load(std::uint16_t address, std::uint8_t value)
{
    if (FlashPart::Holds(address))
        flash_.Load(address, value);
    else if (hasBootRom_ && BootRom::Holds(address))
        bootRom_.Load(address, value);
    else
        chip_.Ram()[address] = value;
}

void Board::TakeSciBytes(std::vector<std::uint8_t>& out)
{
    for (const hc11::chip::SciFrame& frame : chip_.TakeSciOutput())
        out.push_back(frame.isBreak ? 0 : frame.data);
}

} // namespace hc11board
