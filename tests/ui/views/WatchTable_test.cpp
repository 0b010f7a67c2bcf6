// The watch table without a window (edits through the window are the memory and watch windows' test's).

#include "engine/code/SymbolTable.h"
#include "engine/state/ByteHistory.h"
#include "engine/state/TargetMoves.h"
#include "ui/views/WatchTable.h"

#include <array>

namespace {
// A target of 64 KB that can stop answering after some reads.
struct FakeTarget {
    std::array<std::uint8_t, 65536> memory{};
    int answers = 1000;
    QList<std::pair<int, int>> reads;

    TargetRead Reader()
    {
        return [this](std::int32_t address, int count, std::vector<std::uint8_t>& bytes) {
            reads << std::pair{address, count};
            if (answers-- <= 0)
                return false;
            bytes.clear();
            for (int i = 0; i < count; ++i)
                bytes.push_back(memory[static_cast<std::size_t>((address + i) & 0xFFFF)]);
            return true;
        };
    }
};
}  // namespace

class WatchTableTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ClearWatches(); }

    void removalKeepsTheOthers()
    {
        AddWatch(0x10, "count", false);
        AddWatch(0x20, "", true);
        AddWatch(0x30, "TOP", false);
        QCOMPARE(WatchLabel(0), QString("COUNT"));
        RemoveWatch(1);
        QVERIFY(WatchCount == 2 && WatchLabel(1) == "TOP");
        // Rows that are not there are left alone.
        RemoveWatch(2);
        RemoveWatch(-1);
        EditWatch(5, 0x99, "", false);
        QCOMPARE(WatchCount, std::int16_t(2));
        RemoveWatch(0);
        RemoveWatch(0);
        QVERIFY(WatchCount == std::int16_t(0) && AddWatch(0x40, "", false));
        QCOMPARE(WatchTable[0].WatchFormat, '$');   // a new watch starts in hex
    }

    void readsOneExchangePerWatchUntilTheLinkDies()
    {
        FakeTarget target;
        target.memory[0xFFFF] = 0x12, target.memory[0x0000] = 0x34, target.memory[0x1000] = 0xAB;
        AddWatch(0xFFFF, "", true);    // high byte at $FFFF, low byte at $0000
        AddWatch(0x1000, "", false);
        QVERIFY(ReadWatches(target.Reader()));
        QCOMPARE(target.reads, (QList<std::pair<int, int>>{{0xFFFF, 2}, {0x1000, 1}}));
        QVERIFY(WatchTable[0].WatchValue == 0x1234 && WatchValueText(0) == "$1234" && WatchTable[1].WatchValue == 0xAB);
        QCOMPARE(WatchBytes(0, 0xBEEF), (std::vector<std::uint8_t>{0xBE, 0xEF}));
        QCOMPARE(WatchBytes(1, 0x1FF), (std::vector<std::uint8_t>{0xFF}));

        // A link that dies ends the round: the watches behind keep their values.
        AddWatch(0x1001, "", false);
        target.memory[0x1001] = 0xCD;
        target.reads.clear();
        target.answers = 1;
        QVERIFY(!ReadWatches(target.Reader()) && target.reads.size() == 2 && WatchTable[0].WatchValue == 0x1234);
        QVERIFY(WatchTable[1].WatchValue == 0xAB && WatchTable[2].WatchValue == 0);
    }

    void reloadDropsOnlyMovedSymbols()
    {
        SymbolTable = {{0x0040, 0, {}, "KEPT", ""}, {0x0052, 0, {}, "MOVED", ""}};
        SymbolCount = 2;
        AddWatch(0x0040, "KEPT", false);
        AddWatch(0x0050, "MOVED", false);
        AddWatch(0x0060, "GONE", true);
        ApplySymbolReload();
        QCOMPARE((QStringList{WatchLabel(0), WatchLabel(1), WatchLabel(2)}), (QStringList{"KEPT", "$0050", "$0060"}));
        QCOMPARE(WatchTable[1].WatchAddress, 0x0050);
        SymbolTable.clear();
        SymbolCount = 0;
    }

    void changesCountAcrossAMoveOnly()
    {
        ByteHistory history;
        history.Seen(0x10, std::array<std::uint8_t, 3>{1, 2, 3});
        QCOMPARE(history.ChangedBits(0x10, 3), 0u);   // nothing known before
        history.Seen(0x11, 9);                          // a change without a move: not yet a change
        QVERIFY(!history.Changed(0x11));

        NoteTargetMoves();
        history.Seen(0x10, std::array<std::uint8_t, 3>{1, 7, 3});
        // Against 9, the last value before the move; the first byte is the high one.
        QCOMPARE(history.ChangedBits(0x0F, 4), 0x00000E00u);
        history.Seen(0x11, 9);   // a second read after the move compares with the same
        QVERIFY(!history.Changed(0x11));

        // Two moves without a read in between count as one.
        NoteTargetMoves();
        NoteTargetMoves();
        history.Seen(0x11, 9);
        QVERIFY(!history.Changed(0x11));
        // Addresses wrap at 16 bits.
        history.Seen(0xFFFF, std::array<std::uint8_t, 2>{5, 6});
        NoteTargetMoves();
        history.Seen(0xFFFF, std::array<std::uint8_t, 2>{5, 8});
        QCOMPARE(history.ChangedBits(0xFFFF, 2), 0x000Eu);
        history.Clear();
        QVERIFY(!history.Changed(0x0000));
    }
};

QTEST_MAIN(WatchTableTest)
#include "WatchTable_test.moc"
