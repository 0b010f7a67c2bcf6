// The chip's system side: the time-protected bits of OPTION, TMSK2 and INIT
// (writable once, in the first 64 E cycles after reset) and BPROT (cleared
// only then, set at any time), the COP watchdog's
// rates and clearing sequence (the technical data's COP time-out table: E/2^15
// divided by 1, 4, 16, 64), the parallel ports with their direction
// registers, the host's devices on the bus, and special test mode's vectors.
#include "support/ChipHarness.h"

#include <vector>

using namespace hc11::chip;

namespace {

struct TimedWrite {
    std::uint64_t at;
    unsigned offset;
    std::uint8_t value;
};

void Replay(ChipHarness& h, const std::vector<TimedWrite>& writes)
{
    for (const TimedWrite& w : writes) {
        h.chip.RunUntil(w.at);
        h.SetReg(w.offset, w.value);
    }
}

// A device on the outside bus that keeps what it is given.
struct RecordingDevice final : OutsideDevice {
    std::vector<std::pair<std::uint16_t, std::uint8_t>> writes;
    int reads = 0;
    std::uint8_t Read(std::uint16_t address) override
    {
        ++reads;
        return std::uint8_t(address);
    }
    void Write(std::uint16_t address, std::uint8_t value) override { writes.emplace_back(address, value); }
};

} // namespace

class ChipSystemTest : public QObject {
    Q_OBJECT
private slots:
    void timeProtectedBitsTakeOneEarlyWrite()
    {
        const struct { const char* what; std::vector<TimedWrite> writes; unsigned offset; int value; } cases[] = {
            {"OPTION early", {{0, reg::OPTION, 0x23}}, reg::OPTION, 0x23},
            {"OPTION twice", {{0, reg::OPTION, 0x00}, {10, reg::OPTION, 0x3B}}, reg::OPTION, 0x08},   // CME only
            {"OPTION late", {{64, reg::OPTION, 0x3B}}, reg::OPTION, 0x18},
            {"TMSK2 early", {{63, reg::TMSK2, 0x03}}, reg::TMSK2, 0x03},
            {"TMSK2 twice", {{0, reg::TMSK2, 0x02}, {10, reg::TMSK2, 0x01}}, reg::TMSK2, 0x02},
            {"TMSK2 late", {{64, reg::TMSK2, 0xF3}}, reg::TMSK2, 0xF0},     // the enables stay writable
            {"INIT late", {{64, reg::INIT, 0x02}}, reg::INIT, 0x01},
            {"BPROT", {{0, reg::BPROT, 0x00}, {10, reg::BPROT, 0x01}, {70, reg::BPROT, 0x02}}, reg::BPROT, 0x03},
            {"BPROT late", {{64, reg::BPROT, 0x00}}, reg::BPROT, 0x1F},
            {"HPRIO late", {{500, reg::HPRIO, 0x03}}, reg::HPRIO, 0x23},    // PSEL with I set, at any time
        };
        for (const auto& c : cases) {
            WaitingChip h;
            Replay(h, c.writes);
            QVERIFY2(h.Reg(c.offset) == c.value, c.what);
        }
        WaitingChip h;   // INIT moves the block: $2000 now, RAM at $1000
        h.chip.Poke(0x103D, 0x02);
        QCOMPARE(int(h.chip.RegisterBase()), 0x2000);
        QCOMPARE(int(h.chip.Peek(0x203D)), 0x02);
        h.chip.Poke(0x103D, 0x55);
        QCOMPARE(int(h.chip.Peek(0x103D)), 0x55);
    }

    void copFailsUnlessClearedInTime()
    {
        // The time-out counts its E/2^15 clocks from the first one after the
        // clearing write: -0/+16.4 ms at 2 MHz (Reference Manual, Table 10-3
        // COP Time-Out vs. CR1, CR0 Values, and the text on its tolerance).
        constexpr std::uint64_t Clock = 32768;
        const struct { std::uint8_t cr; std::vector<TimedWrite> writes; std::uint64_t failsAt; } cases[] = {
            {0, {}, 2 * Clock},
            {1, {}, 5 * Clock},
            {2, {}, 17 * Clock},
            {3, {}, 65 * Clock},
            {0, {{20000, reg::COPRST, 0x55}, {33000, reg::COPRST, 0xAA}}, 3 * Clock},
            {0, {{20000, reg::COPRST, 0xAA}, {30000, reg::COPRST, 0x55}}, 2 * Clock},   // the order matters
            {1, {{100000, reg::COPRST, 0x55}, {110000, reg::COPRST, 0x12}, {120000, reg::COPRST, 0xAA}},
             8 * Clock},
        };
        for (const auto& c : cases) {
            WaitingChip h({.config = 0x08});        // NOCOP clear
            h.SetReg(reg::OPTION, std::uint8_t(0x10 | c.cr));
            h.chip.Ram()[0xFFFA] = 0xE0;
            h.chip.Ram()[0xFFFB] = 0x05;
            Replay(h, c.writes);
            h.chip.RunUntil(c.failsAt - 1);
            QVERIFY2(h.chip.LastReset() == ResetCause::Pin, QByteArray::number(qulonglong(c.failsAt)));
            h.chip.RunUntil(c.failsAt);
            QCOMPARE(h.chip.LastReset(), ResetCause::CopFailure);
            QCOMPARE(unsigned(h.chip.Core().regs.pc), 0xE005u);
        }
        WaitingChip off;                            // the default CONFIG has NOCOP set
        off.Run(70 * Clock);
        QCOMPARE(off.chip.LastReset(), ResetCause::Pin);
    }

    void portsReadTheirOutputsAndTheirInputPins()
    {
        WaitingChip h;
        QCOMPARE(int(h.Reg(reg::PORTC)), 0xFF);      // inputs with nothing attached read high
        QCOMPARE(int(h.Reg(reg::PORTD)), 0x3F);
        QCOMPARE(int(h.Reg(reg::PORTE)), 0x00);      // analog inputs at VRL
        InputPins pins;
        pins.portC = 0x3C;
        pins.portD = 0x15;
        pins.analog = {0x00, 0x7F, 0x80, 0xFF, 0x10, 0xC0, 0x81, 0x00};
        h.chip.SetInputs(pins);
        h.SetReg(reg::DDRC, 0xF0);
        h.SetReg(reg::PORTC, 0xA5);
        h.SetReg(reg::DDRD, 0x0F);
        h.SetReg(reg::PORTD, 0xFA);
        h.SetReg(reg::PORTB, 0x96);
        QCOMPARE(int(h.Reg(reg::PORTC)), 0xAC);      // outputs from the latch, inputs from the pins
        QCOMPARE(int(h.Reg(reg::PORTD)), 0x1A);      // six pins
        QCOMPARE(int(h.Reg(reg::PORTE)), 0x6C);
        QCOMPARE(int(h.chip.PinLevels(Chip::Port::B)), 0x96);
        QCOMPARE(int(h.chip.PinLevels(Chip::Port::C)), 0xAC);
    }

    void strobeALatchesPortCAndFlagsStaf()
    {
        // PIOC EGA set: the rising STRA edge latches; STAF clears on a PIOC
        // read that saw it followed by a PORTCL read, and not on PORTCL alone.
        WaitingChip h;
        InputPins pins;
        pins.portC = 0x5A;
        for (const bool stra : {false, true}) {
            pins.stra = stra;
            h.chip.SetInputs(pins);
            QCOMPARE(h.Reg(reg::PIOC) & 0x80, stra ? 0x80 : 0);
        }
        QCOMPARE(int(h.Reg(reg::PORTCL)), 0x5A);
        h.CpuRead(reg::PORTCL);
        QCOMPARE(h.Reg(reg::PIOC) & 0x80, 0x80);
        h.CpuRead(reg::PIOC);
        h.CpuRead(reg::PORTCL);
        QCOMPARE(h.Reg(reg::PIOC) & 0x80, 0);
    }

    void specialTestModeFetchesVectorsBelowC000()
    {
        // Reference Manual, resets and interrupts: in special test mode the
        // vectors are at $BFC0-$BFFF, and the time protection is lifted.
        ChipHarness h(" ORG $B000\nR LDAA #$42\n SWI\nS STAA $40\nW BRA W\n"
                      " ORG $BFF6\n FDB S\n ORG $BFFE\n FDB R\n ORG $FFFE\n FDB $E000\n",
                      {.mode = OperatingMode::SpecialTest});
        QCOMPARE(int(h.chip.Core().regs.pc), 0xB000);
        h.Run(40);
        QCOMPARE(int(h.chip.Ram()[0x40]), 0x42);   // through the SWI vector at $BFF6
        h.chip.RunUntil(h.chip.Cycles() + 100);
        h.SetReg(reg::INIT, 0x01);
        h.SetReg(reg::INIT, 0x02);                 // late and twice: still taken
        QCOMPARE(int(h.chip.RegisterBase()), 0x2000);
        QCOMPARE(int(h.Reg(reg::HPRIO)) & 0x40, 0x40);   // SMOD
    }

    void hostDevicesAnswerBehindTheRegisterBlock()
    {
        ChipHarness h;
        RecordingDevice device;
        h.chip.MapDevice(0x1000, 0x1FFF, device);
        QVERIFY(h.Load(" ORG $E000\n LDAA #$77\n STAA $1040\n STAA $1039\n LDAB $1800\n STAB $0000\nW BRA W\n")
                    .isEmpty());
        h.Run(30);
        QCOMPARE(device.writes.size(), std::size_t(1));
        QVERIFY(device.writes[0] == std::make_pair(std::uint16_t(0x1040), std::uint8_t(0x77)));
        QCOMPARE(int(h.Reg(reg::OPTION)), 0x77 & 0xFB);   // the register, not the device
        QCOMPARE(int(h.chip.Ram()[0]), 0x00);             // $1800 read the device: its low byte
        QCOMPARE(device.reads, 1);
    }
};

QTEST_APPLESS_MAIN(ChipSystemTest)
#include "ChipSystem_test.moc"
