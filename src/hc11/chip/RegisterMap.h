// The register block of the MC68HC11E: each register's offset from the
// block's base ($1000 after reset, INIT moves it) and the bits the chip model
// acts on.
#pragma once

#include <cstdint>

namespace hc11::chip {

constexpr int RegisterBlockSize = 64;

namespace reg {
constexpr unsigned PORTA = 0x00, PIOC = 0x02, PORTC = 0x03, PORTB = 0x04, PORTCL = 0x05,
                   DDRC = 0x07, PORTD = 0x08, DDRD = 0x09, PORTE = 0x0A, CFORC = 0x0B,
                   OC1M = 0x0C, OC1D = 0x0D, TCNT = 0x0E, TIC1 = 0x10, TIC2 = 0x12, TIC3 = 0x14,
                   TOC1 = 0x16, TOC2 = 0x18, TOC3 = 0x1A, TOC4 = 0x1C, TI4O5 = 0x1E,
                   TCTL1 = 0x20, TCTL2 = 0x21, TMSK1 = 0x22, TFLG1 = 0x23, TMSK2 = 0x24,
                   TFLG2 = 0x25, PACTL = 0x26, PACNT = 0x27, SPCR = 0x28, SPSR = 0x29, SPDR = 0x2A,
                   BAUD = 0x2B, SCCR1 = 0x2C, SCCR2 = 0x2D, SCSR = 0x2E, SCDR = 0x2F, ADCTL = 0x30,
                   ADR1 = 0x31, ADR4 = 0x34, BPROT = 0x35, OPTION = 0x39, COPRST = 0x3A,
                   PPROG = 0x3B, HPRIO = 0x3C, INIT = 0x3D, TEST1 = 0x3E, CONFIG = 0x3F;
} // namespace reg

// Bits of the system registers the chip itself keeps.
namespace option {
constexpr std::uint8_t ADPU = 0x80, CSEL = 0x40, IRQE = 0x20, DLY = 0x10, CME = 0x08,
                       CR1 = 0x02, CR0 = 0x01;
// Bits writable only in the first 64 E cycles after reset, and then only once.
constexpr std::uint8_t TimeProtected = IRQE | DLY | CR1 | CR0;
} // namespace option

namespace hprio {
constexpr std::uint8_t RBOOT = 0x80, SMOD = 0x40, MDA = 0x20, IRV = 0x10, PSEL = 0x0F;
} // namespace hprio

namespace config {
constexpr std::uint8_t NOSEC = 0x08, NOCOP = 0x04, ROMON = 0x02, EEON = 0x01;
} // namespace config

} // namespace hc11::chip
