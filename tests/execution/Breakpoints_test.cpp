// The breakpoint table on its own: packed, in order of setting, 32 at most.
#include <QtTest>

#include "core/TargetState.h"
#include "execution/Breakpoints.h"

#include <vector>

namespace {
std::vector<std::int32_t> Table()
{
    return {BreakpointTable.begin(), BreakpointTable.begin() + BreakpointCount};
}
}  // namespace

class BreakpointsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ResetTargetState(); }

    void togglingTwiceMovesTheEntryToTheEnd()
    {
        for (std::int32_t a : {0x1000, 0x1002, 0x1005})
            QCOMPARE(ToggleBreakpoint(a), BreakpointToggle::Added);
        QCOMPARE(ToggleBreakpoint(0x1002), BreakpointToggle::Removed);
        QCOMPARE(Table(), (std::vector<std::int32_t>{0x1000, 0x1005}));
        QCOMPARE(ToggleBreakpoint(0x1002), BreakpointToggle::Added);
        QCOMPARE(Table(), (std::vector<std::int32_t>{0x1000, 0x1005, 0x1002}));
        QCOMPARE(FindBreakpoint(0x1002), 2);
        QVERIFY(!HasBreakpoint(0x1001));
    }

    void theThirtyThirdIsRefusedAndChangesNothing()
    {
        for (int i = 0; i < MaxBreakpoints; ++i)
            QVERIFY(AddBreakpoint(0xE000 + 2 * i));
        const auto full = Table();
        QCOMPARE(ToggleBreakpoint(0x0100), BreakpointToggle::TableFull);
        QVERIFY(!AddBreakpoint(0x0100));
        QCOMPARE(Table(), full);
        // An entry already in a full table can still be removed.
        QCOMPARE(ToggleBreakpoint(0xE000), BreakpointToggle::Removed);
        QCOMPARE(BreakpointCount, std::int16_t(31));
        QCOMPARE(Table().front(), 0xE002);
    }

    void removalPacksAndTakeLastEmptiesFromTheEnd()
    {
        for (std::int32_t a : {0x10, 0x20, 0x30, 0x20})   // a temporary entry may repeat one
            AddBreakpoint(a);
        RemoveBreakpoint(3);
        RemoveBreakpoint(7);   // out of range: nothing
        QCOMPARE(Table(), (std::vector<std::int32_t>{0x10, 0x20, 0x30}));
        RemoveBreakpoint(0);
        QCOMPARE(Table(), (std::vector<std::int32_t>{0x20, 0x30}));
        std::vector<std::int32_t> taken;
        std::int32_t address = -1;
        while (TakeLastBreakpoint(address))
            taken.push_back(address);
        QCOMPARE(taken, (std::vector<std::int32_t>{0x30, 0x20}));
        QCOMPARE(BreakpointCount, std::int16_t(0));
        QVERIFY(!TakeLastBreakpoint(address));
    }
};

QTEST_APPLESS_MAIN(BreakpointsTest)
#include "Breakpoints_test.moc"
