// The chip's A/D converter, SPI and EEPROM, each against the MC68HC11E
// technical data and the Reference Manual:
//  - A/D: four conversions of 32 E cycles after a write to ADCTL, CCF with
//    the fourth (the A/D conversion sequence figure: 12 cycles of sampling,
//    128 in all), where each result comes from (Table 3-2 A/D Converter
//    Channel Selection), SCAN's updates and OPTION's ADPU.
//  - SPI: a master's eight bit times at SPR1:SPR0's rate (the SPI clock rate
//    table: E/2, E/4, E/16, E/32), SPSR's flags with their clearing
//    sequences and MODF's effects (the SPSR bit descriptions and the SPI
//    system errors section), the SPI interrupt, an outside master's byte.
//  - EEPROM: programming and erasing through PPROG and their 10 ms at
//    E = 2 MHz (the EEPROM programming and erasure procedures, and the PPROG
//    bit descriptions: BYTE over ROW, ROW over bulk), programming that only
//    clears bits, BPROT (the EEPROM block protection table) and CONFIG,
//    programmed the same way and read from its cell at the next reset.
#include "hc11/chip/Interrupts.h"
#include "support/ChipHarness.h"

#include <vector>

using namespace hc11::chip;

namespace {

constexpr std::uint8_t ADPU = 0x80, CCF = 0x80, SCAN = 0x20, MULT = 0x10;
constexpr std::uint64_t Begin = 100;   // the program waits in WAI from here on

// A register written, the chip run to Begin.
void StartWith(WaitingChip& h, unsigned offset, std::uint8_t value)
{
    h.SetReg(offset, value);
    h.chip.RunUntil(Begin);
}

// Every analog input at its own level, channel n at $11 * (n + 1), and OPTION set.
void PowerUp(WaitingChip& h, std::uint8_t option = ADPU)
{
    InputPins pins;
    for (unsigned n = 0; n < pins.analog.size(); ++n)
        pins.analog[n] = std::uint8_t(0x11 * (n + 1));
    h.chip.SetInputs(pins);
    StartWith(h, reg::OPTION, option);
}

constexpr std::uint8_t SPIE = 0x80, SPE = 0x40, MSTR = 0x10, CPHA = 0x04;
constexpr std::uint8_t SPIF = 0x80, WCOL = 0x40, MODF = 0x10;

// A slave that answers each byte with its complement, and keeps what it got.
struct ComplementPeer final : SpiPeer {
    std::vector<std::uint8_t> got;
    std::uint8_t Exchange(std::uint8_t sent) override
    {
        got.push_back(sent);
        return std::uint8_t(~sent);
    }
};

constexpr std::uint8_t BYTE = 0x10, ROW = 0x08, ERASE = 0x04, EELAT = 0x02, EPGM = 0x01;
constexpr std::uint64_t Tenms = 20000;
constexpr std::uint8_t EepromOn = 0x0D;   // CONFIG with EEON

// Every EEPROM cell at fill, BPROT set in time to bprot.
struct EepromChip : WaitingChip {
    explicit EepromChip(std::uint8_t fill, std::uint8_t bprot = 0x00, std::uint8_t config = EepromOn)
        : WaitingChip(ChipSetup{.config = config})
    {
        chip.EepromMemory().Cells().fill(fill);
        StartWith(*this, reg::BPROT, bprot);
    }
};

// The program's steps: the mode with EELAT, the address and data, EPGM on
// for `on` cycles, then both off. Returns what the array read while EELAT was set.
std::uint8_t Program(WaitingChip& h, std::uint8_t mode, std::uint16_t address, std::uint8_t data,
                     std::uint64_t on = Tenms)
{
    h.CpuWrite(reg::PPROG, mode | EELAT);
    h.chip.CpuBus().Write(address, data);
    const std::uint8_t latchedRead = h.chip.CpuBus().Read(address);
    h.CpuWrite(reg::PPROG, mode | EELAT | EPGM);
    h.Run(on);
    h.CpuWrite(reg::PPROG, mode | EELAT);
    h.CpuWrite(reg::PPROG, 0);
    return latchedRead;
}

} // namespace

class ChipPeripheralsTest : public QObject {
    Q_OBJECT
private slots:
    void eachConversionTakes32CyclesAndCcfComesWithTheFourth()
    {
        const struct { std::uint8_t adctl; std::array<int, 4> results; } cases[] = {
            {0x02, {0x33, 0x33, 0x33, 0x33}},           // one channel, four times
            {MULT | 0x03, {0x11, 0x22, 0x33, 0x44}},    // the group AN0-AN3; CB:CA ignored
            {MULT | 0x04, {0x55, 0x66, 0x77, 0x88}},
            {MULT | 0x0C, {0xFF, 0x00, 0x80, 0x00}},    // VRH, VRL, VRH/2, reserved
            {0x09, {0x00, 0x00, 0x00, 0x00}},           // reserved
        };
        for (const auto& c : cases) {
            WaitingChip h;
            PowerUp(h);
            h.SetReg(reg::ADR1, 0x5A);                  // read-only: the write is lost
            h.SetReg(reg::ADCTL, std::uint8_t(c.adctl | 0xC0));   // CCF and bit 6 cannot be written
            for (unsigned n = 0; n < 4; ++n) {
                h.chip.RunUntil(Begin + 32 * (n + 1) - 1);
                QCOMPARE(int(h.Reg(reg::ADR1 + n)), 0);
                QCOMPARE(int(h.Reg(reg::ADCTL)), int(c.adctl));
                h.chip.RunUntil(Begin + 32 * (n + 1));
                QCOMPARE(int(h.Reg(reg::ADR1 + n)), c.results[n]);
            }
            QCOMPARE(int(h.Reg(reg::ADCTL)), c.adctl | CCF);
        }
    }

    void scanKeepsTheResultsCurrentFromEachSample()
    {
        // A result holds the level sampled in the first 12 cycles of its conversion.
        WaitingChip h;
        PowerUp(h);
        h.SetReg(reg::ADCTL, SCAN | 0x01);
        h.chip.RunUntil(Begin + 128 + 5);               // the fifth conversion is sampling
        h.ChangeInputs([](auto& pins) { pins.analog[1] = 0x40; });
        h.chip.RunUntil(Begin + 192 + 20);              // the seventh has sampled
        h.ChangeInputs([](auto& pins) { pins.analog[1] = 0x60; });
        h.chip.RunUntil(Begin + 256);
        QCOMPARE(int(h.Reg(reg::ADCTL)), SCAN | 0x01 | CCF);
        QVERIFY(h.Reg(reg::ADR1) == 0x40 && h.Reg(reg::ADR1 + 2) == 0x40 && h.Reg(reg::ADR4) == 0x60);
        h.ChangeInputs([](auto& pins) { pins.analog[1] = 0x70; });
        h.Run(100000);
        for (unsigned n = 0; n < 4; ++n)
            QCOMPARE(int(h.Reg(reg::ADR1 + n)), 0x70);
    }

    void aWriteRestartsAndOnlyAPoweredConverterConverts()
    {
        WaitingChip h;
        PowerUp(h, 0x00);
        h.SetReg(reg::ADCTL, 0x00);                      // ADPU clear: nothing converts
        h.chip.RunUntil(Begin + 200);
        h.SetReg(reg::OPTION, ADPU);                     // nor after power-up, without a write
        h.chip.RunUntil(Begin + 400);
        QVERIFY(h.Reg(reg::ADCTL) == 0x00 && h.Reg(reg::ADR1) == 0x00);
        h.SetReg(reg::ADCTL, 0x00);
        h.chip.RunUntil(Begin + 500);
        h.SetReg(reg::ADCTL, 0x01);                      // restarts: ADR4 of the first never comes
        h.chip.RunUntil(Begin + 500 + 127);
        QVERIFY(h.Reg(reg::ADCTL) == 0x01 && h.Reg(reg::ADR1) == 0x22 && h.Reg(reg::ADR4) == 0x00);
        h.chip.RunUntil(Begin + 500 + 128 + 40);
        h.SetReg(reg::ADCTL, 0x02);
        h.chip.RunUntil(Begin + 500 + 128 + 80);
        h.SetReg(reg::OPTION, 0x00);                     // clearing ADPU stops the sequence
        h.Run(1000);
        QVERIFY(h.Reg(reg::ADCTL) == 0x02 && h.Reg(reg::ADR1) == 0x33 && h.Reg(reg::ADR1 + 1) == 0x22);
    }

    void masterTransfersEightBitsAtTheProgrammedRate()
    {
        const struct { std::uint8_t spr; std::uint64_t bitCycles; bool peer; } rates[] = {
            {0, 2, true}, {1, 4, true}, {2, 16, true}, {3, 32, true}, {0, 2, false},
        };
        for (const auto& rate : rates) {
            WaitingChip h;
            ComplementPeer peer;
            h.chip.AttachSpiPeer(rate.peer ? &peer : nullptr);
            StartWith(h, reg::SPCR, SPE | MSTR | rate.spr);
            h.CpuWrite(reg::SPDR, 0xA5);
            h.chip.RunUntil(Begin + 8 * rate.bitCycles - 1);
            QCOMPARE(int(h.Reg(reg::SPSR)), 0);
            h.chip.RunUntil(Begin + 8 * rate.bitCycles);
            const int answer = rate.peer ? 0x5A : 0xFF;   // nobody on MISO reads high
            QVERIFY(h.Reg(reg::SPSR) == SPIF && h.Reg(reg::SPDR) == answer);
            const auto transfers = h.chip.TakeSpiOutput();
            QCOMPARE(transfers.size(), std::size_t(1));
            QVERIFY(transfers[0].sent == 0xA5 && transfers[0].received == answer &&
                    transfers[0].endsAt == Begin + 8 * rate.bitCycles);
        }
    }

    void flagsClearOnlyByAStatusReadThenADataAccess()
    {
        WaitingChip h;
        ComplementPeer peer;
        h.chip.AttachSpiPeer(&peer);
        StartWith(h, reg::SPCR, SPE | MSTR);         // 16 cycles a byte
        h.CpuWrite(reg::SPDR, 0x01);
        h.chip.RunUntil(Begin + 8);
        h.CpuWrite(reg::SPDR, 0x02);                 // during the transfer: WCOL, and the byte is lost
        QCOMPARE(int(h.Reg(reg::SPSR)), WCOL);
        h.chip.RunUntil(Begin + 16);
        h.CpuWrite(reg::SPDR, 0x03);                 // SPIF set and not seen: the write is held off
        h.chip.RunUntil(Begin + 40);
        QVERIFY(h.Reg(reg::SPSR) == (SPIF | WCOL) && peer.got == std::vector<std::uint8_t>{0x01});
        h.CpuRead(reg::SPSR);
        h.CpuRead(reg::SPDR);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
        h.CpuWrite(reg::SPDR, 0x04);
        h.chip.RunUntil(Begin + 56);
        QVERIFY(h.Reg(reg::SPSR) == SPIF && peer.got == (std::vector<std::uint8_t>{0x01, 0x04}));
        h.CpuRead(reg::SPSR);                        // the sequence through a data write
        h.CpuWrite(reg::SPDR, 0x05);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
    }

    void slaveSelectLowFaultsAnEnabledMaster()
    {
        // DDRD bit 5 set makes /SS a plain output: no fault. A fault clears
        // SPE and MSTR and DDRD's SPI bits (PD2-PD5), and stops the transfer.
        const struct { std::uint8_t spcr, ddrd; bool faults; std::size_t transfers; } cases[] = {
            {SPIE | SPE | MSTR, 0x1F, true, 0}, {SPE | MSTR, 0x3F, false, 1},
            {SPE, 0x1F, false, 0}, {MSTR, 0x1F, false, 0},
        };
        for (const auto& c : cases) {
            WaitingChip h;
            StartWith(h, reg::SPCR, c.spcr);
            h.SetReg(reg::DDRD, c.ddrd);
            h.CpuWrite(reg::SPDR, 0x77);
            h.ChangeInputs([](auto& pins) { pins.portD &= 0xDF; });   // /SS (PD5) low
            QCOMPARE(int(h.Reg(reg::SPSR)), c.faults ? MODF : 0);
            QCOMPARE(int(h.Reg(reg::SPCR)), c.faults ? SPIE : c.spcr);
            QCOMPARE(int(h.Reg(reg::DDRD)), c.faults ? 0x03 : c.ddrd);
            QCOMPARE(h.chip.Core().MaskableRequest(), std::uint16_t(c.faults ? VectorOf(Source::Spi) : 0));
            h.Run(1000);
            QCOMPARE(h.chip.TakeSpiOutput().size(), c.transfers);
        }
        WaitingChip h;                               // MODF clears by a status read, then an SPCR write
        StartWith(h, reg::SPCR, SPE | MSTR);
        h.ChangeInputs([](auto& pins) { pins.portD &= 0xDF; });   // /SS (PD5) low
        h.CpuWrite(reg::SPCR, 0x00);
        h.CpuRead(reg::SPSR);
        h.CpuRead(reg::SPDR);
        QCOMPARE(int(h.Reg(reg::SPSR)), MODF);
        h.CpuWrite(reg::SPCR, 0x00);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
        h.CpuWrite(reg::SPCR, SPE | MSTR);           // /SS still low: a master faults at once
        QCOMPARE(int(h.Reg(reg::SPSR)), MODF);
    }

    void selectedSlaveTakesAByteFromAnOutsideMaster()
    {
        WaitingChip h;
        StartWith(h, reg::SPCR, SPE | CPHA);
        QCOMPARE(int(h.chip.SpiReceive(0x11)), 0xFF);    // not selected
        h.ChangeInputs([](auto& pins) { pins.portD &= 0xDF; });   // /SS (PD5) low
        h.CpuWrite(reg::SPDR, 0x3C);
        QCOMPARE(int(h.chip.SpiReceive(0x81)), 0x3C);
        QVERIFY(h.Reg(reg::SPSR) == SPIF && h.Reg(reg::SPDR) == 0x81);
        h.CpuRead(reg::SPSR);
        h.CpuRead(reg::SPDR);
        h.CpuWrite(reg::SPCR, SPE);                      // CPHA clear: selected means in a transfer
        h.CpuWrite(reg::SPDR, 0x42);
        QCOMPARE(int(h.Reg(reg::SPSR)), WCOL);
        QCOMPARE(int(h.chip.SpiReceive(0x99)), 0x81);    // the shifter kept the byte it took in
    }

    void programAndEraseChangeTheirBytesAfterTenMilliseconds()
    {
        // Each row: cells at fill, one operation, then [first, last] hold
        // `value` and every other cell its fill.
        const struct { const char* what; std::uint8_t fill, mode; std::uint16_t address; std::uint8_t data;
                       std::uint64_t on; unsigned first, last; std::uint8_t value; } cases[] = {
            {"program", 0xFF, 0, 0xB600, 0x5A, Tenms, 0x000, 0x000, 0x5A},
            {"program ANDs", 0x0F, 0, 0xB7FF, 0x3C, Tenms, 0x1FF, 0x1FF, 0x0C},
            {"byte erase", 0x00, ERASE | BYTE | ROW, 0xB605, 0x00, Tenms, 0x005, 0x005, 0xFF},
            {"row erase", 0x00, ERASE | ROW, 0xB613, 0x00, Tenms, 0x010, 0x01F, 0xFF},
            {"bulk erase", 0x00, ERASE, 0xB7FF, 0x00, Tenms, 0x000, 0x1FF, 0xFF},
            {"too short", 0xFF, 0, 0xB600, 0x00, Tenms - 1, 0x000, 0x000, 0xFF},
        };
        for (const auto& c : cases) {
            EepromChip h(c.fill);
            QCOMPARE(int(Program(h, c.mode, c.address, c.data, c.on)), 0xFF);   // latched: reads $FF
            const auto& cells = h.chip.EepromMemory().Cells();
            for (unsigned i = 0; i < Eeprom::Size; ++i)
                QVERIFY2(cells[i] == (i >= c.first && i <= c.last ? c.value : c.fill), c.what);
            QCOMPARE(int(h.chip.CpuBus().Read(std::uint16_t(Eeprom::First + c.first))), int(c.value));
        }
        EepromChip once(0xFF);                       // EPGM with EELAT in one write stays off
        once.CpuWrite(reg::PPROG, EELAT | EPGM);
        QCOMPARE(int(once.Reg(reg::PPROG)), EELAT);
    }

    void blockProtectionKeepsItsBytes()
    {
        const struct { std::uint8_t bprot; std::uint16_t address; bool changes; } cases[] = {
            {0x01, 0xB61F, false}, {0x01, 0xB620, true},  {0x02, 0xB620, false}, {0x02, 0xB65F, false},
            {0x02, 0xB660, true},  {0x04, 0xB6DF, false}, {0x04, 0xB6E0, true},  {0x08, 0xB6E0, false},
            {0x08, 0xB7FF, false}, {0x17, 0xB7FF, true},  {0x1F, 0xB600, false},
        };
        for (const auto& c : cases) {
            EepromChip h(0xFF, c.bprot);
            Program(h, 0, c.address, 0x00);
            QCOMPARE(h.chip.EepromMemory().Cells()[c.address - Eeprom::First] == 0x00, c.changes);
        }
    }

    void configIsProgrammedAndCountsFromTheNextReset()
    {
        EepromChip h(0xFF, 0x00, ChipSetup{}.config);   // EEON clear: $B600 is the host's memory
        h.chip.Ram()[0xB600] = 0x42;
        QCOMPARE(int(h.chip.Peek(0xB600)), 0x42);
        Program(h, ERASE | BYTE, 0x103F, 0x00);
        Program(h, 0, 0x103F, 0x0D);
        QCOMPARE(int(h.chip.EepromMemory().ConfigCell()), 0x0D);
        QCOMPARE(int(h.Reg(reg::CONFIG)), 0x0C);     // the register keeps the value of the last reset
        h.chip.Reset();
        QCOMPARE(int(h.Reg(reg::CONFIG)), 0x0D);
        QCOMPARE(int(h.chip.Peek(0xB600)), 0xFF);    // the array now

        EepromChip locked(0xFF, 0x10);               // PTCON keeps CONFIG
        Program(locked, ERASE | BYTE, 0x103F, 0x00);
        QCOMPARE(int(locked.chip.EepromMemory().ConfigCell()), EepromOn);
    }
};

QTEST_APPLESS_MAIN(ChipPeripheralsTest)
#include "ChipPeripherals_test.moc"
