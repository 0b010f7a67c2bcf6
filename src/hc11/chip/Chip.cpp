#include "hc11/chip/Chip.h"

#include "hc11/chip/Interrupts.h"

#include <algorithm>
#include <initializer_list>

namespace hc11::chip {

namespace {

// Clocks restart after STOP only once the oscillator has settled: 4064 E
// cycles when OPTION's DLY is set, none when a stable outside clock lets a
// program clear it.
constexpr std::uint64_t StopRecoveryCycles = 4064;

} // namespace

Chip::Chip(const ChipSetup& setup)
    : setup_(setup), ownRam_(std::make_unique<std::array<std::uint8_t, 65536>>()), ram_(*ownRam_)
{
    ram_.fill(0);
    Start();
}

Chip::Chip(const ChipSetup& setup, std::array<std::uint8_t, 65536>& memory) : setup_(setup), ram_(memory)
{
    Start();
}

void Chip::Start()
{
    cpu_.SetOnChip(true);
    cpu_.SetDirectPages(&directPages_);
    if (setup_.mode == OperatingMode::SpecialTest) {
        cpu_.SetVectorPage(0xBF);
        protection_.specialMode = true;
    }
    for (Peripheral* peripheral : std::initializer_list<Peripheral*>{&timer_, &sci_, &ports_, &cop_, &adc_, &spi_, &eeprom_})
        AddPeripheral(*peripheral);
    ResetFrom(ResetCause::Pin);
}

Chip::~Chip() = default;

// ---- memory ----

void Chip::MapDevice(std::uint16_t first, std::uint16_t last, OutsideDevice& device)
{
    devices_.push_back({first, last, &device});
    MarkSpecialPages();
}

void Chip::MarkSpecialPages()
{
    special_.fill(false);
    special_[registerBase_ >> 8] = true;   // the block never crosses a page: its base is a multiple of $1000
    if (EepromMapped())
        for (unsigned page = Eeprom::First >> 8; page <= unsigned(Eeprom::Last >> 8); ++page)
            special_[page] = true;
    for (const DeviceMap& map : devices_)
        for (unsigned page = map.first >> 8; page <= unsigned(map.last >> 8); ++page)
            special_[page] = true;
    for (unsigned page = 0; page < 256; ++page)
        directPages_[page] = special_[page] ? nullptr : &ram_[page << 8];
}

OutsideDevice* Chip::DeviceAt(std::uint16_t address) const
{
    for (auto it = devices_.rbegin(); it != devices_.rend(); ++it)
        if (address >= it->first && address <= it->last)
            return it->device;
    return nullptr;
}

std::uint8_t Chip::ReadAt(std::uint16_t address, bool debugger)
{
    const unsigned offset = unsigned(address - registerBase_) & 0xFFFF;
    if (offset < RegisterBlockSize)
        return debugger ? PeekRegister(offset) : ReadRegister(offset);
    if (InEeprom(address))
        return eeprom_.ReadArray(address);
    if (OutsideDevice* device = DeviceAt(address))
        return debugger ? device->Peek(address) : device->Read(address);
    return ram_[address];
}

void Chip::WriteAt(std::uint16_t address, std::uint8_t value, bool debugger)
{
    const unsigned offset = unsigned(address - registerBase_) & 0xFFFF;
    if (offset < RegisterBlockSize)
        WriteRegister(offset, value);
    else if (InEeprom(address) && debugger)
        eeprom_.Cells()[address - Eeprom::First] = value;
    else if (InEeprom(address))
        eeprom_.WriteArray(address, value);
    else if (OutsideDevice* device = DeviceAt(address))
        debugger ? device->Poke(address, value) : device->Write(address, value);
    else
        ram_[address] = value;
}

void Chip::Poke(std::uint16_t address, std::uint8_t value)
{
    WriteAt(address, value, true);
    if (settleAt_ == 0)
        Settle();
}

// ---- the register block ----

void Chip::AddPeripheral(Peripheral& peripheral)
{
    const auto index = std::uint8_t(peripherals_.size());
    peripherals_.push_back(&peripheral);
    for (std::uint8_t offset : peripheral.Registers()) {
        owners_[offset] = &peripheral;
        ownerIndex_[offset] = index;
    }
}

std::uint8_t Chip::ReadRegister(unsigned offset)
{
    if (Peripheral* owner = owners_[offset]) {
        const std::uint64_t now = Now();
        owner->AdvanceTo(now);
        settleAt_ = 0;
        stale_ |= 1u << ownerIndex_[offset];
        return owner->Read(offset, now);
    }
    return PeekRegister(offset);
}

std::uint8_t Chip::PeekRegister(unsigned offset)
{
    if (Peripheral* owner = owners_[offset]) {
        owner->AdvanceTo(Now());
        stale_ |= 1u << ownerIndex_[offset];
        return owner->Peek(offset);
    }
    switch (offset) {
    case reg::OPTION: return option_;
    case reg::HPRIO: return hprio_;
    case reg::INIT: return init_;
    case reg::TEST1: return 0;
    default: return plain_[offset];
    }
}

void Chip::WriteRegister(unsigned offset, std::uint8_t value)
{
    settleAt_ = 0;
    if (Peripheral* owner = owners_[offset]) {
        const std::uint64_t now = Now();
        owner->AdvanceTo(now);
        owner->Write(offset, value, now);
        stale_ |= 1u << ownerIndex_[offset];
        if (offset == reg::DDRD) {
            spi_.CheckModeFault();   // PD5 may have become the master's /SS input
            stale_ = AllStale;
        }
        return;
    }
    WriteSystemRegister(offset, value);
}

void Chip::WriteSystemRegister(unsigned offset, std::uint8_t value)
{
    const bool open = protection_.Open(Now());
    stale_ = AllStale;   // OPTION and CONFIG steer peripherals
    switch (offset) {
    case reg::OPTION: {
        // Bit 2 does not exist; the protected bits take one write, early.
        std::uint8_t writable = option::ADPU | option::CSEL | option::CME;
        if (open && !optionWritten_)
            writable |= option::TimeProtected;
        adc_.AdvanceTo(Now());
        option_ = std::uint8_t((option_ & ~writable) | (value & writable));
        adc_.PowerChanged();
        optionWritten_ = !protection_.specialMode;
        break;
    }
    case reg::HPRIO:
        // PSEL changes only while the I bit holds interrupts off; the mode
        // bits only in the special modes.
        if (cpu_.regs.ccr & ccr::I)
            hprio_ = std::uint8_t((hprio_ & ~hprio::PSEL) | (value & hprio::PSEL));
        break;
    case reg::INIT:
        if (open && !initWritten_) {
            init_ = value;
            initWritten_ = !protection_.specialMode;
            registerBase_ = std::uint16_t((value & 0x0F) << 12);
            MarkSpecialPages();
        }
        break;
    case reg::TEST1:    // test mode only
        break;
    default:
        plain_[offset] = value;
        break;
    }
}

// ---- resets and running ----

void Chip::ResetFrom(ResetCause cause)
{
    const std::uint64_t now = Now();
    protection_.resetAt = now;
    option_ = option::DLY;
    // PSEL at the reserved code: IRQ on top; MDA in the expanded modes, SMOD
    // and IRV as well in special test.
    hprio_ = setup_.mode == OperatingMode::Expanded ? 0x25 : setup_.mode == OperatingMode::SpecialTest ? 0x75 : 0x05;
    init_ = 0x01;
    registerBase_ = 0x1000;
    config_ = eeprom_.ConfigCell();
    optionWritten_ = initWritten_ = false;
    irqEdge_ = false;
    plain_.fill(0);
    for (Peripheral* peripheral : peripherals_)
        peripheral->Reset(now);
    MarkSpecialPages();

    cpu_.Reset();
    cpu_.SetXirq(inputs_.xirqAsserted);
    const std::uint16_t vector = cause == ResetCause::CopFailure ? CopFailVector
                                 : cause == ResetCause::ClockMonitor ? ClockMonitorVector
                                                                     : ResetVector;
    const std::uint16_t at = cpu_.VectorAt(vector);
    const unsigned high = Read(at);
    cpu_.regs.pc = std::uint16_t(high << 8 | Read(std::uint16_t(at + 1)));
    lastReset_ = cause;
    settleAt_ = 0;
    stale_ = AllStale;
    Settle();
}

void Chip::SyncAll()
{
    const std::uint64_t now = Now();
    for (Peripheral* peripheral : peripherals_)
        peripheral->AdvanceTo(now);
    settleAt_ = 0;
    stale_ = AllStale;
}

void Chip::Settle()
{
    const std::uint64_t now = Now();
    std::uint64_t next = NoEvent;
    std::uint32_t pending = 0;
    for (std::size_t i = 0; i < peripherals_.size(); ++i) {
        const std::uint32_t bit = 1u << i;
        if (eventAt_[i] <= now) {
            peripherals_[i]->AdvanceTo(now);
            stale_ |= bit;
        }
        if (stale_ & bit) {
            eventAt_[i] = peripherals_[i]->NextEvent();
            requests_[i] = peripherals_[i]->PendingInterrupts();
        }
        next = std::min(next, eventAt_[i]);
        pending |= requests_[i];
    }
    stale_ = 0;
    if (cop_.Failed()) {
        ResetFrom(ResetCause::CopFailure);
        return;
    }
    const bool edgeSensitive = option_ & option::IRQE;
    if (edgeSensitive ? irqEdge_ : inputs_.irqAsserted)
        pending |= Bit(Source::Irq);
    nextEvent_ = next;
    settleAt_ = next == NoEvent ? NoEvent : next + frozenCycles_;
    cpu_.SetMaskableRequest(HighestPriorityVector(pending, hprio_ & hprio::PSEL));
}

bool Chip::CanLeaveIdle() const
{
    const std::uint8_t cc = cpu_.regs.ccr;
    if (cpu_.XirqAsserted() && (!(cc & ccr::X) || cpu_.State() == RunState::Stopped))
        return true;
    return cpu_.MaskableRequest() != 0 && !(cc & ccr::I);
}

int Chip::Idle(std::uint64_t limit)
{
    const std::uint64_t start = cpu_.cycles;
    std::uint64_t until = limit;
    if (cpu_.State() == RunState::Waiting)
        until = std::min(until, settleAt_);
    until = std::max(until, start + 1);
    cpu_.cycles = until;
    if (cpu_.State() == RunState::Stopped)
        Freeze(until - start);
    if (cpu_.cycles >= settleAt_)
        Settle();
    return int(until - start);
}

int Chip::Step()
{
    // The common case: an instruction with nothing due after it.
    if (cpu_.State() == RunState::Running && !irqEdge_) {
        const std::uint64_t start = cpu_.cycles;
        cpu_.Step();
        if (cpu_.cycles >= settleAt_ || cpu_.State() != RunState::Running)
            AfterStep(RunState::Running);
        return int(cpu_.cycles - start);
    }
    return SlowStep();
}

int Chip::SlowStep()
{
    const RunState before = cpu_.State();
    if (before != RunState::Running && !CanLeaveIdle())
        return Idle(cpu_.cycles + MaxIdleStep);

    const std::uint8_t cc = cpu_.regs.ccr;
    const bool xirqFirst = cpu_.XirqAsserted() && !(cc & ccr::X);
    if (irqEdge_ && !xirqFirst && !(cc & ccr::I) && cpu_.MaskableRequest() == IrqVector) {
        irqEdge_ = false;   // the vector fetch ends the latched request
        settleAt_ = 0;
    }
    const std::uint64_t start = cpu_.cycles;
    cpu_.Step();
    AfterStep(before);
    return int(cpu_.cycles - start);
}

void Chip::AfterStep(RunState before)
{
    const RunState after = cpu_.State();
    if (after == RunState::Stopped && before == RunState::Running && (option_ & option::CME)) {
        // STOP halts the clock the monitor watches: it fails and resets.
        ResetFrom(ResetCause::ClockMonitor);
        return;
    }
    if (before == RunState::Stopped && after != RunState::Stopped && (option_ & option::DLY)) {
        cpu_.cycles += StopRecoveryCycles;
        Freeze(StopRecoveryCycles);
    }
    if (cpu_.cycles >= settleAt_)
        Settle();
}

void Chip::Freeze(std::uint64_t cycles)
{
    frozenCycles_ += cycles;
    if (settleAt_ != NoEvent && settleAt_ != 0)
        settleAt_ += cycles;
}

void Chip::RunUntil(std::uint64_t cycle)
{
    while (cpu_.cycles < cycle) {
        if (cpu_.State() != RunState::Running && !CanLeaveIdle())
            Idle(std::min(cycle, cpu_.cycles + MaxIdleStep));
        else
            Step();
    }
}

void Chip::SetInputs(const InputPins& inputs)
{
    SyncAll();
    const InputPins before = inputs_;
    inputs_ = inputs;
    if (!before.irqAsserted && inputs.irqAsserted && (option_ & option::IRQE))
        irqEdge_ = true;
    cpu_.SetXirq(inputs.xirqAsserted);
    const std::uint64_t now = Now();
    for (Peripheral* peripheral : peripherals_)
        peripheral->PinsChanged(before, now);
    Settle();
}

std::uint8_t Chip::PinLevels(Port port)
{
    SyncAll();
    switch (port) {
    case Port::A: return timer_.PortAPins();
    case Port::B: return ports_.PortBPins();
    case Port::C: return ports_.PortCPins();
    case Port::D: return ports_.PortDPins();
    default: return ports_.PortEPins();
    }
}

void Chip::SciReceive(const SciFrame& frame)
{
    const std::uint64_t now = Now();
    sci_.AdvanceTo(now);
    sci_.Receive(frame, now);
    stale_ = AllStale;
    Settle();
}

std::uint8_t Chip::SpiReceive(std::uint8_t byte)
{
    const std::uint64_t now = Now();
    spi_.AdvanceTo(now);
    const std::uint8_t sent = spi_.ShiftIn(byte, now);
    stale_ = AllStale;
    Settle();
    return sent;
}

namespace {

// What a line's peripheral finished sending, each item's time moved from the
// peripheral clock to Cycles().
template <typename LinePeripheral>
auto TakeFinished(LinePeripheral& peripheral, std::uint64_t now, std::uint64_t frozenCycles)
{
    peripheral.AdvanceTo(now);
    auto items = peripheral.TakeOutput();
    for (auto& item : items)
        item.endsAt += frozenCycles;
    return items;
}

} // namespace

std::vector<SpiTransfer> Chip::TakeSpiOutput()
{
    return TakeFinished(spi_, Now(), frozenCycles_);
}

std::vector<SciFrame> Chip::TakeSciOutput()
{
    return TakeFinished(sci_, Now(), frozenCycles_);
}

} // namespace hc11::chip
