#include "hc11board/BoardMemory.h"

#include <algorithm>

namespace hc11board {

namespace {

struct ResetValue {
    std::uint16_t address;
    std::uint8_t value;
};

// Registers with a defined value after reset; the rest, undefined on the
// processor or reset to 0, read 0 here. SCSR comes from the SCI. SCCR2 has TE
// and RE set because the monitor runs the line through the SCI.
constexpr ResetValue RegisterResetValues[] = {
    {0x1002, 0x03},                   // PIOC: EGA, INVB
    {0x1016, 0xFF}, {0x1017, 0xFF},   // TOC1 to TOC5 reset to $FFFF
    {0x1018, 0xFF}, {0x1019, 0xFF},
    {0x101A, 0xFF}, {0x101B, 0xFF},
    {0x101C, 0xFF}, {0x101D, 0xFF},
    {0x101E, 0xFF}, {0x101F, 0xFF},
    {0x1028, 0x04},                   // SPCR: CPHA
    {0x102D, 0x0C},                   // SCCR2: TE, RE
    {0x1039, 0x10},                   // OPTION: DLY
    {0x103C, 0x25},                   // HPRIO: expanded mode (MDA), PSEL at IRQ
    {0x103D, 0x01},                   // INIT: RAM at $0000, registers at $1000
    {0x103F, 0x0C},                   // CONFIG: ROM and EEPROM off, the flash in their place
};

// The PIA's input registers show the pins of its ports: an output bit (its
// direction bit set) drives its pin from the output register; an input pin
// with nothing connected is pulled high. Writing them changes nothing.
constexpr std::uint16_t PiaInputA = PiaStart, PiaInputB = PiaStart + 1;
constexpr std::uint16_t PiaOutputA = PiaStart + 4, PiaDirectionA = PiaStart + 6;

bool IsPiaInput(std::uint16_t address)
{
    return address == PiaInputA || address == PiaInputB;
}

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

std::uint8_t BoardMemory::PiaPins(std::uint16_t inputAddress) const
{
    const int port = inputAddress - PiaInputA;
    const std::uint8_t direction = bytes_[PiaDirectionA + port];
    return std::uint8_t((bytes_[PiaOutputA + port] & direction) | ~direction);
}

std::uint8_t BoardMemory::Peek(std::uint16_t address) const
{
    if (IsPiaInput(address))
        return PiaPins(address);
    if (address == ScsrAddress)
        return sci.Status();
    if (address == ScdrAddress)
        return sci.ReceivedData();
    return bytes_[address];
}

void BoardMemory::Poke(std::uint16_t address, std::uint8_t value)
{
    if (IsFlash(address) || address == ScsrAddress || address == ScdrAddress || IsPiaInput(address))
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
    if (IsPiaInput(address))
        return PiaPins(address);
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
