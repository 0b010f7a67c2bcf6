#include "engine/link/ChipSimulator.h"

#include "engine/link/TargetMemoryAccess.h"

using hc11::RunState;

ChipSimulator::ChipSimulator(hc11::chip::OutsideDevice& ioUnit) : chip_({}, TargetMemory)
{
    chip_.MapDevice(IoUnitAddress, IoUnitAddress + IoUnitSize - 1, ioUnit);
    chip_.AttachSpiPeer(&spiDevice_);
}

void ChipSimulator::Read(std::int32_t address, std::span<std::uint8_t> out)
{
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = chip_.Peek(TargetAddress(address + static_cast<std::int32_t>(i)));
}

void ChipSimulator::Write(std::int32_t address, std::span<const std::uint8_t> data)
{
    for (std::size_t i = 0; i < data.size(); ++i)
        chip_.Poke(TargetAddress(address + static_cast<std::int32_t>(i)), data[i]);
}

void ChipSimulator::LoadRegisters(const CpuRegisterRecord& r)
{
    hc11::Registers& core = chip_.Core().regs;
    core.a = r.A;
    core.b = r.B;
    core.ix = TargetAddress(r.IX);
    core.iy = TargetAddress(r.IY);
    core.sp = TargetAddress(r.SP);
    core.pc = TargetAddress(r.PC);
    core.ccr = r.CCR;
}

void ChipSimulator::StoreRegisters(CpuRegisterRecord& r) const
{
    const hc11::Registers& core = chip_.Core().regs;
    r.A = core.a;
    r.B = core.b;
    r.IX = core.ix;
    r.IY = core.iy;
    r.SP = core.sp;
    r.PC = core.pc;
    r.CCR = core.ccr;
}

int ChipSimulator::Step(CpuRegisterRecord& r)
{
    LoadRegisters(r);
    const std::uint64_t start = chip_.Cycles();
    chip_.Step();
    while (chip_.Core().State() != RunState::Running && chip_.Cycles() - start < MaxWaitCycles)
        chip_.Step();
    StoreRegisters(r);
    return static_cast<int>(chip_.Cycles() - start);
}

bool ChipSimulator::RunUntil(std::uint64_t until, const BreakpointMap& breakpoints, bool leaveBreakpoint)
{
    if (breakpoints.none()) {
        chip_.RunUntil(until);
        return false;
    }
    const hc11::Cpu& core = chip_.Core();
    bool test = !leaveBreakpoint;
    while (chip_.Cycles() < until) {
        // A waiting core has no instruction boundary to stop at.
        if (test && core.State() == RunState::Running && breakpoints.test(core.regs.pc))
            return true;
        test = true;
        chip_.Step();
    }
    return false;
}

void ChipSimulator::Receive(const QByteArray& bytes)
{
    for (const char byte : bytes)
        chip_.SciReceive(static_cast<std::uint8_t>(byte));
}

QByteArray ChipSimulator::TakeOutput()
{
    QByteArray bytes;
    for (const hc11::chip::SciFrame& frame : chip_.TakeSciOutput())
        if (!frame.isBreak)
            bytes.append(static_cast<char>(frame.data));
    return bytes;
}

void ChipSimulator::SetIrq(bool asserted)
{
    hc11::chip::InputPins pins = chip_.Inputs();
    pins.irqAsserted = asserted;
    chip_.SetInputs(pins);
}

void ChipSimulator::SetXirq(bool asserted)
{
    hc11::chip::InputPins pins = chip_.Inputs();
    pins.xirqAsserted = asserted;
    chip_.SetInputs(pins);
}

std::uint8_t ChipSimulator::LineLevel(SimulatedLine line) const
{
    const hc11::chip::InputPins& pins = chip_.Inputs();
    switch (line) {
    case SimulatedLine::PortA: return pins.portA;
    case SimulatedLine::PortC: return pins.portC;
    case SimulatedLine::PortD: return pins.portD;
    case SimulatedLine::StrobeA: return pins.stra ? 1 : 0;
    case SimulatedLine::SpiAnswer: return spiDevice_.answer;
    case SimulatedLine::SpiSent: return spiDevice_.lastSent;
    default: return pins.analog.at(static_cast<std::size_t>(line));
    }
}

void ChipSimulator::SetLineLevel(SimulatedLine line, std::uint8_t level)
{
    if (line == SimulatedLine::SpiAnswer)
        spiDevice_.answer = level;
    if (line >= SimulatedLine::SpiAnswer)
        return;
    hc11::chip::InputPins pins = chip_.Inputs();
    switch (line) {
    case SimulatedLine::PortA: pins.portA = level; break;
    case SimulatedLine::PortC: pins.portC = level; break;
    case SimulatedLine::PortD: pins.portD = level & 0x3F; break;   // PD0-PD5
    case SimulatedLine::StrobeA: pins.stra = level & 1; break;
    default: pins.analog.at(static_cast<std::size_t>(line)) = level;
    }
    chip_.SetInputs(pins);
}
