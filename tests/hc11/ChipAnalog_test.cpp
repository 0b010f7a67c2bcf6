// The A/D converter on the whole chip: four conversions of 32 E cycles each
// after a write to ADCTL, CCF with the fourth (the technical data's A/D
// conversion sequence figure: sample 12 cycles, convert, 128 in all), the
// channel a result comes from (Table 3-2 A/D Converter Channel Selection),
// SCAN's continuous updates and OPTION's ADPU.
#include <QtTest>

#include "support/ChipHarness.h"

using namespace hc11::chip;

namespace {

constexpr std::uint8_t ADPU = 0x80, CCF = 0x80, SCAN = 0x20, MULT = 0x10;
constexpr std::uint64_t Start = 100;   // the write to ADCTL

// A waiting chip with every analog input at its own level: channel n at $11 * (n + 1).
void PowerUp(ChipHarness& h, std::uint8_t option = ADPU)
{
    QVERIFY(h.Load(ChipHarness::Waiting).isEmpty());
    InputPins pins;
    for (unsigned n = 0; n < pins.analog.size(); ++n)
        pins.analog[n] = std::uint8_t(0x11 * (n + 1));
    h.chip.SetInputs(pins);
    h.SetReg(reg::OPTION, option);
    h.chip.RunUntil(Start);
}

void SetLevel(ChipHarness& h, unsigned channel, std::uint8_t level)
{
    InputPins pins = h.chip.Inputs();
    pins.analog[channel] = level;
    h.chip.SetInputs(pins);
}

} // namespace

class ChipAnalogTest : public QObject {
    Q_OBJECT
private slots:
    void eachConversionTakes32CyclesAndCcfComesWithTheFourth()
    {
        const struct { std::uint8_t adctl; std::array<int, 4> results; } cases[] = {
            {0x02, {0x33, 0x33, 0x33, 0x33}},           // one channel, four times
            {0x07, {0x88, 0x88, 0x88, 0x88}},
            {MULT | 0x03, {0x11, 0x22, 0x33, 0x44}},    // the group AN0-AN3; CB:CA ignored
            {MULT | 0x04, {0x55, 0x66, 0x77, 0x88}},
            {0x0C, {0xFF, 0xFF, 0xFF, 0xFF}},           // VRH
            {MULT | 0x0C, {0xFF, 0x00, 0x80, 0x00}},    // VRH, VRL, VRH/2, reserved
            {0x09, {0x00, 0x00, 0x00, 0x00}},           // reserved
        };
        for (const auto& c : cases) {
            ChipHarness h;
            PowerUp(h);
            h.SetReg(reg::ADR1, 0x5A);                  // read-only: the write is lost
            h.SetReg(reg::ADCTL, std::uint8_t(c.adctl | 0xC0));   // CCF and bit 6 cannot be written
            for (unsigned n = 0; n < 4; ++n) {
                h.chip.RunUntil(Start + 32 * (n + 1) - 1);
                QCOMPARE(int(h.Reg(reg::ADR1 + n)), 0);
                QCOMPARE(int(h.Reg(reg::ADCTL)), int(c.adctl));
                h.chip.RunUntil(Start + 32 * (n + 1));
                QCOMPARE(int(h.Reg(reg::ADR1 + n)), c.results[n]);
            }
            QCOMPARE(int(h.Reg(reg::ADCTL)), c.adctl | CCF);
            QCOMPARE(int(h.Reg(reg::PORTE)), 0x80);     // the digital reading of the same pins: AN7 only
        }
    }

    void scanKeepsTheResultsCurrentFromEachSample()
    {
        // A result holds the level sampled in the first 12 cycles of its conversion.
        ChipHarness h;
        PowerUp(h);
        h.SetReg(reg::ADCTL, SCAN | 0x01);
        h.chip.RunUntil(Start + 128 + 5);               // the fifth conversion is sampling
        SetLevel(h, 1, 0x40);
        h.chip.RunUntil(Start + 192 + 20);              // the seventh has sampled
        SetLevel(h, 1, 0x60);
        h.chip.RunUntil(Start + 256);
        QCOMPARE(int(h.Reg(reg::ADCTL)), SCAN | 0x01 | CCF);
        const int seen[] = {h.Reg(reg::ADR1), h.Reg(reg::ADR1 + 1), h.Reg(reg::ADR1 + 2), h.Reg(reg::ADR4)};
        QCOMPARE(seen[0], 0x40);
        QCOMPARE(seen[1], 0x40);
        QCOMPARE(seen[2], 0x40);
        QCOMPARE(seen[3], 0x60);
        SetLevel(h, 1, 0x70);
        h.Run(100000);
        for (unsigned n = 0; n < 4; ++n)
            QCOMPARE(int(h.Reg(reg::ADR1 + n)), 0x70);
    }

    void aWriteRestartsAndAPoweredDownConverterConvertsNothing()
    {
        ChipHarness restart;                             // a second write starts the sequence over
        PowerUp(restart);
        restart.SetReg(reg::ADCTL, 0x00);
        restart.chip.RunUntil(Start + 100);
        restart.SetReg(reg::ADCTL, 0x01);
        restart.chip.RunUntil(Start + 100 + 127);
        QCOMPARE(int(restart.Reg(reg::ADCTL)), 0x01);
        QCOMPARE(int(restart.Reg(reg::ADR4)), 0x00);     // the first sequence never got to it
        restart.chip.RunUntil(Start + 100 + 128);
        QCOMPARE(int(restart.Reg(reg::ADCTL)), 0x81);
        QCOMPARE(int(restart.Reg(reg::ADR4)), 0x22);

        ChipHarness off;                                 // ADPU clear: nothing converts
        PowerUp(off, 0x00);
        off.SetReg(reg::ADCTL, 0x00);
        off.Run(1000);
        QVERIFY(off.Reg(reg::ADCTL) == 0x00 && off.Reg(reg::ADR1) == 0x00);

        ChipHarness stopped;                             // ADPU cleared mid-sequence stops it
        PowerUp(stopped);
        stopped.SetReg(reg::ADCTL, 0x00);
        stopped.chip.RunUntil(Start + 40);
        stopped.SetReg(reg::OPTION, 0x00);
        stopped.chip.RunUntil(Start + 50);
        stopped.SetReg(reg::OPTION, ADPU);
        stopped.Run(1000);
        QVERIFY(stopped.Reg(reg::ADR1) == 0x11 && stopped.Reg(reg::ADR1 + 1) == 0x00 && stopped.Reg(reg::ADCTL) == 0);
    }
};

QTEST_APPLESS_MAIN(ChipAnalogTest)
#include "ChipAnalog_test.moc"
