// The whole chip for tests: programs assembled from source into its memory,
// the registers by their offsets, and runs measured in E cycles.
#pragma once

#include "hc11/chip/Chip.h"

#include <QString>

#include <cstdint>
#include <string>

// Assembles the source into memory; the assembler's errors, empty when there
// were none.
QString AssembleInto(std::array<std::uint8_t, 65536>& memory, const std::string& source);
// The same for a program of the examples folder; false when it would not.
bool AssembleExampleInto(std::array<std::uint8_t, 65536>& memory, const char* name);

struct ChipHarness {
    // A program that waits in WAI with nothing enabled: the chip idles, and
    // runs end on the exact E cycle asked for.
    static constexpr const char* Waiting = " ORG $E000\n LDS #$01FF\nW WAI\n BRA W\n";

    hc11::chip::Chip chip;

    explicit ChipHarness(const hc11::chip::ChipSetup& setup = {}) : chip(setup) {}
    // With the source loaded as Load does; one that does not assemble stops the test program with its errors.
    explicit ChipHarness(const std::string& source, const hc11::chip::ChipSetup& setup = {});

    // Assembles the source into memory and resets the chip, which starts at
    // the reset vector the source sets (or at $E000 when it sets none).
    // Returns the assembler's errors, empty when there were none.
    QString Load(const std::string& source);

    // The CPU's own accesses, with their side effects (a status read arming a flag's clearing).
    std::uint8_t CpuRead(unsigned offset) { return chip.CpuBus().Read(std::uint16_t(chip.RegisterBase() + offset)); }
    void CpuWrite(unsigned offset, std::uint8_t value)
    {
        chip.CpuBus().Write(std::uint16_t(chip.RegisterBase() + offset), value);
    }
    // A debugger's look at a register, without side effects.
    std::uint8_t Reg(unsigned offset) { return chip.Peek(std::uint16_t(chip.RegisterBase() + offset)); }
    void SetReg(unsigned offset, std::uint8_t value) { chip.Poke(std::uint16_t(chip.RegisterBase() + offset), value); }
    // A 16-bit register, high byte first.
    std::uint16_t Reg16(unsigned offset) { return std::uint16_t(Reg(offset) << 8 | Reg(offset + 1)); }
    void SetReg16(unsigned offset, std::uint16_t value)
    {
        SetReg(offset, std::uint8_t(value >> 8));
        SetReg(offset + 1, std::uint8_t(value));
    }
    std::uint16_t Word(std::uint16_t address)
    {
        return std::uint16_t(chip.Ram()[address] << 8 | chip.Ram()[std::uint16_t(address + 1)]);
    }

    // Runs cycles E cycles on from now.
    void Run(std::uint64_t cycles) { chip.RunUntil(chip.Cycles() + cycles); }
    // Changes the input pins as `change` says; the others stay as they were.
    template <class Change>
    void ChangeInputs(Change change)
    {
        hc11::chip::InputPins pins = chip.Inputs();
        change(pins);
        chip.SetInputs(pins);
    }
    // Runs to E cycle `at` and moves a port A input pin there.
    void SetPortAPinAt(std::uint64_t at, std::uint8_t pin, bool high)
    {
        chip.RunUntil(at);
        ChangeInputs([&](auto& pins) { pins.portA = std::uint8_t(high ? pins.portA | pin : pins.portA & ~pin); });
    }
    // Steps until PC is at address; false when limit cycles pass first.
    bool RunTo(std::uint16_t address, std::uint64_t limit = 1'000'000);
};

// The harness with the waiting program loaded and the chip reset into it.
struct WaitingChip : ChipHarness {
    explicit WaitingChip(const hc11::chip::ChipSetup& setup = {}) : ChipHarness(Waiting, setup) {}
};
