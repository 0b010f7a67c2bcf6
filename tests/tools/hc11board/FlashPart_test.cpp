// The board's flash part: the command sequences, the status
// bits while the part is busy and its times, from the Am29F040B datasheet
// (command definitions table, write operation status table, erase and
// programming performance), on a clock the test moves.
#include "hc11board/FlashPart.h"

#include <utility>
#include <vector>

using namespace hc11board;

namespace {

using Writes = std::vector<std::pair<std::uint16_t, std::uint8_t>>;

Writes Unlock(std::uint16_t base = 0xE000)
{
    return {{std::uint16_t(base | 0x555), 0xAA}, {std::uint16_t(base | 0x2AA), 0x55}};
}

Writes Command(std::uint8_t command, Writes tail = {}, std::uint16_t base = 0xE000)
{
    Writes writes = Unlock(base);
    writes.push_back({std::uint16_t(base | 0x555), command});
    writes.insert(writes.end(), tail.begin(), tail.end());
    return writes;
}

Writes EraseCommand(std::uint16_t at, std::uint8_t command)
{
    Writes writes = Command(0x80, Unlock());
    writes.push_back({at, command});
    return writes;
}

struct Flash {
    // $E100 programmed to $0F, then the writes given.
    explicit Flash(const Writes& writes = {}, FlashTiming timing = {}) : part([this] { return now; }, timing)
    {
        part.Program(0xE100, 0x0F);
        Write(writes);
    }
    void Write(const Writes& writes)
    {
        for (const auto& [address, value] : writes)
            part.Write(address, value);
    }
    std::uint64_t now = 0;
    FlashPart part;
};

} // namespace

class FlashPartTest : public QObject {
    Q_OBJECT
private slots:
    void commandSequencesChangeTheArrayOnlyWhenComplete()
    {
        const FlashTiming timing;
        struct Row {
            const char* name;
            Writes writes;
            std::uint64_t busyCycles;     // how long every read gives status
            std::uint8_t e100, e000;      // the array afterwards ($E100 starts at $0F, $E000 at $FF)
        };
        const Row rows[] = {
            {"byte program", Command(0xA0, {{0xE100, 0x05}}), timing.programCycles, 0x05, 0xFF},
            {"unlock at $F555/$F2AA", Command(0xA0, {{0xE000, 0x12}}, 0xF000), timing.programCycles, 0x0F, 0x12},
            {"sector erase anywhere in the window", EraseCommand(0xFFFF, 0x30), timing.sectorEraseCycles, 0xFF, 0xFF},
            {"chip erase", EraseCommand(0xE555, 0x10), timing.chipEraseCycles, 0xFF, 0xFF},
            {"chip erase needs 555h", EraseCommand(0xE556, 0x10), 0, 0x0F, 0xFF},
            {"wrong second unlock", {{0xE555, 0xAA}, {0xE2AB, 0x55}, {0xE555, 0xA0}, {0xE100, 0x00}}, 0, 0x0F, 0xFF},
            {"a store without the unlock", {{0xE100, 0x00}}, 0, 0x0F, 0xFF},
            {"reset ends a sequence", Command(0xF0, {{0xE100, 0x00}}), 0, 0x0F, 0xFF},
        };
        for (const Row& row : rows) {
            Flash flash(row.writes);
            if (row.busyCycles > 0) {
                flash.now = row.busyCycles - 1;
                QVERIFY2(flash.part.Busy(), row.name);
                flash.part.Write(0xE000, 0xF0);   // ignored while the algorithm runs
                flash.now = row.busyCycles;
            }
            QVERIFY2(!flash.part.Busy(), row.name);
            QVERIFY2(flash.part.Read(0xE100) == row.e100 && flash.part.Read(0xE000) == row.e000, row.name);
        }
    }

    void statusBitsWhileBusyAndAfterAFailure()
    {
        // Program: DQ7 the complement of the data's bit 7, DQ6 toggling.
        Flash program(Command(0xA0, {{0xE200, 0x7E}}));
        const std::uint8_t first = program.part.Read(0xE200), second = program.part.Read(0xE000);
        QCOMPARE(first & 0x80, 0x80);
        QCOMPARE((first ^ second) & 0x64, 0x40);
        // Erase: DQ7 0, DQ3 set, DQ6 and DQ2 toggling.
        Flash erase(EraseCommand(0xE000, 0x30));
        const std::uint8_t a = erase.part.Read(0xE000), b = erase.part.Read(0xE000);
        QCOMPARE(a & 0x88, 0x08);
        QCOMPARE((a ^ b) & 0x64, 0x44);

        // A failing erase, and a program that would set a bit: DQ5 after
        // their time, until F0h; the array keeps what only an erase could change.
        Flash failing(EraseCommand(0xE000, 0x30), {.eraseFails = true});
        Flash setsABit(Command(0xA0, {{0xE100, 0xF3}}));
        for (auto [flash, time] : {std::pair{&failing, FlashTiming{}.sectorEraseCycles},
                                   std::pair{&setsABit, FlashTiming{}.programCycles}}) {
            flash->now = time - 1;
            QCOMPARE(flash->part.Read(0xE100) & 0x20, 0);
            flash->now = time + 1000;
            QCOMPARE(flash->part.Read(0xE100) & 0x20, 0x20);
            flash->Write(Command(0xA0, {{0xE100, 0x00}}));   // ignored
            QCOMPARE(flash->part.Read(0xE100) & 0x20, 0x20);
            flash->part.Write(0xE000, 0xF0);
            QCOMPARE(flash->part.Read(0xE100), std::uint8_t(0x03 | (flash == &failing ? 0x0C : 0)));
        }
    }

    void autoselectNamesThePartUntilReset()
    {
        Flash flash(Command(0x90));
        QCOMPARE(flash.part.Read(0xE000), std::uint8_t(0x01));   // AMD
        QCOMPARE(flash.part.Read(0xE001), std::uint8_t(0xA4));   // Am29F040B
        flash.part.Write(0xE000, 0xF0);
        QCOMPARE(flash.part.Read(0xE100), std::uint8_t(0x0F));
    }
};

QTEST_APPLESS_MAIN(FlashPartTest)
#include "FlashPart_test.moc"
