// The SCI on the whole chip: the rate from BAUD, each character's frame time,
// SCSR's flags with their set and clear rules, wake-up and nine-bit characters. The facts are
// the MC68HC11E technical data's SCI chapter: the baud rate prescaler and
// select tables, and the SCSR bit descriptions.
#include "support/ChipHarness.h"

using namespace hc11::chip;

namespace {

constexpr std::uint8_t TE = 0x08, RE = 0x04, RWU = 0x02;
constexpr std::uint64_t Frame9600 = 2080;   // 10 bits of 208 E cycles

// A chip waiting in WAI with the SCI at 9600 baud and the given SCCR2.
struct SciChip : WaitingChip {
    explicit SciChip(std::uint8_t sccr2, std::uint8_t sccr1 = 0)
    {
        SetReg(reg::BAUD, 0x30);
        SetReg(reg::SCCR1, sccr1);
        SetReg(reg::SCCR2, sccr2);
    }
};

} // namespace

class ChipSciTest : public QObject {
    Q_OBJECT
private slots:
    void eachCharacterTakesItsFrameTimeAtTheProgrammedRate()
    {
        // E / (16 * prescaler * 2^SCR); prescaler 1, 3, 4, 13 by SCP1:SCP0.
        const struct { std::uint8_t baud; std::uint64_t bitCycles; } rates[] = {
            {0x00, 16}, {0x10, 48}, {0x20, 64}, {0x30, 208}, {0x31, 416}, {0x33, 1664}, {0x07, 2048},
        };
        for (const auto& rate : rates) {
            for (const bool nineBits : {false, true}) {
                WaitingChip h;
                h.SetReg(reg::BAUD, rate.baud);
                h.SetReg(reg::SCCR1, nineBits ? 0x50 : 0x00);   // M, and T8 for the ninth bit
                h.SetReg(reg::SCCR2, TE);                       // a frame of preamble first
                h.SetReg(reg::SCDR, 0x5A);
                const std::uint64_t frame = rate.bitCycles * (nineBits ? 11 : 10);
                h.chip.RunUntil(2 * frame - 1);
                QVERIFY(h.chip.TakeSciOutput().empty());
                h.chip.RunUntil(2 * frame);
                const auto sent = h.chip.TakeSciOutput();
                QCOMPARE(sent.size(), std::size_t(1));
                QVERIFY(sent[0].data == 0x5A && sent[0].ninth == nineBits && sent[0].endsAt == 2 * frame);
            }
        }
    }

    void transmitFlagsClearOnlyByAStatusReadThenADataWrite()
    {
        SciChip h(TE);
        QCOMPARE(int(h.CpuRead(reg::SCSR)), 0xC0);
        h.CpuWrite(reg::SCDR, 'a');                   // waits behind the preamble
        QCOMPARE(h.Reg(reg::SCSR) & 0xC0, 0x00);
        h.chip.RunUntil(Frame9600);                   // into the shifter
        QCOMPARE(h.Reg(reg::SCSR) & 0xC0, 0x80);
        h.chip.RunUntil(2 * Frame9600);               // sent, nothing more
        QCOMPARE(h.Reg(reg::SCSR) & 0xC0, 0xC0);
        h.CpuWrite(reg::SCDR, 'b');                   // no status read: the flags stay
        QCOMPARE(h.Reg(reg::SCSR) & 0xC0, 0xC0);
        h.CpuRead(reg::SCSR);
        h.CpuWrite(reg::SCDR, 'c');                   // waits behind 'b'
        QCOMPARE(h.Reg(reg::SCSR) & 0xC0, 0x00);
        h.chip.RunUntil(4 * Frame9600);
        const auto sent = h.chip.TakeSciOutput();
        QCOMPARE(sent.size(), std::size_t(3));
        QVERIFY(sent[1].data == 'b' && sent[1].endsAt == 3 * Frame9600 && sent[2].endsAt == 4 * Frame9600);
    }

    void receiveFlagsAndTheirClearingSequence()
    {
        // Each row: characters put on the line at cycle 0, what the program
        // reads once they are in, then SCSR and SCDR. A frame of idle line
        // later IDLE is set; the sequence clears it, and it stays clear
        // while no character comes.
        enum Access { None, DataOnly, StatusThenData, EarlyStatusThenData };
        const struct { std::uint8_t sccr2; int characters; Access access; std::uint8_t status; int data; } cases[] = {
            {TE | RE, 1, None, 0xE0, 'x'},                  // RDRF
            {TE | RE, 1, DataOnly, 0xE0, 'x'},              // a data read alone clears nothing
            {TE | RE, 1, EarlyStatusThenData, 0xE0, 'x'},   // nor one after a status read that missed RDRF
            {TE | RE, 1, StatusThenData, 0xC0, 'x'},
            {TE | RE, 2, None, 0xE8, 'x'},                  // OR: the second is lost, the first stays
            {TE | RE, 2, StatusThenData, 0xC0, 'x'},        // the sequence clears OR too
            {TE, 1, None, 0xC0, 0},                         // receiver off: the line is ignored
        };
        for (const auto& c : cases) {
            SciChip h(c.sccr2);
            for (int i = 0; i < c.characters; ++i)
                h.chip.SciReceive(std::uint8_t(i == 0 ? 'x' : 'y'));
            if (c.access == EarlyStatusThenData)
                h.CpuRead(reg::SCSR);
            h.chip.RunUntil(c.characters * Frame9600 - 1);
            QCOMPARE(h.Reg(reg::SCSR) & 0x20, c.characters > 1 && (c.sccr2 & RE) ? 0x20 : 0);   // the first is in
            h.chip.RunUntil(c.characters * Frame9600);
            if (c.access == StatusThenData)
                h.CpuRead(reg::SCSR);
            if (c.access != None)
                h.CpuRead(reg::SCDR);
            QCOMPARE(int(h.Reg(reg::SCSR)), int(c.status));
            QCOMPARE(int(h.Reg(reg::SCDR)), c.data);
            h.chip.RunUntil((c.characters + 1) * Frame9600);
            QCOMPARE(h.Reg(reg::SCSR) & 0x10, c.sccr2 & RE ? 0x10 : 0);
            h.CpuRead(reg::SCSR);
            h.CpuRead(reg::SCDR);
            h.chip.RunUntil(10 * Frame9600);
            QCOMPARE(h.Reg(reg::SCSR) & 0x3E, 0);
        }
    }

    void sleepingReceiverWakesByAddressMarkOrIdleLine()
    {
        // SCCR1 WAKE set: a character with its last data bit 1 wakes and is taken.
        SciChip mark(TE | RE | RWU, 0x08);
        mark.chip.SciReceive(0x41);
        mark.chip.SciReceive(0xC1);
        mark.chip.RunUntil(Frame9600);
        QCOMPARE(mark.Reg(reg::SCSR) & 0x20, 0);       // asleep through $41
        mark.chip.RunUntil(2 * Frame9600);
        QCOMPARE(mark.Reg(reg::SCSR) & 0x20, 0x20);
        QVERIFY(mark.Reg(reg::SCDR) == 0xC1 && !(mark.Reg(reg::SCCR2) & RWU));

        // WAKE clear: characters go by until a frame of idle line.
        SciChip idle(TE | RE | RWU);
        idle.chip.SciReceive(0x41);
        idle.chip.RunUntil(2 * Frame9600);
        QVERIFY(!(idle.Reg(reg::SCCR2) & RWU) && !(idle.Reg(reg::SCSR) & 0x30));
        idle.chip.SciReceive(0x42);
        idle.chip.RunUntil(3 * Frame9600);
        QCOMPARE(int(idle.Reg(reg::SCDR)), 0x42);
    }

    void nineBitCharactersBringTheirNinthBitInR8()
    {
        SciChip h(TE | RE, 0x10);
        SciFrame frame;
        frame.data = 0x12;
        frame.ninth = true;
        frame.framingError = true;
        h.chip.SciReceive(frame);
        h.chip.RunUntil(11 * 208);
        QVERIFY(h.Reg(reg::SCCR1) & 0x80);
        QCOMPARE(int(h.Reg(reg::SCSR)), 0xE2);         // RDRF with FE
    }
};

QTEST_APPLESS_MAIN(ChipSciTest)
#include "ChipSci_test.moc"
