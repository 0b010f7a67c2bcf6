// The board's flash: an AMD Am29F040B, a JEDEC flash of 512 KB in eight
// sectors of 64 KB. The board decodes its first 8 KB at $E000-$FFFF: A0-A12
// come from the CPU's address, A13-A18 are tied low. Command cycles decode
// A10-A0 only, so the unlock addresses 555h and 2AAh are $E555 and $E2AA to
// the CPU (and $F555, $F2AA).
//
// The CPU programs it as the datasheet's command table says: reset (F0h),
// byte program (AA@555, 55@2AA, A0@555, data@address), chip erase
// (AA, 55, 80, AA, 55, 10@555), sector erase (the same with 30h at the
// sector's address), autoselect (90h: manufacturer 01h at 00, device A4h at
// 01). While an operation runs, every read gives its status: DQ7 the
// complement of the programmed data's bit 7 (0 for an erase), DQ6 and (for
// an erase) DQ2 toggling on each read, DQ3 set for an erase, DQ5 once the
// operation has failed; other writes are ignored. A program that would turn a
// 0 into a 1, and any erase on a board set to fail its erases, never
// finishes: after its normal time DQ5 comes on and only F0h brings the part
// back to reading the array. Erase suspend is not modelled.
//
// The whole 8 KB window lies in sector 0: a sector erase at any address of
// it and a chip erase both erase the whole window, and the 504 KB the board
// cannot address are not kept. The part has no reset pin, so a reset of the
// board leaves an operation running.
//
// The host's way in is Program() and Erase(), as a programmer's socket: the
// same array, at once.
#pragma once

#include "hc11/chip/OutsideDevice.h"

#include <array>
#include <cstdint>
#include <functional>

namespace hc11board {

// Times in E cycles of the 2 MHz clock: the datasheet's typical values.
struct FlashTiming {
    std::uint64_t programCycles = 14;             // byte program, 7 us
    std::uint64_t sectorEraseCycles = 2'000'000;  // 1 s
    std::uint64_t chipEraseCycles = 16'000'000;   // 8 s
    bool eraseFails = false;                      // every erase ends with DQ5
};

class FlashPart final : public hc11::chip::OutsideDevice {
public:
    static constexpr std::uint16_t WindowStart = 0xE000;
    static constexpr std::uint16_t WindowLast = 0xFFFF;
    static constexpr std::size_t WindowSize = 0x2000;
    static bool Holds(std::uint16_t address) { return address >= WindowStart; }

    // The clock is the chip's E cycle count.
    using Clock = std::function<std::uint64_t()>;
    explicit FlashPart(Clock clock, FlashTiming timing = {});

    std::uint8_t Read(std::uint16_t address) override;
    void Write(std::uint16_t address, std::uint8_t value) override;
    // A debugger sees the array and cannot write it.
    std::uint8_t Peek(std::uint16_t address) override { return array_[Offset(address)]; }
    void Poke(std::uint16_t, std::uint8_t) override {}

    // The host's side: programming clears bits only, an erase sets them all.
    // False when the byte needed a 0 back to 1: the part gives up with what
    // it could clear, as its own algorithm does.
    bool Program(std::uint16_t address, std::uint8_t value)
    {
        std::uint8_t& cell = array_[Offset(address)];
        cell &= value;
        return cell == value;
    }
    void Erase() { array_.fill(0xFF); }
    // Puts an image's byte into the array as it was written before the board started.
    void Load(std::uint16_t address, std::uint8_t value) { array_[Offset(address)] = value; }

    bool Busy();

private:
    enum class Phase : std::uint8_t {
        ReadArray, Unlocked, Commanded, ProgramSetup, EraseSetup, EraseUnlocking, EraseUnlocked,
        Autoselect, Running, Exceeded,
    };
    enum class Operation : std::uint8_t { Program, Erase };

    static std::size_t Offset(std::uint16_t address) { return address & (WindowSize - 1); }
    void Start(Operation operation, std::uint64_t cycles, bool fails);
    // Ends a running operation whose time is over.
    void Finish();
    std::uint8_t Status();

    Clock clock_;
    FlashTiming timing_;
    std::array<std::uint8_t, WindowSize> array_;
    Phase phase_ = Phase::ReadArray;
    Operation operation_ = Operation::Program;
    std::size_t programAt_ = 0;
    std::uint8_t programData_ = 0;
    bool fails_ = false;
    std::uint64_t doneAt_ = 0;
    bool toggle_ = false;
};

} // namespace hc11board
