#include "hc11board/RomRunner.h"

namespace hc11board {

namespace {

constexpr std::uint64_t MonitorCrystalEClock = 2'457'600;   // 9.8304 MHz / 4

// The flash's times are the part's own: in E cycles they grow with the clock.
FlashTiming AtEClock(FlashTiming timing, std::uint64_t hertz)
{
    for (std::uint64_t* cycles : {&timing.programCycles, &timing.sectorEraseCycles, &timing.chipEraseCycles})
        *cycles = *cycles * hertz / EClockHertzOfBoard;
    return timing;
}

} // namespace

hc11::chip::OperatingMode RomRunner::ModeFor(const hc11::as11::S19Image& image)
{
    constexpr std::uint16_t SpecialResetVector = 0xBFFE;
    for (const hc11::as11::S19Block& block : image.blocks)
        if (block.address <= SpecialResetVector && SpecialResetVector + 2 <= block.address + block.bytes.size())
            return hc11::chip::OperatingMode::SpecialTest;
    return hc11::chip::OperatingMode::Expanded;
}

RomRunner::RomRunner(const hc11::as11::S19Image& image, const FlashTiming& timing)
    : mode_(ModeFor(image)),
      hertz_(mode_ == hc11::chip::OperatingMode::SpecialTest ? MonitorCrystalEClock : EClockHertzOfBoard),
      board_(AtEClock(timing, hertz_), mode_)
{
    hc11::as11::ForEachByte(image, [this](std::uint16_t address, std::uint8_t byte) { board_.Load(address, byte); });
    board_.Reset();   // the reset vector now comes from the image
}

void RomRunner::Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t)
{
    for (std::size_t i = 0; i < count; ++i)
        board_.Hc11().SciReceive(bytes[i]);
}

std::uint64_t RomRunner::Run(std::uint64_t cycles)
{
    hc11::chip::Chip& chip = board_.Hc11();
    const std::uint64_t start = chip.Cycles();
    chip.RunUntil(start + cycles);
    return chip.Cycles() - start;
}

std::vector<std::uint8_t> RomRunner::TakeOutput()
{
    std::vector<std::uint8_t> bytes;
    board_.TakeSciBytes(bytes);
    return bytes;
}

} // namespace hc11board
