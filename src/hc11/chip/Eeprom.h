// The 512-byte EEPROM at $B600-$B7FF and the CONFIG cell, with PPROG, BPROT
// and the CONFIG register.
//
// Programming follows PPROG: EELAT set, then a write to an address latches
// it with its data (the last such write wins), then EPGM set (only once
// EELAT already is) turns the programming voltage on; after ProgramCycles
// with EPGM on the operation is done, and the program clears EPGM and EELAT.
// A program ANDs the data into the byte, since programming only clears bits;
// ERASE sets bytes to $FF: the latched byte (BYTE), its row of 16 (ROW) or
// the whole array (neither). BPROT's BPRT0-BPRT3 protect their blocks and
// PTCON the CONFIG cell; a protected byte keeps its value.
//
// CONFIG is programmed and erased the same way at the CONFIG register's
// address; the register reads the value the cell had at the last reset, so
// a new CONFIG takes effect at the next one. CONFIG's EEON maps the array
// (the chip asks ArrayEnabled()); with EEON clear those addresses are
// ordinary memory.
//
// Where the manual leaves the outcome open:
//  - A read of the array while EELAT is set gives $FF: the array drives
//    nothing while it is configured for programming.
//  - EPGM cleared before ProgramCycles have passed leaves the bytes as they
//    were; an erase addressed to CONFIG erases CONFIG alone.
//  - A write to the array with EELAT clear does nothing.
#pragma once

#include "hc11/chip/Peripheral.h"
#include "hc11/chip/TimeProtection.h"

#include <array>

namespace hc11::chip {

namespace pprog {
constexpr std::uint8_t ODD = 0x80, EVEN = 0x40, BYTE = 0x10, ROW = 0x08, ERASE = 0x04, EELAT = 0x02, EPGM = 0x01;
} // namespace pprog

namespace bprot {
constexpr std::uint8_t PTCON = 0x10, BPRT3 = 0x08, BPRT2 = 0x04, BPRT1 = 0x02, BPRT0 = 0x01;
} // namespace bprot

class Eeprom final : public Peripheral {
public:
    static constexpr std::uint16_t First = 0xB600, Last = 0xB7FF;
    static constexpr unsigned Size = 512, RowSize = 16;
    // The 10 ms program and erase time at E = 2 MHz.
    static constexpr std::uint64_t ProgramCycles = 20000;

    // The time protection BPROT's clearing obeys, the chip's CONFIG register,
    // and what the CONFIG cell holds at first.
    Eeprom(const TimeProtection& protection, const std::uint8_t& configRegister, std::uint8_t configCell)
        : protection_(protection), configRegister_(configRegister), configCell_(configCell)
    {
        cells_.fill(0xFF);
    }

    std::span<const std::uint8_t> Registers() const override;
    void Reset(std::uint64_t now) override;
    void AdvanceTo(std::uint64_t now) override;
    std::uint64_t NextEvent() const override { return doneAt_; }
    std::uint8_t Read(unsigned offset, std::uint64_t) override { return Peek(offset); }
    void Write(unsigned offset, std::uint8_t value, std::uint64_t now) override;
    std::uint8_t Peek(unsigned offset) const override;
    std::uint32_t PendingInterrupts() const override { return 0; }

    // The array as the CPU's bus sees it (address in [First, Last]).
    std::uint8_t ReadArray(std::uint16_t address) const;
    void WriteArray(std::uint16_t address, std::uint8_t value);

    // The host's view: the cells as they hold now, to show or to load.
    std::array<std::uint8_t, Size>& Cells() { return cells_; }
    const std::array<std::uint8_t, Size>& Cells() const { return cells_; }
    std::uint8_t ConfigCell() const { return configCell_; }
    void SetConfigCell(std::uint8_t value) { configCell_ = value; }

private:
    static constexpr int NoTarget = -1;
    static constexpr int ConfigTarget = Size;   // the latched target is the CONFIG cell

    bool Protected(int target) const;
    // A write while EELAT is set and EPGM clear latches its target and data.
    void Latch(int target, std::uint8_t value);
    void Operate();
    void WritePprog(std::uint8_t value, std::uint64_t now);

    const TimeProtection& protection_;
    const std::uint8_t& configRegister_;
    std::array<std::uint8_t, Size> cells_{};
    std::uint8_t configCell_;
    std::uint8_t pprog_ = 0, bprot_ = 0;
    int target_ = NoTarget;    // latched: an array offset, or ConfigTarget
    std::uint8_t data_ = 0;    // latched data
    std::uint64_t doneAt_ = NoEvent;
};

} // namespace hc11::chip
