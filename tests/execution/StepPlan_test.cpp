// The step plans without a window: the board's code bytes and PC for each
// kind of step, the simulator's five bytes near the top of memory, and when
// the Play loop lets events run.
#include <QtTest>

#include "core/TargetState.h"
#include "execution/StepPlan.h"
#include "platform/TickCount.h"

using namespace stepping;
using Code = std::array<std::uint8_t, 4>;

class StepPlanTest : public QObject {
    Q_OBJECT
private slots:
    void init() { ResetTargetState(); }

    void boardCodeBytesAndPcByKind()
    {
        const std::uint8_t ldaa[] = {0x86, 0x42};
        BoardStep plain = PlanBoardStep(StepKind::Plain, 0x2000, ldaa, 0, 0);
        QCOMPARE(plain.code, (Code{0x86, 0x42, 0x01, 0x01}));
        QCOMPARE(plain.pc, 0x2002);

        // An instruction at the top of memory moves PC round to $0000.
        const std::uint8_t ldx[] = {0xCE, 0x12, 0x34};
        QCOMPARE(PlanBoardStep(StepKind::Plain, 0xFFFD, ldx, 0, 0).pc, 0x0000);

        // Five bytes do not fit the code buffer: the last is lost, PC still moves by five.
        const std::uint8_t brsetY[] = {0x18, 0x1E, 0x05, 0x80, 0xF0};
        plain = PlanBoardStep(StepKind::Plain, 0x3000, brsetY, 0, 0);
        QCOMPARE(plain.code, (Code{0x18, 0x1E, 0x05, 0x80}));
        QCOMPARE(plain.pc, 0x3005);

        // A call stepped over: JSR to the computed target, PC behind the call.
        const std::uint8_t jsrIndexed[] = {0xAD, 0x10};
        const BoardStep over = PlanBoardStep(StepKind::OverCall, 0x2004, jsrIndexed, 0x3010, 0);
        QCOMPARE(over.code, (Code{0xBD, 0x30, 0x10, 0x01}));
        QCOMPARE(over.pc, 0x2006);

        // Out: a jump to the current PC, and PC becomes the routine's return address.
        const std::uint8_t inca[] = {0x4C};
        const BoardStep out = PlanBoardStep(StepKind::Out, 0x20AB, inca, 0, 0x2005);
        QCOMPARE(out.code, (Code{0x7E, 0x20, 0xAB, 0x01}));
        QCOMPARE(out.pc, 0x2005);
    }

    void stepKindFollowsTheFlags()
    {
        StepExecute = false;
        StepPlain = true;
        QCOMPARE(CurrentStepKind(), StepKind::HostOnly);
        StepExecute = true;
        QCOMPARE(CurrentStepKind(), StepKind::Plain);
        StepPlain = false;
        StepOverActive = true;
        QCOMPARE(CurrentStepKind(), StepKind::OverCall);
        StepOverActive = false;
        StepOutActive = true;
        QCOMPARE(CurrentStepKind(), StepKind::Out);
    }

    void simulatorBytesAndWordsWrapAtTheTopOfMemory()
    {
        TargetMemory[0xFFFE] = 0xCE;
        TargetMemory[0xFFFF] = 0x12;
        TargetMemory[0x0000] = 0x34;
        TargetMemory[0x0001] = 0x99;
        QCOMPARE(SimulatorStepBytes(0xFFFE, 3), (std::array<std::uint8_t, 5>{0xCE, 0x12, 0x34, 0x01, 0x01}));
        QCOMPARE(TargetWord(0xFFFF), 0x1234);
    }

    void programBufferHoldsAWholeInstructionUpTo251BytesIn()
    {
        ProgramBase = 0x2000;
        QVERIFY(!OutsideProgramBuffer(0x2000));
        QVERIFY(!OutsideProgramBuffer(0x2000 + 251));
        QVERIFY(OutsideProgramBuffer(0x2000 + 252));
        QVERIFY(OutsideProgramBuffer(0x1FFF));
    }

    void eventPumpAtMostOncePerInterval()
    {
        std::uint32_t now = 1000;
        const auto previous = SetTickCountSource([&now] { return now; });
        EventPump pump(4, 10);
        QVERIFY(pump.Due());   // the first call lets events run
        int due = 0;
        for (int i = 0; i < 100; ++i)
            due += pump.Due();
        QCOMPARE(due, 0);      // the clock stood still
        now += 10;
        for (int i = 0; i < 3; ++i)
            QVERIFY(!pump.Due());   // the clock is only read every fourth call
        QVERIFY(pump.Due());
        EventPump always(1, 0);
        QVERIFY(always.Due() && always.Due());
        SetTickCountSource(previous);
    }
};

QTEST_APPLESS_MAIN(StepPlanTest)
#include "StepPlan_test.moc"
