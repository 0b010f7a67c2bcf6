// The arithmetic and logic of the HC11, one function per operation, shared by
// every register and addressing mode that uses it. Each takes the condition
// code register by reference and changes exactly the bits the processor's
// reference manual lists for that instruction; the others stay as they were.
#pragma once

#include <cstdint>

namespace hc11 {

// Condition code register bits, from bit 0 up.
namespace ccr {
constexpr std::uint8_t C = 0x01;
constexpr std::uint8_t V = 0x02;
constexpr std::uint8_t Z = 0x04;
constexpr std::uint8_t N = 0x08;
constexpr std::uint8_t I = 0x10;
constexpr std::uint8_t H = 0x20;
constexpr std::uint8_t X = 0x40;
constexpr std::uint8_t S = 0x80;
} // namespace ccr

namespace alu {

// Replaces the bits of `mask` in the condition codes with those of `bits`.
constexpr void Put(std::uint8_t& cc, std::uint8_t mask, unsigned bits)
{
    cc = std::uint8_t((cc & ~mask) | (bits & mask));
}

constexpr unsigned NZ8(unsigned r)
{
    return ((r & 0x80) ? ccr::N : 0) | ((r & 0xFF) == 0 ? ccr::Z : 0);
}

constexpr unsigned NZ16(unsigned r)
{
    return ((r & 0x8000) ? ccr::N : 0) | ((r & 0xFFFF) == 0 ? ccr::Z : 0);
}

// ADD, ADC, ABA: H is the carry out of bit 3, V the two's complement overflow.
constexpr std::uint8_t Add8(std::uint8_t& cc, unsigned x, unsigned m, unsigned carry)
{
    const unsigned r = x + m + carry;
    Put(cc, ccr::H | ccr::N | ccr::Z | ccr::V | ccr::C,
        NZ8(r) | (((x ^ m ^ r) & 0x10) ? ccr::H : 0) | ((~(x ^ m) & (x ^ r) & 0x80) ? ccr::V : 0)
            | (r > 0xFF ? ccr::C : 0));
    return std::uint8_t(r);
}

// SUB, SBC, CMP, SBA, CBA and NEG (0 - m): C is the borrow; H is untouched.
constexpr std::uint8_t Sub8(std::uint8_t& cc, unsigned x, unsigned m, unsigned borrow)
{
    const unsigned r = (x - m - borrow) & 0xFF;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C,
        NZ8(r) | (((x ^ m) & (x ^ r) & 0x80) ? ccr::V : 0) | (m + borrow > x ? ccr::C : 0));
    return std::uint8_t(r);
}

// ADDD.
constexpr std::uint16_t Add16(std::uint8_t& cc, unsigned x, unsigned m)
{
    const unsigned r = x + m;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C,
        NZ16(r) | ((~(x ^ m) & (x ^ r) & 0x8000) ? ccr::V : 0) | (r > 0xFFFF ? ccr::C : 0));
    return std::uint16_t(r);
}

// SUBD, CPD, CPX, CPY.
constexpr std::uint16_t Sub16(std::uint8_t& cc, unsigned x, unsigned m)
{
    const unsigned r = (x - m) & 0xFFFF;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C,
        NZ16(r) | (((x ^ m) & (x ^ r) & 0x8000) ? ccr::V : 0) | (m > x ? ccr::C : 0));
    return std::uint16_t(r);
}

// Loads, stores, AND, ORA, EOR, BIT, TAB, TBA, BSET, BCLR: N and Z, V cleared.
constexpr std::uint8_t Logic8(std::uint8_t& cc, unsigned r)
{
    Put(cc, ccr::N | ccr::Z | ccr::V, NZ8(r));
    return std::uint8_t(r);
}

constexpr std::uint16_t Logic16(std::uint8_t& cc, unsigned r)
{
    Put(cc, ccr::N | ccr::Z | ccr::V, NZ16(r));
    return std::uint16_t(r);
}

// INC and DEC leave C alone; V marks the step across $7F/$80.
constexpr std::uint8_t Inc8(std::uint8_t& cc, unsigned x)
{
    const unsigned r = (x + 1) & 0xFF;
    Put(cc, ccr::N | ccr::Z | ccr::V, NZ8(r) | (r == 0x80 ? ccr::V : 0));
    return std::uint8_t(r);
}

constexpr std::uint8_t Dec8(std::uint8_t& cc, unsigned x)
{
    const unsigned r = (x - 1) & 0xFF;
    Put(cc, ccr::N | ccr::Z | ccr::V, NZ8(r) | (r == 0x7F ? ccr::V : 0));
    return std::uint8_t(r);
}

constexpr std::uint8_t Neg8(std::uint8_t& cc, unsigned x) { return Sub8(cc, 0, x, 0); }

constexpr std::uint8_t Com8(std::uint8_t& cc, unsigned x)
{
    const unsigned r = ~x & 0xFF;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, NZ8(r) | ccr::C);
    return std::uint8_t(r);
}

// CLR and TST: N and Z of the value, V and C cleared.
constexpr std::uint8_t Test8(std::uint8_t& cc, unsigned x)
{
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, NZ8(x));
    return std::uint8_t(x);
}

// Shifts and rotates: C is the bit shifted out, V is N xor C of the result.
constexpr unsigned ShiftFlags(unsigned nz, unsigned carry)
{
    const bool n = nz & ccr::N;
    return nz | (carry ? ccr::C : 0) | ((n != bool(carry)) ? ccr::V : 0);
}

constexpr std::uint8_t Shift8(std::uint8_t& cc, unsigned r, unsigned carry)
{
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, ShiftFlags(NZ8(r), carry));
    return std::uint8_t(r);
}

constexpr std::uint8_t Lsl8(std::uint8_t& cc, unsigned x) { return Shift8(cc, (x << 1) & 0xFF, x >> 7); }
constexpr std::uint8_t Lsr8(std::uint8_t& cc, unsigned x) { return Shift8(cc, x >> 1, x & 1); }
constexpr std::uint8_t Asr8(std::uint8_t& cc, unsigned x) { return Shift8(cc, (x >> 1) | (x & 0x80), x & 1); }
constexpr std::uint8_t Rol8(std::uint8_t& cc, unsigned x)
{
    return Shift8(cc, ((x << 1) | (cc & ccr::C)) & 0xFF, x >> 7);
}
constexpr std::uint8_t Ror8(std::uint8_t& cc, unsigned x)
{
    return Shift8(cc, (x >> 1) | ((cc & ccr::C) << 7), x & 1);
}

constexpr std::uint16_t Lsl16(std::uint8_t& cc, unsigned x)
{
    const unsigned r = (x << 1) & 0xFFFF;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, ShiftFlags(NZ16(r), x >> 15));
    return std::uint16_t(r);
}

constexpr std::uint16_t Lsr16(std::uint8_t& cc, unsigned x)
{
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, ShiftFlags(NZ16(x >> 1), x & 1));
    return std::uint16_t(x >> 1);
}

// MUL: D = A * B; C is bit 7 of the product, so that ADCA #0 rounds A.
constexpr std::uint16_t Mul(std::uint8_t& cc, unsigned a, unsigned b)
{
    const unsigned r = a * b;
    Put(cc, ccr::C, (r & 0x80) ? ccr::C : 0);
    return std::uint16_t(r);
}

struct Quotient {
    std::uint16_t quotient;    // goes to IX
    std::uint16_t remainder;   // goes to D
};

// IDIV: D / IX. By zero the quotient is $FFFF, C is set and D keeps the
// dividend as remainder.
constexpr Quotient Idiv(std::uint8_t& cc, unsigned d, unsigned ix)
{
    if (ix == 0) {
        Put(cc, ccr::Z | ccr::V | ccr::C, ccr::C);
        return {0xFFFF, std::uint16_t(d)};
    }
    const unsigned q = d / ix;
    Put(cc, ccr::Z | ccr::V | ccr::C, q == 0 ? ccr::Z : 0);
    return {std::uint16_t(q), std::uint16_t(d % ix)};
}

// FDIV: the fraction (D * 65536) / IX, meant for D < IX. IX <= D overflows
// (V); IX = 0 also sets C. Either way the quotient is $FFFF and D stays.
constexpr Quotient Fdiv(std::uint8_t& cc, unsigned d, unsigned ix)
{
    if (ix <= d) {
        Put(cc, ccr::Z | ccr::V | ccr::C, ccr::V | (ix == 0 ? ccr::C : 0));
        return {0xFFFF, std::uint16_t(d)};
    }
    const unsigned long wide = static_cast<unsigned long>(d) << 16;
    const unsigned q = unsigned(wide / ix);
    Put(cc, ccr::Z | ccr::V | ccr::C, q == 0 ? ccr::Z : 0);
    return {std::uint16_t(q), std::uint16_t(wide % ix)};
}

// DAA after an addition of two BCD bytes: corrects each digit from H, C and
// the digits themselves. C is set when the high digit is corrected, and never
// cleared once set. V, which the manual leaves undefined, is cleared.
constexpr std::uint8_t Daa(std::uint8_t& cc, unsigned a)
{
    const unsigned low = a & 0x0F;
    const unsigned high = a >> 4;
    unsigned correction = 0;
    unsigned carry = cc & ccr::C;
    if ((cc & ccr::H) || low > 9)
        correction |= 0x06;
    if (carry || high > 9 || (high > 8 && low > 9)) {
        correction |= 0x60;
        carry = ccr::C;
    }
    const unsigned r = (a + correction) & 0xFF;
    Put(cc, ccr::N | ccr::Z | ccr::V | ccr::C, NZ8(r) | carry);
    return std::uint8_t(r);
}

// TAP and RTI: the new condition codes, except that X, once clear, stays
// clear: only a reset or an XIRQ sets it.
constexpr std::uint8_t RestoreCcr(std::uint8_t old, std::uint8_t incoming)
{
    return (old & ccr::X) ? incoming : std::uint8_t(incoming & ~ccr::X);
}

} // namespace alu
} // namespace hc11
