// The simulator on the whole chip: the MC68HC11E model runs on TargetMemory,
// which is its RAM, so every window that reads TargetMemory sees what the
// program wrote there without a copy. The register block is the chip's,
// $6000-$6003 the input-output unit (a device the link supplies, whose cells
// are TargetMemory's), everything else memory.
//
// The host's CpuRegisters stay the registers between steps, as on the board:
// a step loads them into the core and takes them back, PC included.
#pragma once

#include "engine/state/TargetState.h"
#include "hc11/chip/Chip.h"

#include <QByteArray>

#include <bitset>
#include <cstdint>
#include <span>

// The simulated chip's lines a window shows or sets, by number: the eight
// analog channels of port E, the digital inputs of ports A, C and D, the
// strobe A line, and the device on the SPI: the byte it answers every
// transfer with and the last byte the program sent it.
enum class SimulatedLine : std::uint8_t { Analog0 = 0, PortA = 8, PortC, PortD, StrobeA, SpiAnswer, SpiSent };

class ChipSimulator {
public:
    // A WAI or STOP that nothing ends gives a step back after this many E
    // cycles (one second at 2 MHz): the core still waits, PC behind the WAI.
    static constexpr std::uint64_t MaxWaitCycles = 2'000'000;

    explicit ChipSimulator(hc11::chip::OutsideDevice& ioUnit);
    ChipSimulator(const ChipSimulator&) = delete;
    ChipSimulator& operator=(const ChipSimulator&) = delete;

    hc11::chip::Chip& Chip() { return chip_; }

    // As a debugger looks and changes: register reads without side effects,
    // addresses wrapping at 65,536.
    void Read(std::int32_t address, std::span<std::uint8_t> out);
    void Write(std::int32_t address, std::span<const std::uint8_t> data);

    void LoadRegisters(const CpuRegisterRecord& r);
    // A to CCR and PC from the core; the flags are the caller's (SplitCCR).
    void StoreRegisters(CpuRegisterRecord& r) const;

    // One instruction or one interrupt entry with r in and out; a WAI or a
    // STOP goes on until the interrupt that ends it has been entered (at most
    // MaxWaitCycles). Returns the E cycles it took.
    int Step(CpuRegisterRecord& r);

    // Runs the core (registers already loaded) until Cycles() reaches until
    // or PC, between two instructions, stands on a breakpoint. The first
    // instruction is not tested, so a run leaves the breakpoint it stands on
    // when leaveBreakpoint is set. True when a breakpoint stopped it.
    using BreakpointMap = std::bitset<65536>;
    bool RunUntil(std::uint64_t until, const BreakpointMap& breakpoints, bool leaveBreakpoint);

    // The SCI's line: what the terminal sends, and the characters the
    // program has sent since the last call.
    void Receive(const QByteArray& bytes);
    QByteArray TakeOutput();

    // The IRQ and XIRQ pins held low or let go.
    void SetIrq(bool asserted);
    void SetXirq(bool asserted);
    // A line's level: a conversion's code for an analog channel (Analog0
    // plus the channel), a byte of pins for a port (bits of output pins do
    // not reach the program), 0 or 1 for the strobe, a byte for the SPI
    // device (what it sent is the program's: setting SpiSent does nothing).
    std::uint8_t LineLevel(SimulatedLine line) const;
    void SetLineLevel(SimulatedLine line, std::uint8_t level);

    // Every register and peripheral to its reset state; memory stays.
    void Reset() { chip_.Reset(); }

private:
    // The device on the SPI's lines: it answers each byte with answer and
    // keeps the last byte it was sent. Left alone it answers $FF, as MISO
    // pulled high with nothing attached.
    struct SpiDevice final : hc11::chip::SpiPeer {
        std::uint8_t answer = 0xFF, lastSent = 0;
        std::uint8_t Exchange(std::uint8_t sent) override
        {
            lastSent = sent;
            return answer;
        }
    };

    SpiDevice spiDevice_;   // before the chip, which holds it
    hc11::chip::Chip chip_;
};
