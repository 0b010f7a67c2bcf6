#include "engine/state/TargetState.h"
#include "engine/execution/Breakpoints.h"
#include "engine/execution/StepPlan.h"
#include "platform/TickCount.h"
#include "support/CpuHarness.h"

#include <vector>

using namespace stepping;
using Code = std::array<std::uint8_t, 4>;

namespace {
std::vector<std::int32_t> BreakpointList()
{
    return {BreakpointTable.begin(), BreakpointTable.begin() + BreakpointCount};
}
}  // namespace

class StepPlanTest : public QObject {
    Q_OBJECT
private slots:
    void codeAndPcWrapAtTheTopOfMemory()
    {
        ResetTargetState();
        const std::uint8_t ldx[] = {0xCE, 0x12, 0x34};
        const BoardStep wrapped = PlanBoardStep(StepKind::Plain, 0xFFFD, ldx, 0, 0);
        QCOMPARE(wrapped.code, (Code{0xCE, 0x12, 0x34, 0x01}));
        QCOMPARE(wrapped.pc, 0x0000);

        // Five bytes do not fit the code buffer: the last is lost, PC still moves by five.
        const std::uint8_t brsetY[] = {0x18, 0x1E, 0x05, 0x80, 0xF0};
        const BoardStep plain = PlanBoardStep(StepKind::Plain, 0x3000, brsetY, 0, 0);
        QCOMPARE(plain.code, (Code{0x18, 0x1E, 0x05, 0x80}));
        QCOMPARE(plain.pc, 0x3005);

        Poke(TargetMemory, 0xFFFE, {0xCE, 0x12, 0x34, 0x99});   // LDX #$1234 across the top
        QCOMPARE(SimulatorStepBytes(0xFFFE, 3), (std::array<std::uint8_t, 5>{0xCE, 0x12, 0x34, 0x01, 0x01}));
        QCOMPARE(TargetWord(0xFFFF), 0x1234);
    }

    void theBreakpointTableStaysPackedInOrderOfSetting()
    {
        for (std::int32_t a : {0x10, 0x20, 0x30, 0x20})   // a temporary entry may repeat one
            AddBreakpoint(a);
        QCOMPARE(ToggleBreakpoint(0x10), BreakpointToggle::Removed);
        QCOMPARE(ToggleBreakpoint(0x10), BreakpointToggle::Added);
        RemoveBreakpoint(7);   // out of range: nothing
        RemoveBreakpoint(1);
        QCOMPARE(BreakpointList(), (std::vector<std::int32_t>{0x20, 0x20, 0x10}));
        QCOMPARE(FindBreakpoint(0x20), 0);
        std::int32_t address = -1;
        QVERIFY(TakeLastBreakpoint(address));
        QCOMPARE(address, 0x10);
        QCOMPARE(BreakpointCount, std::int16_t(2));
    }

    void eventPumpAtMostOncePerInterval()
    {
        std::uint32_t now = 1000;
        const auto previous = SetTickCountSource([&now] { return now; });
        EventPump pump(4, 10);
        QVERIFY(pump.Due());   // the first call lets events run
        for (int i = 0; i < 8; ++i)
            QVERIFY(!pump.Due());   // the clock stood still
        now += 10;
        for (int i = 0; i < 3; ++i)
            QVERIFY(!pump.Due());   // the clock is only read every fourth call
        QVERIFY(pump.Due());
        SetTickCountSource(previous);
    }
};

QTEST_APPLESS_MAIN(StepPlanTest)
#include "StepPlan_test.moc"
