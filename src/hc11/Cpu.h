// The M68HC11 CPU core: every instruction of the instruction set table, with
// its results in the registers, in memory (through a Bus) and in every
// condition code bit, and the E-clock cycles it takes.
//
// Two ways to drive it:
//  - Step(): a free run. Fetches the instruction at PC through the bus, runs
//    it, serves XIRQ and maskable interrupts between instructions.
//  - Execute(bytes): runs the instruction given in bytes as if it stood at
//    PC; only its data accesses go through the bus. For hosts that keep the
//    program themselves.
//
// Any byte sequence runs as something: an illegal opcode is a no-op of its
// decoded length (1, or 2 behind a prefix) that counts no cycles, unless the
// core runs on the chip (SetOnChip), where it traps. No call loops: WAI and
// STOP leave the core in a state the caller sees.
#pragma once

#include "hc11/InstructionSet.h"
#include "hc11/Alu.h"
#include "hc11/Bus.h"

#include <array>
#include <cstdint>

namespace hc11 {

struct Registers {
    std::uint8_t a = 0;
    std::uint8_t b = 0;
    std::uint16_t ix = 0;
    std::uint16_t iy = 0;
    std::uint16_t sp = 0;
    std::uint16_t pc = 0;
    std::uint8_t ccr = ccr::S | ccr::X | ccr::I;

    std::uint16_t D() const { return std::uint16_t(a << 8 | b); }
    void SetD(std::uint16_t d)
    {
        a = std::uint8_t(d >> 8);
        b = std::uint8_t(d);
    }
};

enum class RunState : std::uint8_t {
    Running,
    Waiting,   // after WAI: registers stacked, waiting for an interrupt
    Stopped,   // after STOP with S clear: clocks stopped until XIRQ or an interrupt
};

// Interrupt vectors the core itself uses.
constexpr std::uint16_t IrqVector = 0xFFF2;
constexpr std::uint16_t XirqVector = 0xFFF4;
constexpr std::uint16_t SwiVector = 0xFFF6;
constexpr std::uint16_t IllegalOpcodeVector = 0xFFF8;
constexpr std::uint16_t ResetVector = 0xFFFE;

class Cpu {
public:
    explicit Cpu(Bus& bus) : bus_(bus) {}

    // The register file, read and written directly by the owner.
    Registers regs;

    // Loads PC from the reset vector, sets S, X and I, and runs.
    void Reset();

    // One step of a free run: serves a pending interrupt, or runs the
    // instruction at PC, or, while waiting or stopped, idles. Returns the
    // E-cycles it took: the table's count for an instruction (WAI 0,
    // STOP 2), 14 for an interrupt entry (4 when WAI had stacked already),
    // 1 for an idle step so that a caller's cycle loop always moves on.
    int Step();

    // Runs the instruction at the front of bytes (5 bytes, the unused ones
    // ignored) as if it stood at PC: PC moves behind it or to the target of
    // a jump. Returns the table's cycle count. Does not look at the run state.
    int Execute(const std::uint8_t* bytes);

    RunState State() const { return state_; }
    void SetState(RunState state) { state_ = state; }

    // E-cycles counted since construction; the owner may reset it.
    std::uint64_t cycles = 0;

    // Interrupt inputs, sampled before each instruction of a free run.
    // XIRQ is a level, masked by X. The maskable request goes through the
    // given vector (IrqVector for the IRQ pin, or a peripheral's), masked by
    // I; 0 means none. Both stay as set until the owner changes them.
    void SetXirq(bool asserted) { xirq_ = asserted; }
    void SetMaskableRequest(std::uint16_t vector) { maskableVector_ = vector; }
    std::uint16_t MaskableRequest() const { return maskableVector_; }
    bool XirqAsserted() const { return xirq_; }

    // On the chip, Step() does what the silicon does where the bare core
    // keeps things simple: an illegal opcode traps through
    // IllegalOpcodeVector with its own first byte's address stacked (14
    // cycles, as SWI), and WAI counts the manual's 14 + n: 12 cycles when it
    // stacks and 2 for the vector fetch when an interrupt ends the wait.
    void SetOnChip(bool onChip) { onChip_ = onChip; }

    // The page the vectors are fetched from: $FF normally, $BF in the
    // special modes, where $BFC0-$BFFF replace $FFC0-$FFFF.
    void SetVectorPage(std::uint8_t page) { vectorPage_ = page; }
    std::uint16_t VectorAt(std::uint16_t vector) const { return std::uint16_t(vectorPage_ << 8 | (vector & 0xFF)); }

    // Pages of 256 bytes the core reads and writes in place, without the
    // bus: plain memory, for speed. A null entry, or no table, sends the
    // page's accesses through the bus. The owner keeps the table current.
    using PageTable = std::array<std::uint8_t*, 256>;
    void SetDirectPages(const PageTable* pages) { pages_ = pages ? pages : &NoDirectPages; }

private:
    // The decoded form of one opcode, built once from the instruction table.
    struct Decoded {
        Mnemonic mnemonic;
        Mode mode;
        std::uint8_t length;
        std::uint8_t cycles;
        bool legal;
    };
    static const Decoded& Decode(std::uint8_t first, std::uint8_t second);
    struct DecodeTable;
    static const DecodeTable DecodeRows;

    int Run(const Decoded& op, const std::uint8_t* operand);
    int ServeInterrupt(std::uint16_t vector, bool xirq);
    int TrapIllegalOpcode(std::uint16_t at);

    std::uint8_t Read(unsigned address)
    {
        address &= 0xFFFF;
        if (std::uint8_t* page = (*pages_)[address >> 8])
            return page[address & 0xFF];
        return bus_.Read(std::uint16_t(address));
    }
    void Write(unsigned address, unsigned value)
    {
        address &= 0xFFFF;
        if (std::uint8_t* page = (*pages_)[address >> 8])
            page[address & 0xFF] = std::uint8_t(value);
        else
            bus_.Write(std::uint16_t(address), std::uint8_t(value));
    }
    std::uint16_t Read16(unsigned address)
    {
        const unsigned high = Read(address);
        return std::uint16_t(high << 8 | Read(address + 1));
    }
    void Write16(unsigned address, unsigned value)
    {
        Write(address, value >> 8);
        Write(address + 1, value);
    }
    void Push8(unsigned value) { Write(regs.sp--, value); }
    std::uint8_t Pull8() { return Read(++regs.sp); }
    void Push16(unsigned value)
    {
        Push8(value);
        Push8(value >> 8);
    }
    std::uint16_t Pull16()
    {
        const unsigned high = Pull8();
        return std::uint16_t(high << 8 | Pull8());
    }
    // The interrupt frame of SWI, WAI and interrupts: PC, IY, IX, A, B, CCR.
    void PushFrame();

    Bus& bus_;
    RunState state_ = RunState::Running;
    bool xirq_ = false;
    std::uint16_t maskableVector_ = 0;
    bool onChip_ = false;
    std::uint8_t vectorPage_ = 0xFF;
    static const PageTable NoDirectPages;
    const PageTable* pages_ = &NoDirectPages;
};

// True when the branch condition of a relative branch holds for these
// condition codes (BRA true, BRN false; not meant for BSR).
bool BranchTaken(Mnemonic mnemonic, std::uint8_t cc);

} // namespace hc11
