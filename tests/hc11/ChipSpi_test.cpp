// The SPI on the whole chip: a master's transfer of eight bit times at
// SPR1:SPR0's rate (the technical data's SPI clock rate table: E/2, E/4,
// E/16, E/32), SPSR's flags with their clearing sequences and MODF's effects
// (the SPSR bit descriptions and the SPI system errors section of the
// Reference Manual), the SPI interrupt, and a byte from an outside master.
#include <QtTest>

#include "hc11/chip/Interrupts.h"
#include "support/ChipHarness.h"

#include <vector>

using namespace hc11::chip;

namespace {

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

void Start(ChipHarness& h, std::uint8_t spcr)
{
    QVERIFY(h.Load(ChipHarness::Waiting).isEmpty());
    h.SetReg(reg::SPCR, spcr);
}

void SetSlaveSelect(ChipHarness& h, bool high)
{
    InputPins pins = h.chip.Inputs();
    pins.portD = std::uint8_t(high ? pins.portD | 0x20 : pins.portD & ~0x20);
    h.chip.SetInputs(pins);
}

} // namespace

class ChipSpiTest : public QObject {
    Q_OBJECT
private slots:
    void masterTransfersEightBitsAtTheProgrammedRate()
    {
        const struct { std::uint8_t spr; std::uint64_t bitCycles; bool peer; } rates[] = {
            {0, 2, true}, {1, 4, true}, {2, 16, true}, {3, 32, true}, {0, 2, false},
        };
        for (const auto& rate : rates) {
            ChipHarness h;
            ComplementPeer peer;
            if (rate.peer)
                h.chip.AttachSpiPeer(&peer);
            Start(h, SPE | MSTR | rate.spr);
            h.chip.RunUntil(100);
            h.CpuWrite(reg::SPDR, 0xA5);
            h.chip.RunUntil(100 + 8 * rate.bitCycles - 1);
            QCOMPARE(int(h.Reg(reg::SPSR)), 0);
            h.chip.RunUntil(100 + 8 * rate.bitCycles);
            QCOMPARE(int(h.Reg(reg::SPSR)), SPIF);
            const int answer = rate.peer ? 0x5A : 0xFF;   // nobody on MISO reads high
            QCOMPARE(int(h.Reg(reg::SPDR)), answer);
            const auto transfers = h.chip.TakeSpiOutput();
            QCOMPARE(transfers.size(), std::size_t(1));
            QVERIFY(transfers[0].sent == 0xA5 && transfers[0].received == answer &&
                    transfers[0].endsAt == 100 + 8 * rate.bitCycles);
        }
    }

    void flagsClearOnlyByAStatusReadThenADataAccess()
    {
        ChipHarness h;
        ComplementPeer peer;
        h.chip.AttachSpiPeer(&peer);
        Start(h, SPE | MSTR);                        // 16 cycles a byte
        h.chip.RunUntil(100);
        h.CpuWrite(reg::SPDR, 0x01);
        h.chip.RunUntil(108);
        h.CpuWrite(reg::SPDR, 0x02);                 // during the transfer: WCOL, and the byte is lost
        QCOMPARE(int(h.Reg(reg::SPSR)), WCOL);
        h.chip.RunUntil(116);
        QCOMPARE(int(h.Reg(reg::SPSR)), SPIF | WCOL);
        h.CpuWrite(reg::SPDR, 0x03);                 // SPIF set and not seen: the write is held off
        h.chip.RunUntil(140);
        QVERIFY(h.Reg(reg::SPSR) == (SPIF | WCOL) && peer.got == std::vector<std::uint8_t>{0x01});
        h.CpuRead(reg::SPSR);
        h.CpuRead(reg::SPDR);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
        h.CpuWrite(reg::SPDR, 0x04);
        h.chip.RunUntil(156);
        QVERIFY(h.Reg(reg::SPSR) == SPIF && peer.got == (std::vector<std::uint8_t>{0x01, 0x04}));
        h.CpuRead(reg::SPSR);                        // the sequence through a data write
        h.CpuWrite(reg::SPDR, 0x05);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
    }

    void slaveSelectLowFaultsAnEnabledMaster()
    {
        // DDRD bit 5 set makes /SS a plain output: no fault. A fault clears
        // SPE and MSTR and DDRD's SPI bits (PD2-PD5), leaving PD0-PD1.
        const struct { std::uint8_t spcr; std::uint8_t ddrd; bool faults; std::size_t transfers; } cases[] = {
            {SPIE | SPE | MSTR, 0x1F, true, 0}, {SPE | MSTR, 0x3F, false, 1},
            {SPE, 0x1F, false, 0}, {MSTR, 0x1F, false, 0},
        };
        for (const auto& c : cases) {
            ChipHarness h;
            Start(h, c.spcr);
            h.SetReg(reg::DDRD, c.ddrd);
            h.CpuWrite(reg::SPDR, 0x77);
            SetSlaveSelect(h, false);
            QCOMPARE(int(h.Reg(reg::SPSR)), c.faults ? MODF : 0);
            QCOMPARE(int(h.Reg(reg::SPCR)), c.faults ? SPIE : c.spcr);
            QCOMPARE(int(h.Reg(reg::DDRD)), c.faults ? 0x03 : c.ddrd);
            QCOMPARE(h.chip.Core().MaskableRequest(), std::uint16_t(c.faults ? VectorOf(Source::Spi) : 0));
            h.Run(1000);
            QCOMPARE(h.chip.TakeSpiOutput().size(), c.transfers);   // a fault stops the transfer
        }
        ChipHarness h;                               // MODF clears by a status read, then an SPCR write
        Start(h, SPE | MSTR);
        SetSlaveSelect(h, false);
        h.CpuWrite(reg::SPCR, 0x00);
        QCOMPARE(int(h.Reg(reg::SPSR)), MODF);
        h.CpuRead(reg::SPSR);
        h.CpuRead(reg::SPDR);                        // a data access is not the sequence
        QCOMPARE(int(h.Reg(reg::SPSR)), MODF);
        h.CpuWrite(reg::SPCR, 0x00);
        QCOMPARE(int(h.Reg(reg::SPSR)), 0);
        h.CpuWrite(reg::SPCR, SPE | MSTR);           // /SS still low: a master faults at once
        QCOMPARE(int(h.Reg(reg::SPSR)), MODF);
    }

    void selectedSlaveTakesAByteFromAnOutsideMaster()
    {
        ChipHarness h;
        Start(h, SPE | CPHA);
        QCOMPARE(int(h.chip.SpiReceive(0x11)), 0xFF);    // not selected
        SetSlaveSelect(h, false);
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
};

QTEST_APPLESS_MAIN(ChipSpiTest)
#include "ChipSpi_test.moc"
