#include "hc11board/BoardMemory.h"

#include <algorithm>

namespace hc11board {

namespace {

struct ResetValue {
    std::uint16_t address;
    std::uint8_t value;
};

// Registers with a defined value after reset (the rest read 0 here). SCCR2
// has TE and RE set because the monitor runs the line through the SCI.
constexpr ResetValue RegisterResetValues[] = {
    {0x1002, 0x03},   // PIOC
    {0x1028, 0x04},   // SPCR
    {0x102D, 0x0C},   // SCCR2: TE, RE
    {0x1039, 0x10},   // OPTION: DLY
    {0x103C, 0x05},   // HPRIO
    {0x103D, 0x01},   // INIT: RAM at $0000, registers at $1000
    {0x103F, 0x0C},   // CONFIG
};

bool InRegisterBlock(std::uint16_t address)
{
    return address >= RegisterBlockStart && address < RegisterBlockStart + RegisterBlockSize;
}

} // namespace

BoardMemory::BoardMemory()
{
    std::fill(bytes_.begin() + FlashStart, bytes_.end(), 0xFF);
    ResetDevices();
}

void BoardMemory::ResetDevices()
{
    std::fill_n(bytes_.begin() + RegisterBlockStart, RegisterBlockSize, 0);
    for (const ResetValue& reg : RegisterResetValues)
        bytes_[reg.address] = reg.value;
    std::fill_n(bytes_.begin() + PiaStart, PiaSize, 0);
    sci.Reset();
}

std::uint8_t BoardMemory::Peek(std::uint16_t address) const
{
    if (address == ScsrAddress)
        return sci.Status();
    if (address == ScdrAddress)
        return sci.ReceivedData();
    return bytes_[address];
}

void BoardMemory::Poke(std::uint16_t address, std::uint8_t value)
{
    if (IsFlash(address) || address == ScsrAddress || address == ScdrAddress)
        return;
    bytes_[address] = value;
}

void BoardMemory::Program(std::uint16_t address, std::uint8_t value)
{
    if (IsFlash(address))
        bytes_[address] &= value;
    else
        Poke(address, value);
}

void BoardMemory::EraseFlash()
{
    std::fill(bytes_.begin() + FlashStart, bytes_.end(), 0xFF);
}

std::uint8_t BoardMemory::CpuRead(std::uint16_t address)
{
    if (InRegisterBlock(address)) {
        if (address == ScsrAddress)
            return sci.ReadStatus();
        if (address == ScdrAddress)
            return sci.ReadData();
    }
    return bytes_[address];
}

void BoardMemory::CpuWrite(std::uint16_t address, std::uint8_t value)
{
    if (address == ScdrAddress) {
        sci.WriteData(value);
        return;
    }
    Poke(address, value);
}

} // namespace hc11board
