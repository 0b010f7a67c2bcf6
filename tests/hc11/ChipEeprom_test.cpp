// The EEPROM on the whole chip: programming and erasing through PPROG with
// their 10 ms at E = 2 MHz (the technical data's EEPROM programming and
// erasure procedures, and the PPROG bit descriptions: BYTE over ROW, ROW
// over bulk), programming that only clears bits, BPROT's blocks (the
// technical data's EEPROM block protection table) and CONFIG, programmed
// the same way and read from its cell at the next reset.
#include <QtTest>

#include "support/ChipHarness.h"

using namespace hc11::chip;

namespace {

constexpr std::uint8_t BYTE = 0x10, ROW = 0x08, ERASE = 0x04, EELAT = 0x02, EPGM = 0x01;
constexpr std::uint64_t Tenms = 20000;
constexpr std::uint8_t EepromOn = 0x0D;   // CONFIG with EEON

// A waiting chip with the EEPROM on, BPROT set in time to bprot, every cell at fill.
void Start(ChipHarness& h, std::uint8_t fill, std::uint8_t bprot = 0x00)
{
    QVERIFY(h.Load(ChipHarness::Waiting).isEmpty());
    h.SetReg(reg::BPROT, bprot);
    h.chip.EepromMemory().Cells().fill(fill);
    h.chip.RunUntil(100);
}

// The program's steps: the mode with EELAT, the address and data, EPGM on
// for `on` cycles, then both off. Returns what the array read while EELAT was set.
std::uint8_t Program(ChipHarness& h, std::uint8_t mode, std::uint16_t address, std::uint8_t data,
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

class ChipEepromTest : public QObject {
    Q_OBJECT
private slots:
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
            ChipHarness h(ChipSetup{.config = EepromOn});
            Start(h, c.fill);
            QCOMPARE(int(Program(h, c.mode, c.address, c.data, c.on)), 0xFF);   // latched: reads $FF
            const auto& cells = h.chip.EepromMemory().Cells();
            for (unsigned i = 0; i < Eeprom::Size; ++i)
                QVERIFY2(cells[i] == (i >= c.first && i <= c.last ? c.value : c.fill), c.what);
            QCOMPARE(int(h.chip.CpuBus().Read(std::uint16_t(Eeprom::First + c.first))), int(c.value));
        }
        ChipHarness once(ChipSetup{.config = EepromOn});   // EPGM with EELAT in one write stays off
        Start(once, 0xFF);
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
            ChipHarness h(ChipSetup{.config = EepromOn});
            Start(h, 0xFF, c.bprot);
            Program(h, 0, c.address, 0x00);
            QCOMPARE(h.chip.EepromMemory().Cells()[c.address - Eeprom::First] == 0x00, c.changes);
        }
    }

    void configIsProgrammedAndCountsFromTheNextReset()
    {
        ChipHarness h;                               // EEON clear: $B600 is the host's memory
        Start(h, 0xFF);
        h.chip.Ram()[0xB600] = 0x42;
        QCOMPARE(int(h.chip.Peek(0xB600)), 0x42);
        Program(h, ERASE | BYTE, 0x103F, 0x00);
        Program(h, 0, 0x103F, 0x0D);
        QCOMPARE(int(h.chip.EepromMemory().ConfigCell()), 0x0D);
        QCOMPARE(int(h.Reg(reg::CONFIG)), 0x0C);     // the register keeps the value of the last reset
        h.chip.Reset();
        QCOMPARE(int(h.Reg(reg::CONFIG)), 0x0D);
        QCOMPARE(int(h.chip.Peek(0xB600)), 0xFF);    // the array now

        ChipHarness locked(ChipSetup{.config = EepromOn});   // PTCON keeps CONFIG
        Start(locked, 0xFF, 0x10);
        Program(locked, ERASE | BYTE, 0x103F, 0x00);
        QCOMPARE(int(locked.chip.EepromMemory().ConfigCell()), EepromOn);
    }
};

QTEST_APPLESS_MAIN(ChipEepromTest)
#include "ChipEeprom_test.moc"
