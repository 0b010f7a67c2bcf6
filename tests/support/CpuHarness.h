// An HC11 core on 64 KB of RAM, for tests that run instructions and look at
// what they did.
#pragma once

#include "hc11/Cpu.h"

#include <QString>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <vector>

// Writes bytes into a 64 KB memory from address on, wrapping past $FFFF.
void Poke(std::array<std::uint8_t, 65536>& memory, std::uint16_t address, std::initializer_list<int> bytes);

struct CpuHarness {
    static constexpr std::uint16_t Origin = 0x1000;

    hc11::FlatMemory memory;
    hc11::Cpu cpu{memory};

    void Poke(std::uint16_t address, std::initializer_list<int> bytes);   // as the free Poke, into memory
    // Big-endian word at address.
    std::uint16_t Word(std::uint16_t address) const;
    // Places the instruction at `at`, points PC there and runs one step; returns its cycles.
    int Run(std::initializer_list<int> instruction, std::uint16_t at = Origin);
};

// The set condition code bits as letters in the order SXHINZVC, e.g. "NC".
QString FlagLetters(std::uint8_t ccr);

// One instruction run from Origin on given registers, and what it must leave.
struct CpuCase {
    std::vector<int> bytes;
    std::uint16_t d, x, y;    // D, IX and IY before
    std::uint8_t ccr;         // condition codes before
    std::uint16_t outD, outX, outY;
    const char* flags;        // every set bit after, as FlagLetters spells them
};

// Runs each case on a fresh core and compares D, IX, IY and all flags.
void RunCpuCases(const std::vector<CpuCase>& cases);
