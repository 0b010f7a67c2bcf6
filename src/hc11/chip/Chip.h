// The MC68HC11E chip around the CPU core: 64 KB of memory, the register
// block with its on-chip peripherals, the interrupt logic, the resets and the
// low-power states, advanced by each instruction's E cycles.
//
// How a host drives it:
//  - Memory: Ram() is the whole 64 KB (RAM everywhere, the host loads its
//    program there). MapDevice() puts a device of its own on an address
//    range (a PIA, a flash, an input-output unit); the register block,
//    wherever INIT put it, comes before any device, a device before RAM;
//    with CONFIG's EEON the EEPROM at $B600-$B7FF comes between the block
//    and the devices. Peek/Poke look and change as a debugger does: a
//    register read has no side effects there, a register write is the
//    CPU's, an EEPROM byte changes in place.
//  - Running: Reset() as the RESET pin does, then Step() one instruction (or
//    one interrupt entry, or an idle stretch while WAI or STOP holds the
//    core) or RunUntil(cycle). Cycles() counts E cycles since construction,
//    the host's clock for pacing (2 MHz on a real board).
//  - Pins: SetInputs() changes the input levels (see OutsideWorld.h), at
//    the current cycle; PinLevels() reads what the outputs drive.
//  - The SCI's line: Sci() (see Sci.h for its host side).
//  - The SPI's lines: a peer for the master (AttachSpiPeer), a byte from an
//    outside master (SpiReceive), the transfers done (TakeSpiOutput).
//  - The EEPROM: EepromMemory() shows and loads its cells and CONFIG's.
//
// Time protection, the interrupt priority with HPRIO's PSEL, the COP and the
// clock monitor resets, the illegal opcode trap and WAI/STOP are the chip's;
// each peripheral keeps its own registers (Peripheral.h). A new peripheral
// is a member below, listed in the constructor: the offsets its Registers()
// names stop being plain bytes. One that needs OPTION or CONFIG takes a
// reference to the chip's byte, as the COP does; analog levels and pins come
// from the InputPins it is given. The chip asks a peripheral for its next
// event and its requests again only when the event comes, after an access
// to its own registers, or after a change that may touch any of them (a
// system register, the pins, a host's call); one steered by anything else
// must be marked stale there.
#pragma once

#include "hc11/Cpu.h"
#include "hc11/chip/AdConverter.h"
#include "hc11/chip/Eeprom.h"
#include "hc11/chip/Spi.h"
#include "hc11/chip/OutsideDevice.h"
#include "hc11/chip/OutsideWorld.h"
#include "hc11/chip/Cop.h"
#include "hc11/chip/Peripheral.h"
#include "hc11/chip/Ports.h"
#include "hc11/chip/RegisterMap.h"
#include "hc11/chip/Sci.h"
#include "hc11/chip/TimeProtection.h"
#include "hc11/chip/Timer.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace hc11::chip {

enum class ResetCause : std::uint8_t { Pin, CopFailure, ClockMonitor };

class Chip {
public:
    explicit Chip(const ChipSetup& setup = {});
    // The chip on a host's 64 KB, which then is its RAM: a host that keeps
    // its own record of the target's memory reads what the program wrote
    // there, with no copy. memory outlives the chip.
    Chip(const ChipSetup& setup, std::array<std::uint8_t, 65536>& memory);
    ~Chip();
    Chip(const Chip&) = delete;
    Chip& operator=(const Chip&) = delete;

    // ---- the core and the memory ----
    Cpu& Core() { return cpu_; }
    const Cpu& Core() const { return cpu_; }
    // The bus as the CPU sees it, with every side effect: for a host that
    // runs single instructions through Cpu::Execute.
    Bus& CpuBus() { return bus_; }
    std::array<std::uint8_t, 65536>& Ram() { return ram_; }

    std::uint8_t Peek(std::uint16_t address) { return ReadAt(address, true); }
    void Poke(std::uint16_t address, std::uint8_t value);

    // The device answers [first, last]; maps made later win where they overlap.
    void MapDevice(std::uint16_t first, std::uint16_t last, OutsideDevice& device);

    // Where INIT put the register block ($1000 after reset).
    std::uint16_t RegisterBase() const { return registerBase_; }

    // ---- running ----
    // Every register and peripheral to its reset state, the CPU from the
    // reset vector; memory and the input pins stay as they are.
    void Reset() { ResetFrom(ResetCause::Pin); }
    ResetCause LastReset() const { return lastReset_; }

    // One instruction, one interrupt entry, or an idle stretch of WAI or
    // STOP up to the next event (at most MaxIdleStep cycles); returns the
    // E cycles it took.
    int Step();
    static constexpr int MaxIdleStep = 1024;
    // Steps until Cycles() reaches cycle; an idle stretch stops there exactly.
    void RunUntil(std::uint64_t cycle);
    std::uint64_t Cycles() const { return cpu_.cycles; }

    // ---- the outside world ----
    const ChipSetup& Setup() const { return setup_; }
    const InputPins& Inputs() const { return inputs_; }
    void SetInputs(const InputPins& inputs);
    // The levels on a port's pins now: outputs as driven, inputs as set.
    enum class Port : std::uint8_t { A, B, C, D, E };
    std::uint8_t PinLevels(Port port);

    // ---- the SCI's line ----
    // A character arrives on the receive line now; it is in the receiver a
    // frame time at the programmed rate after the line is free.
    void SciReceive(const SciFrame& frame);
    void SciReceive(std::uint8_t byte) { SciReceive(SciFrame{byte}); }
    // The characters sent since the last call, each with the Cycles() value
    // at which its stop bit ended.
    std::vector<SciFrame> TakeSciOutput();

    // ---- the SPI's lines ----
    // The slave the master talks to; none answers $FF. The peer must outlive
    // its attachment.
    void AttachSpiPeer(SpiPeer* peer) { spi_.Attach(peer); }
    // An outside master shifts a byte into the slave now; returns the byte
    // the chip shifts back ($FF when it is no enabled, selected slave).
    std::uint8_t SpiReceive(std::uint8_t byte);
    // The transfers finished since the last call, either way.
    std::vector<SpiTransfer> TakeSpiOutput();

    // ---- the EEPROM, for a host to show or load ----
    Eeprom& EepromMemory() { return eeprom_; }

    // ---- the peripherals, for a host's closer look ----
    const Timer& MainTimer() const { return timer_; }
    const Sci& SerialInterface() const { return sci_; }
    const Cop& Watchdog() const { return cop_; }
    const Spi& SerialPeripheral() const { return spi_; }
    const Eeprom& EepromMemory() const { return eeprom_; }

private:
    class ChipBus final : public Bus {
    public:
        explicit ChipBus(Chip& chip) : chip_(chip) {}
        std::uint8_t Read(std::uint16_t address) override { return chip_.Read(address); }
        void Write(std::uint16_t address, std::uint8_t value) override { chip_.Write(address, value); }

    private:
        Chip& chip_;
    };

    struct DeviceMap {
        std::uint16_t first, last;
        OutsideDevice* device;
    };

    // The peripheral clock: E cycles run with the clocks going.
    std::uint64_t Now() const { return cpu_.cycles - frozenCycles_; }

    std::uint8_t Read(std::uint16_t address)
    {
        if (!special_[address >> 8])
            return ram_[address];
        return ReadAt(address, false);
    }
    void Write(std::uint16_t address, std::uint8_t value)
    {
        if (!special_[address >> 8])
            ram_[address] = value;
        else
            WriteAt(address, value, false);
    }
    // The register block, then the devices, then RAM; a debugger's access
    // peeks where a read has side effects.
    std::uint8_t ReadAt(std::uint16_t address, bool debugger);
    void WriteAt(std::uint16_t address, std::uint8_t value, bool debugger);
    OutsideDevice* DeviceAt(std::uint16_t address) const;
    // CONFIG's EEON, as the last reset read it, puts the EEPROM on the map.
    bool EepromMapped() const { return config_ & config::EEON; }
    bool InEeprom(std::uint16_t address) const
    {
        return address >= Eeprom::First && address <= Eeprom::Last && EepromMapped();
    }
    void MarkSpecialPages();

    std::uint8_t ReadRegister(unsigned offset);
    void WriteRegister(unsigned offset, std::uint8_t value);
    std::uint8_t PeekRegister(unsigned offset);
    void WriteSystemRegister(unsigned offset, std::uint8_t value);

    void AddPeripheral(Peripheral& peripheral);
    void Start();
    void ResetFrom(ResetCause cause);
    // Runs the peripherals whose events are due, then recomputes the next
    // event and the interrupt request the core sees.
    void Settle();
    void SyncAll();
    bool CanLeaveIdle() const;
    int Idle(std::uint64_t limit);
    int SlowStep();
    void AfterStep(RunState before);
    // Cycles pass with the peripheral clock stopped.
    void Freeze(std::uint64_t cycles);

    ChipSetup setup_;
    InputPins inputs_;
    std::unique_ptr<std::array<std::uint8_t, 65536>> ownRam_;   // none on a host's memory
    std::array<std::uint8_t, 65536>& ram_;
    ChipBus bus_{*this};
    Cpu cpu_{bus_};

    std::vector<DeviceMap> devices_;
    std::array<bool, 256> special_{};     // pages holding registers or a device
    Cpu::PageTable directPages_{};        // the others, which the core reads in place
    std::uint16_t registerBase_ = 0x1000;

    std::vector<Peripheral*> peripherals_;
    std::array<Peripheral*, RegisterBlockSize> owners_{};
    // Settle's record of each peripheral, by its place in peripherals_: its
    // next event and requests as last asked. It asks again when the event
    // comes or when something may have changed them (a bit in stale_).
    static constexpr std::size_t MaxPeripherals = 16;
    static constexpr std::uint32_t AllStale = ~0u;
    std::array<std::uint8_t, RegisterBlockSize> ownerIndex_{};
    std::array<std::uint64_t, MaxPeripherals> eventAt_{};
    std::array<std::uint32_t, MaxPeripherals> requests_{};
    std::uint32_t stale_ = AllStale;
    std::array<std::uint8_t, RegisterBlockSize> plain_{};   // registers no peripheral owns

    TimeProtection protection_;
    std::uint8_t option_ = 0;
    std::uint8_t hprio_ = 0;
    std::uint8_t init_ = 0;
    std::uint8_t config_ = 0;
    bool optionWritten_ = false;
    bool initWritten_ = false;

    Timer timer_{inputs_, protection_};
    Sci sci_;
    Ports ports_{inputs_};
    Cop cop_{option_, config_};
    AdConverter adc_{inputs_, option_};
    Spi spi_{inputs_, ports_};
    Eeprom eeprom_{protection_, config_, setup_.config};

    std::uint64_t frozenCycles_ = 0;
    std::uint64_t nextEvent_ = NoEvent;   // on the peripheral clock
    // Cycles() at which Settle() is due: the next event, or 0 when a register
    // access or a pin may have changed a request.
    std::uint64_t settleAt_ = 0;
    bool irqEdge_ = false;        // a falling IRQ edge waits for service (IRQE set)
    ResetCause lastReset_ = ResetCause::Pin;
};

} // namespace hc11::chip
