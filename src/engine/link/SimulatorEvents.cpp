// The memory events of the simulator component, and the simulated chip's
// accesses to the input-output unit: TargetMemory is the simulated target's
// memory. While the input-output unit's window is open, the
// program's read of the unit's in data clears the in flag, and its write of
// the out data sets the out flag.
#include "engine/state/TargetState.h"
#include "engine/link/TargetLink.h"
#include "engine/link/TargetMemoryAccess.h"

namespace {
constexpr std::int32_t InFlag = IoUnitAddress;
constexpr std::int32_t InData = IoUnitAddress + 1;
constexpr std::int32_t OutFlag = IoUnitAddress + 2;
constexpr std::int32_t OutData = IoUnitAddress + 3;
} // namespace

void TargetLink::SimulatorRead(std::int32_t Address, std::int16_t& Data)
{
    Data = TargetMemory[TargetAddress(Address)];
    if (Address == InData && reports_.IoUnitShown()) {
        TargetMemory[InFlag] = 0;
        if (IoUnitWindow)
            IoUnitWindow->setInFresh(0);
    }
}

void TargetLink::SimulatorWrite(std::int32_t Address, std::int16_t Data)
{
    const auto byte = static_cast<std::uint8_t>(Data);
    TargetMemory[TargetAddress(Address)] = byte;
    if (Address == OutData && reports_.IoUnitShown()) {
        TargetMemory[OutFlag] = 1;
        if (IoUnitWindow) {
            IoUnitWindow->setOutDataRegister(byte);
            IoUnitWindow->setOutFresh(1);
        }
    }
}

std::uint8_t TargetLink::IoUnitDevice::Read(std::uint16_t address)
{
    std::int16_t data = 0;
    link_.SimulatorRead(address, data);
    return static_cast<std::uint8_t>(data);
}

void TargetLink::IoUnitDevice::Write(std::uint16_t address, std::uint8_t value)
{
    link_.SimulatorWrite(address, value);
}
