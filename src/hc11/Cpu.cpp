#include "hc11/Cpu.h"

#include <array>
#include <cstring>

namespace hc11 {

namespace {
// Cycles of an interrupt entry: stacking nine bytes and fetching the vector,
// as SWI. After WAI the frame is on the stack already.
constexpr int InterruptEntryCycles = 14;
constexpr int WakeFromWaitCycles = 4;
// On the chip: WAI's opcode fetch and stacking, then the vector fetch that ends the wait.
constexpr int WaiStackingCycles = 12;
constexpr int VectorFetchCycles = 2;
} // namespace

const Cpu::PageTable Cpu::NoDirectPages{};

// One 256-entry page each for no prefix, $18, $1A and $CD, built before
// main from the instruction table (constant data, so the order is safe).
struct Cpu::DecodeTable {
    std::array<Decoded, 4 * 256> rows;
    DecodeTable()
    {
        for (int i = 0; i < 4 * 256; ++i)
            rows[i] = {Mnemonic::NOP, Mode::Inherent, std::uint8_t(i < 256 ? 1 : 2), 0, false};
        for (const Instruction& row : AllInstructions())
            rows[Slot(row.page) * 256 + row.opcode] = {row.mnemonic, row.mode, row.length, row.cycles, true};
    }
    static int Slot(std::uint8_t page) { return page == 0x18 ? 1 : page == 0x1A ? 2 : page == 0xCD ? 3 : 0; }
};

const Cpu::DecodeTable Cpu::DecodeRows;

const Cpu::Decoded& Cpu::Decode(std::uint8_t first, std::uint8_t second)
{
    return IsPrefix(first) ? DecodeRows.rows[DecodeTable::Slot(first) * 256 + second] : DecodeRows.rows[first];
}

void Cpu::Reset()
{
    regs.ccr = ccr::S | ccr::X | ccr::I;
    regs.pc = Read16(VectorAt(ResetVector));
    state_ = RunState::Running;
}

int Cpu::Step()
{
    if (xirq_ && !(regs.ccr & ccr::X))
        return ServeInterrupt(XirqVector, true);
    if (maskableVector_ != 0 && !(regs.ccr & ccr::I))
        return ServeInterrupt(maskableVector_, false);
    if (state_ == RunState::Stopped && xirq_)
        state_ = RunState::Running;   // a masked XIRQ restarts the clocks and goes on behind STOP
    if (state_ != RunState::Running) {
        ++cycles;
        return 1;
    }

    std::uint8_t bytes[5] = {};
    const unsigned pc = regs.pc;
    const std::uint8_t* page = (*pages_)[pc >> 8];
    if (page && (pc & 0xFF) <= 0x100 - sizeof bytes) {
        // Plain memory: the longest instruction at once, the bytes behind it unused.
        std::memcpy(bytes, page + (pc & 0xFF), sizeof bytes);
        const Decoded& op = Decode(bytes[0], bytes[1]);
        if (onChip_ && !op.legal)
            return TrapIllegalOpcode(std::uint16_t(pc));
        return Run(op, bytes + (IsPrefix(bytes[0]) ? 2 : 1));
    }
    bytes[0] = Read(pc);
    int start = 1;
    if (IsPrefix(bytes[0])) {
        bytes[1] = Read(pc + 1);
        start = 2;
    }
    const Decoded& op = Decode(bytes[0], bytes[1]);
    if (onChip_ && !op.legal)
        return TrapIllegalOpcode(std::uint16_t(pc));
    for (int i = start; i < op.length; ++i)
        bytes[i] = Read(pc + i);
    return Run(op, bytes + start);
}

int Cpu::Execute(const std::uint8_t* bytes)
{
    return Run(Decode(bytes[0], bytes[1]), bytes + (IsPrefix(bytes[0]) ? 2 : 1));
}

int Cpu::ServeInterrupt(std::uint16_t vector, bool xirq)
{
    const int wake = onChip_ ? VectorFetchCycles : WakeFromWaitCycles;
    const int spent = state_ == RunState::Waiting ? wake : InterruptEntryCycles;
    if (state_ != RunState::Waiting)
        PushFrame();
    regs.ccr |= ccr::I | (xirq ? ccr::X : 0);
    regs.pc = Read16(VectorAt(vector));
    state_ = RunState::Running;
    cycles += spent;
    return spent;
}

int Cpu::TrapIllegalOpcode(std::uint16_t at)
{
    regs.pc = at;
    PushFrame();
    regs.ccr |= ccr::I;
    regs.pc = Read16(VectorAt(IllegalOpcodeVector));
    cycles += InterruptEntryCycles;
    return InterruptEntryCycles;
}

void Cpu::PushFrame()
{
    Push16(regs.pc);
    Push16(regs.iy);
    Push16(regs.ix);
    Push8(regs.a);
    Push8(regs.b);
    Push8(regs.ccr);
}

bool BranchTaken(Mnemonic mnemonic, std::uint8_t cc)
{
    const bool c = cc & ccr::C, v = cc & ccr::V, z = cc & ccr::Z, n = cc & ccr::N;
    switch (mnemonic) {
    case Mnemonic::BRA: return true;
    case Mnemonic::BHI: return !(c || z);
    case Mnemonic::BLS: return c || z;
    case Mnemonic::BCC: return !c;
    case Mnemonic::BCS: return c;
    case Mnemonic::BNE: return !z;
    case Mnemonic::BEQ: return z;
    case Mnemonic::BVC: return !v;
    case Mnemonic::BVS: return v;
    case Mnemonic::BPL: return !n;
    case Mnemonic::BMI: return n;
    case Mnemonic::BGE: return n == v;
    case Mnemonic::BLT: return n != v;
    case Mnemonic::BGT: return !z && n == v;
    case Mnemonic::BLE: return z || n != v;
    default: return false;   // BRN, and anything that is no relative branch
    }
}

int Cpu::Run(const Decoded& op, const std::uint8_t* operand)
{
    regs.pc = std::uint16_t(regs.pc + op.length);
    cycles += op.cycles;
    if (!op.legal)
        return 0;

    // The effective address, reduced to 16 bits; for relative modes the target.
    unsigned ea = 0;
    switch (op.mode) {
    case Mode::Direct:
    case Mode::BitDirect:
    case Mode::BitBranchDirect: ea = operand[0]; break;
    case Mode::Extended: ea = unsigned(operand[0]) << 8 | operand[1]; break;
    case Mode::IndexedX:
    case Mode::BitIndexedX:
    case Mode::BitBranchIndexedX: ea = (regs.ix + operand[0]) & 0xFFFF; break;
    case Mode::IndexedY:
    case Mode::BitIndexedY:
    case Mode::BitBranchIndexedY: ea = (regs.iy + operand[0]) & 0xFFFF; break;
    case Mode::Relative: ea = (regs.pc + std::int8_t(operand[0])) & 0xFFFF; break;
    default: break;
    }

    Registers& r = regs;
    std::uint8_t& cc = r.ccr;
    const auto m8 = [&]() -> unsigned { return op.mode == Mode::Immediate8 ? operand[0] : Read(ea); };
    const auto m16 = [&]() -> unsigned {
        return op.mode == Mode::Immediate16 ? unsigned(operand[0]) << 8 | operand[1] : Read16(ea);
    };
    const auto modify = [&](std::uint8_t (*f)(std::uint8_t&, unsigned)) { Write(ea, f(cc, Read(ea))); };
    const auto bitBranch = [&](bool taken) {
        if (taken)
            r.pc = std::uint16_t(r.pc + std::int8_t(operand[2]));
    };

    using M = Mnemonic;
    switch (op.mnemonic) {
    // ---- loads and stores ----
    case M::LDAA: r.a = alu::Logic8(cc, m8()); break;
    case M::LDAB: r.b = alu::Logic8(cc, m8()); break;
    case M::LDD: r.SetD(alu::Logic16(cc, m16())); break;
    case M::LDX: r.ix = alu::Logic16(cc, m16()); break;
    case M::LDY: r.iy = alu::Logic16(cc, m16()); break;
    case M::LDS: r.sp = alu::Logic16(cc, m16()); break;
    case M::STAA: Write(ea, alu::Logic8(cc, r.a)); break;
    case M::STAB: Write(ea, alu::Logic8(cc, r.b)); break;
    case M::STD: Write16(ea, alu::Logic16(cc, r.D())); break;
    case M::STX: Write16(ea, alu::Logic16(cc, r.ix)); break;
    case M::STY: Write16(ea, alu::Logic16(cc, r.iy)); break;
    case M::STS: Write16(ea, alu::Logic16(cc, r.sp)); break;

    // ---- 8-bit arithmetic ----
    case M::ADDA: r.a = alu::Add8(cc, r.a, m8(), 0); break;
    case M::ADDB: r.b = alu::Add8(cc, r.b, m8(), 0); break;
    case M::ADCA: r.a = alu::Add8(cc, r.a, m8(), cc & ccr::C); break;
    case M::ADCB: r.b = alu::Add8(cc, r.b, m8(), cc & ccr::C); break;
    case M::ABA: r.a = alu::Add8(cc, r.a, r.b, 0); break;
    case M::SUBA: r.a = alu::Sub8(cc, r.a, m8(), 0); break;
    case M::SUBB: r.b = alu::Sub8(cc, r.b, m8(), 0); break;
    case M::SBCA: r.a = alu::Sub8(cc, r.a, m8(), cc & ccr::C); break;
    case M::SBCB: r.b = alu::Sub8(cc, r.b, m8(), cc & ccr::C); break;
    case M::SBA: r.a = alu::Sub8(cc, r.a, r.b, 0); break;
    case M::CMPA: alu::Sub8(cc, r.a, m8(), 0); break;
    case M::CMPB: alu::Sub8(cc, r.b, m8(), 0); break;
    case M::CBA: alu::Sub8(cc, r.a, r.b, 0); break;
    case M::DAA: r.a = alu::Daa(cc, r.a); break;
    case M::MUL: r.SetD(alu::Mul(cc, r.a, r.b)); break;

    // ---- 16-bit arithmetic ----
    case M::ADDD: r.SetD(alu::Add16(cc, r.D(), m16())); break;
    case M::SUBD: r.SetD(alu::Sub16(cc, r.D(), m16())); break;
    case M::CPD: alu::Sub16(cc, r.D(), m16()); break;
    case M::CPX: alu::Sub16(cc, r.ix, m16()); break;
    case M::CPY: alu::Sub16(cc, r.iy, m16()); break;
    case M::IDIV:
    case M::FDIV: {
        const alu::Quotient q = op.mnemonic == M::IDIV ? alu::Idiv(cc, r.D(), r.ix) : alu::Fdiv(cc, r.D(), r.ix);
        r.ix = q.quotient;
        r.SetD(q.remainder);
        break;
    }
    case M::ABX: r.ix = std::uint16_t(r.ix + r.b); break;
    case M::ABY: r.iy = std::uint16_t(r.iy + r.b); break;
    case M::INX: r.ix = std::uint16_t(r.ix + 1); alu::Put(cc, ccr::Z, r.ix == 0 ? ccr::Z : 0); break;
    case M::DEX: r.ix = std::uint16_t(r.ix - 1); alu::Put(cc, ccr::Z, r.ix == 0 ? ccr::Z : 0); break;
    case M::INY: r.iy = std::uint16_t(r.iy + 1); alu::Put(cc, ccr::Z, r.iy == 0 ? ccr::Z : 0); break;
    case M::DEY: r.iy = std::uint16_t(r.iy - 1); alu::Put(cc, ccr::Z, r.iy == 0 ? ccr::Z : 0); break;
    case M::INS: ++r.sp; break;
    case M::DES: --r.sp; break;

    // ---- logic ----
    case M::ANDA: r.a = alu::Logic8(cc, r.a & m8()); break;
    case M::ANDB: r.b = alu::Logic8(cc, r.b & m8()); break;
    case M::ORAA: r.a = alu::Logic8(cc, r.a | m8()); break;
    case M::ORAB: r.b = alu::Logic8(cc, r.b | m8()); break;
    case M::EORA: r.a = alu::Logic8(cc, r.a ^ m8()); break;
    case M::EORB: r.b = alu::Logic8(cc, r.b ^ m8()); break;
    case M::BITA: alu::Logic8(cc, r.a & m8()); break;
    case M::BITB: alu::Logic8(cc, r.b & m8()); break;

    // ---- read-modify-write on A, B or memory ----
    case M::NEGA: r.a = alu::Neg8(cc, r.a); break;
    case M::NEGB: r.b = alu::Neg8(cc, r.b); break;
    case M::NEG: modify(alu::Neg8); break;
    case M::COMA: r.a = alu::Com8(cc, r.a); break;
    case M::COMB: r.b = alu::Com8(cc, r.b); break;
    case M::COM: modify(alu::Com8); break;
    case M::INCA: r.a = alu::Inc8(cc, r.a); break;
    case M::INCB: r.b = alu::Inc8(cc, r.b); break;
    case M::INC: modify(alu::Inc8); break;
    case M::DECA: r.a = alu::Dec8(cc, r.a); break;
    case M::DECB: r.b = alu::Dec8(cc, r.b); break;
    case M::DEC: modify(alu::Dec8); break;
    case M::CLRA: r.a = alu::Test8(cc, 0); break;
    case M::CLRB: r.b = alu::Test8(cc, 0); break;
    case M::CLR: Write(ea, alu::Test8(cc, 0)); break;
    case M::TSTA: alu::Test8(cc, r.a); break;
    case M::TSTB: alu::Test8(cc, r.b); break;
    case M::TST: alu::Test8(cc, Read(ea)); break;
    case M::LSLA: r.a = alu::Lsl8(cc, r.a); break;
    case M::LSLB: r.b = alu::Lsl8(cc, r.b); break;
    case M::LSL: modify(alu::Lsl8); break;
    case M::LSRA: r.a = alu::Lsr8(cc, r.a); break;
    case M::LSRB: r.b = alu::Lsr8(cc, r.b); break;
    case M::LSR: modify(alu::Lsr8); break;
    case M::ASRA: r.a = alu::Asr8(cc, r.a); break;
    case M::ASRB: r.b = alu::Asr8(cc, r.b); break;
    case M::ASR: modify(alu::Asr8); break;
    case M::ROLA: r.a = alu::Rol8(cc, r.a); break;
    case M::ROLB: r.b = alu::Rol8(cc, r.b); break;
    case M::ROL: modify(alu::Rol8); break;
    case M::RORA: r.a = alu::Ror8(cc, r.a); break;
    case M::RORB: r.b = alu::Ror8(cc, r.b); break;
    case M::ROR: modify(alu::Ror8); break;
    case M::LSLD: r.SetD(alu::Lsl16(cc, r.D())); break;
    case M::LSRD: r.SetD(alu::Lsr16(cc, r.D())); break;

    // ---- bit manipulation: operand[1] is the mask ----
    case M::BSET: Write(ea, alu::Logic8(cc, Read(ea) | operand[1])); break;
    case M::BCLR: Write(ea, alu::Logic8(cc, Read(ea) & ~operand[1])); break;
    case M::BRSET: bitBranch((~Read(ea) & operand[1]) == 0); break;
    case M::BRCLR: bitBranch((Read(ea) & operand[1]) == 0); break;

    // ---- transfers ----
    case M::TAB: r.b = alu::Logic8(cc, r.a); break;
    case M::TBA: r.a = alu::Logic8(cc, r.b); break;
    case M::TAP: cc = alu::RestoreCcr(cc, r.a); break;
    case M::TPA: r.a = cc; break;
    case M::TSX: r.ix = std::uint16_t(r.sp + 1); break;
    case M::TSY: r.iy = std::uint16_t(r.sp + 1); break;
    case M::TXS: r.sp = std::uint16_t(r.ix - 1); break;
    case M::TYS: r.sp = std::uint16_t(r.iy - 1); break;
    case M::XGDX: { const std::uint16_t d = r.D(); r.SetD(r.ix); r.ix = d; break; }
    case M::XGDY: { const std::uint16_t d = r.D(); r.SetD(r.iy); r.iy = d; break; }

    // ---- condition code bits ----
    case M::CLC: cc &= ~ccr::C; break;
    case M::SEC: cc |= ccr::C; break;
    case M::CLV: cc &= ~ccr::V; break;
    case M::SEV: cc |= ccr::V; break;
    case M::CLI: cc &= ~ccr::I; break;
    case M::SEI: cc |= ccr::I; break;

    // ---- stack ----
    case M::PSHA: Push8(r.a); break;
    case M::PSHB: Push8(r.b); break;
    case M::PSHX: Push16(r.ix); break;
    case M::PSHY: Push16(r.iy); break;
    case M::PULA: r.a = Pull8(); break;
    case M::PULB: r.b = Pull8(); break;
    case M::PULX: r.ix = Pull16(); break;
    case M::PULY: r.iy = Pull16(); break;

    // ---- flow ----
    case M::BRA: case M::BRN: case M::BHI: case M::BLS: case M::BCC: case M::BCS:
    case M::BNE: case M::BEQ: case M::BVC: case M::BVS: case M::BPL: case M::BMI:
    case M::BGE: case M::BLT: case M::BGT: case M::BLE:
        if (BranchTaken(op.mnemonic, cc))
            r.pc = std::uint16_t(ea);
        break;
    case M::JMP: r.pc = std::uint16_t(ea); break;
    case M::BSR:
    case M::JSR:
        Push16(r.pc);
        r.pc = std::uint16_t(ea);
        break;
    case M::RTS: r.pc = Pull16(); break;

    // ---- interrupts and the low-power states ----
    case M::SWI:
        PushFrame();
        cc |= ccr::I;
        r.pc = Read16(VectorAt(SwiVector));
        break;
    case M::RTI:
        cc = alu::RestoreCcr(cc, Pull8());
        r.b = Pull8();
        r.a = Pull8();
        r.ix = Pull16();
        r.iy = Pull16();
        r.pc = Pull16();
        break;
    case M::WAI:
        PushFrame();
        state_ = RunState::Waiting;
        if (onChip_) {
            cycles += WaiStackingCycles;
            return WaiStackingCycles;
        }
        break;
    case M::STOP:
        if (!(cc & ccr::S))   // with S set, STOP is disabled and runs as a NOP
            state_ = RunState::Stopped;
        break;
    case M::NOP: break;
    }
    return op.cycles;
}

} // namespace hc11
