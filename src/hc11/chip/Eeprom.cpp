#include "hc11/chip/Eeprom.h"

#include "hc11/chip/RegisterMap.h"

#include <algorithm>

namespace hc11::chip {

namespace {

constexpr std::uint8_t OwnRegisters[] = {reg::BPROT, reg::PPROG, reg::CONFIG};
constexpr std::uint8_t ErasedByte = 0xFF;

// BPROT's block bits and the array offsets each one guards.
struct Block {
    std::uint8_t bit;
    unsigned first, last;
};
constexpr Block Blocks[] = {
    {bprot::BPRT0, 0x000, 0x01F}, {bprot::BPRT1, 0x020, 0x05F},
    {bprot::BPRT2, 0x060, 0x0DF}, {bprot::BPRT3, 0x0E0, 0x1FF},
};

} // namespace

std::span<const std::uint8_t> Eeprom::Registers() const
{
    return OwnRegisters;
}

void Eeprom::Reset(std::uint64_t)
{
    pprog_ = 0;
    bprot_ = bprot::PTCON | bprot::BPRT3 | bprot::BPRT2 | bprot::BPRT1 | bprot::BPRT0;
    target_ = NoTarget;
    doneAt_ = NoEvent;
}

bool Eeprom::Protected(int target) const
{
    if (target == ConfigTarget)
        return bprot_ & bprot::PTCON;
    for (const Block& block : Blocks)
        if (unsigned(target) >= block.first && unsigned(target) <= block.last)
            return bprot_ & block.bit;
    return true;
}

void Eeprom::AdvanceTo(std::uint64_t now)
{
    if (doneAt_ <= now) {
        doneAt_ = NoEvent;
        Operate();
    }
}

void Eeprom::Operate()
{
    const auto change = [this](int target, bool erase) {
        if (Protected(target))
            return;
        std::uint8_t& cell = target == ConfigTarget ? configCell_ : cells_[target];
        cell = erase ? ErasedByte : std::uint8_t(cell & data_);
    };
    if (!(pprog_ & pprog::ERASE) || target_ == ConfigTarget) {
        change(target_, pprog_ & pprog::ERASE);
        return;
    }
    int first = target_, last = target_;
    if (!(pprog_ & pprog::BYTE)) {
        const bool row = pprog_ & pprog::ROW;
        first = row ? target_ & ~int(RowSize - 1) : 0;
        last = row ? first + int(RowSize) - 1 : int(Size) - 1;
    }
    for (int target = first; target <= last; ++target)
        change(target, true);
}

std::uint8_t Eeprom::ReadArray(std::uint16_t address) const
{
    return pprog_ & pprog::EELAT ? ErasedByte : cells_[address - First];
}

void Eeprom::WriteArray(std::uint16_t address, std::uint8_t value)
{
    Latch(address - First, value);
}

void Eeprom::Latch(int target, std::uint8_t value)
{
    if ((pprog_ & (pprog::EELAT | pprog::EPGM)) != pprog::EELAT)
        return;
    target_ = target;
    data_ = value;
}

std::uint8_t Eeprom::Peek(unsigned offset) const
{
    switch (offset) {
    case reg::BPROT: return bprot_;
    case reg::PPROG: return pprog_;
    default: return configRegister_;
    }
}

void Eeprom::Write(unsigned offset, std::uint8_t value, std::uint64_t now)
{
    switch (offset) {
    case reg::BPROT:
        // Protection comes off only early; it goes back on at any time.
        bprot_ = std::uint8_t((protection_.Open(now) ? value : bprot_ | value) & 0x1F);
        break;
    case reg::PPROG: WritePprog(value, now); break;
    default: Latch(ConfigTarget, value); break;   // CONFIG: latched for programming, never written directly
    }
}

void Eeprom::WritePprog(std::uint8_t value, std::uint64_t now)
{
    const std::uint8_t before = pprog_;
    // EPGM comes on only once EELAT already is, and goes off with it.
    const bool latching = value & pprog::EELAT;
    const bool voltage = latching && (value & pprog::EPGM) && (before & pprog::EELAT);
    pprog_ = std::uint8_t((value & ~(pprog::EPGM | 0x20)) | (voltage ? pprog::EPGM : 0));
    if (voltage && !(before & pprog::EPGM) && target_ != NoTarget)
        doneAt_ = now + ProgramCycles;
    else if (!voltage)
        doneAt_ = NoEvent;   // switched off early: the bytes stay as they were
    if (!latching)
        target_ = NoTarget;
}

} // namespace hc11::chip
