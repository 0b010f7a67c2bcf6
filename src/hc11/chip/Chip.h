// The MC68HC11E chip around the CPU core: 64 KB of memory, the register
// block with its on-chip peripherals, the interrupt logic, the resets and the
// low-power states, advanced by each instruction's E cycles.
//
// How a host drives it:
//  - Memory: Ram() is the whole 64 KB (RAM everywhere, the host loads its
//    program there). MapDevice() puts a device of its own on an address
//    range (a PIA, a flash, an input-output unit); the register block,
//    wherever INIT put it, comes before any device, a device before RAM.
//    Peek/Poke look and change as a debugger does: a register read has no
//    side effects there, a register write is the CPU's.
//  - Running: Reset() as the RESET pin does, then Step() one instruction (or
//    one interrupt entry, or an idle stretch while WAI or STOP holds the
//    core) or RunUntil(cycle). Cycles() counts E cycles since construction,
//    the host's clock for pacing (2 MHz on a real board).
//  - Pins: SetInputs() changes the input levels (see OutsideWorld.h), at
//    the current cycle; PinLevels() reads what the outputs drive.
//  - The SCI's line: Sci() (see Sci.h for its host side).
//
// Time protection, the interrupt priority with HPRIO's PSEL, the COP and the
// clock monitor resets, the illegal opcode trap and WAI/STOP are the chip's;
// each peripheral keeps its own registers (Peripheral.h). A new peripheral
// is a member below, listed in the constructor: the offsets its Registers()
// names stop being plain bytes. One that needs OPTION or CONFIG takes a
// reference to the chip's byte, as the COP does; analog levels and pins come
// from the InputPins it is given.
#pragma once

#include "hc11/Cpu.h"
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

    // ---- the peripherals, for a host's closer look ----
    const Timer& MainTimer() const { return timer_; }
    const Sci& SerialInterface() const { return sci_; }
    const Cop& Watchdog() const { return cop_; }

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

    std::uint64_t frozenCycles_ = 0;
    std::uint64_t nextEvent_ = NoEvent;   // on the peripheral clock
    // Cycles() at which Settle() is due: the next event, or 0 when a register
    // access or a pin may have changed a request.
    std::uint64_t settleAt_ = 0;
    bool irqEdge_ = false;        // a falling IRQ edge waits for service (IRQE set)
    ResetCause lastReset_ = ResetCause::Pin;
};

} // namespace hc11::chip
