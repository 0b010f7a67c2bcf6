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
    void togglingPacksTheTableWhichRefusesTheThirtyThird()
    {
        for (int i = 0; i < MaxBreakpoints; ++i)
            QCOMPARE(ToggleBreakpoint(0xE000 + 2 * i), BreakpointToggle::Added);
        QCOMPARE(ToggleBreakpoint(0x0100), BreakpointToggle::TableFull);
        QVERIFY(!AddBreakpoint(0x0100));
        QVERIFY(!HasBreakpoint(0x0100));
        // An entry of a full table can still go; set again, it comes last.
        QCOMPARE(ToggleBreakpoint(0xE002), BreakpointToggle::Removed);
        QCOMPARE(ToggleBreakpoint(0xE002), BreakpointToggle::Added);
        QCOMPARE(Table()[1], 0xE004);
        QCOMPARE(FindBreakpoint(0xE002), MaxBreakpoints - 1);
        RemoveBreakpoint(MaxBreakpoints);   // out of range: nothing
        RemoveBreakpoint(0);
        std::int32_t address = -1;
        QVERIFY(TakeLastBreakpoint(address));
        QCOMPARE(address, 0xE002);
        QCOMPARE(Table().front(), 0xE004);
        QCOMPARE(BreakpointCount, std::int16_t(MaxBreakpoints - 2));
    }
};

QTEST_APPLESS_MAIN(BreakpointsTest)
#include "Breakpoints_test.moc"
