#include <QtTest>

#include <initializer_list>

#include "code/Asm.h"
#include "core/TargetState.h"
#include "support/MainFormFixture.h"
#include "workspace/frmMain.h"

namespace {

struct Flow {
    bool ok;
    std::int32_t next;
    bool jump, call, ret;
};

// Places the instruction at PC and asks where the flow goes.
Flow At(std::int32_t pc, std::initializer_list<int> bytes, bool followCalls = false)
{
    ProgramBase = pc;
    ProgramBuffer.fill(0x01);
    int i = 0;
    for (int b : bytes) {
        ProgramBuffer[i] = static_cast<std::uint8_t>(b);
        if (i < 5)
            InstructionWindow[i] = static_cast<std::uint8_t>(b);
        ++i;
    }
    CpuRegisters.PC = pc;
    Flow f{};
    std::int32_t address = pc;
    f.ok = NextAddress(address, followCalls, f.next, f.jump, f.call, f.ret);
    return f;
}

void SetFlags(std::uint8_t ccr)
{
    CpuRegisters.CCR = ccr;
    SplitCCR();
}

} // namespace

class InstructionFlowTest : public QObject {
    Q_OBJECT
    frmMain* main_ = nullptr;

private slots:
    void init()
    {
        ResetTargetState();
        TargetMode = SimulatorMode;   // bit branches read TargetMemory
        main_ = new frmMain;
    }
    void cleanup() { delete main_; }

    void splitCcrSetsEveryFlag()
    {
        SetFlags(0xA5);   // S . H . . Z . C
        const CpuRegisterRecord& r = CpuRegisters;
        QVERIFY(r.FlagC && !r.FlagV && r.FlagZ && !r.FlagN && !r.FlagI && r.FlagH && !r.FlagX && r.FlagS);
        SetFlags(0x5A);
        QVERIFY(!r.FlagC && r.FlagV && !r.FlagZ && r.FlagN && r.FlagI && !r.FlagH && r.FlagX && !r.FlagS);
    }

    void branchesFollowTheFlags_data()
    {
        QTest::addColumn<int>("opcode");
        QTest::addColumn<int>("ccr");
        QTest::addColumn<bool>("taken");
        // CCR bits: C 01, V 02, Z 04, N 08.
        QTest::newRow("BRA") << 0x20 << 0x00 << true;
        QTest::newRow("BRN") << 0x21 << 0x0F << false;
        QTest::newRow("BHI clear") << 0x22 << 0x00 << true;
        QTest::newRow("BHI carry") << 0x22 << 0x01 << false;
        QTest::newRow("BLS zero") << 0x23 << 0x04 << true;
        QTest::newRow("BCC") << 0x24 << 0x01 << false;
        QTest::newRow("BCS") << 0x25 << 0x01 << true;
        QTest::newRow("BNE") << 0x26 << 0x04 << false;
        QTest::newRow("BEQ") << 0x27 << 0x04 << true;
        QTest::newRow("BVC") << 0x28 << 0x02 << false;
        QTest::newRow("BVS") << 0x29 << 0x02 << true;
        QTest::newRow("BPL") << 0x2A << 0x08 << false;
        QTest::newRow("BMI") << 0x2B << 0x08 << true;
        QTest::newRow("BGE N^V") << 0x2C << 0x08 << false;
        QTest::newRow("BGE N=V") << 0x2C << 0x0A << true;
        QTest::newRow("BLT N^V") << 0x2D << 0x02 << true;
        QTest::newRow("BGT zero") << 0x2E << 0x04 << false;
        QTest::newRow("BGT plain") << 0x2E << 0x00 << true;
        QTest::newRow("BLE N^V") << 0x2F << 0x08 << true;
        QTest::newRow("BLE plain") << 0x2F << 0x00 << false;
    }

    void branchesFollowTheFlags()
    {
        QFETCH(int, opcode);
        QFETCH(int, ccr);
        QFETCH(bool, taken);
        SetFlags(std::uint8_t(ccr));
        const Flow f = At(0x1000, {opcode, 0x10});
        QVERIFY(f.ok);
        QCOMPARE(f.jump, taken);
        QCOMPARE(f.next, taken ? 0x1012 : 0x1002);
        QVERIFY(!f.call && !f.ret);
    }

    void callsJumpsAndReturns()
    {
        Flow f = At(0x1000, {0x8D, 0x10});   // BSR
        QCOMPARE(f.next, 0x1002);
        QVERIFY(f.call && !f.jump);
        f = At(0x1000, {0x8D, 0x10}, true);
        QCOMPARE(f.next, 0x1012);
        QVERIFY(f.call && !f.jump);

        f = At(0x1000, {0x9D, 0x12}, true);   // JSR $12
        QCOMPARE(f.next, 0x0012);
        f = At(0x1000, {0xBD, 0x12, 0x34});   // JSR $1234 stepped over
        QCOMPARE(f.next, 0x1003);
        QVERIFY(f.call);

        CpuRegisters.IX = 0xFFFF;
        f = At(0x1000, {0x6E, 0xFF});          // JMP $FF,X wraps
        QCOMPARE(f.next, 0x00FE);
        QVERIFY(f.jump && !f.call);
        CpuRegisters.IY = 0xFFFF;
        f = At(0x1000, {0x18, 0xAD, 0xFF}, true);   // JSR $FF,Y
        QCOMPARE(f.next, 0x00FE);
        QVERIFY(f.call);

        StackBuffer[1] = 0x12;
        StackBuffer[2] = 0x34;
        f = At(0x1000, {0x39});                // RTS
        QCOMPARE(f.next, 0x1234);
        QVERIFY(f.ret && !f.jump);

        f = At(0xFFFE, {0x20, 0xFE});          // a branch to itself at the top of memory
        QCOMPARE(f.next, 0xFFFE);
        QVERIFY(f.jump);
        f = At(0xFFFF, {0x01});                // the next instruction wraps to $0000
        QCOMPARE(f.next, 0x0000);
        f = At(0x1000, {0x18, 0x12});          // a bad pair is two bytes long
        QCOMPARE(f.next, 0x1002);
    }

    void rtiReturnsToTheFramesPc()
    {
        // The interrupt frame above SP: CCR, B, A, X, Y, then PC at SP + 8.
        CpuRegisters.SP = 0x00F0;
        TargetMemory[0x00F8] = 0xE1;
        TargetMemory[0x00F9] = 0x23;
        const Flow f = At(0x1000, {0x3B});
        QVERIFY(f.ok);
        QCOMPARE(f.next, 0xE123);
        QVERIFY(!f.ret && !f.jump);
    }

    void bitBranchesTestTargetMemory()
    {
        TargetMemory[0x0040] = 0x55;
        Flow f = At(0x1000, {0x12, 0x40, 0x14, 0x10});   // BRSET $40 $14: bits set
        QVERIFY(f.ok && f.jump);
        QCOMPARE(f.next, 0x1014);
        f = At(0x1000, {0x12, 0x40, 0x34, 0x10});        // $20 is clear
        QVERIFY(!f.jump);
        QCOMPARE(f.next, 0x1004);
        f = At(0x1000, {0x13, 0x40, 0x02, 0x10});        // BRCLR: $02 clear
        QVERIFY(f.jump);
        f = At(0x1000, {0x13, 0x40, 0x14, 0x10});
        QVERIFY(!f.jump);
        f = At(0x1000, {0x13, 0x40, 0x00, 0x10});        // a mask of 0 always branches
        QVERIFY(f.jump);

        CpuRegisters.IY = 0x0030;
        f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});  // BRCLR $10,Y $FF at $40
        QVERIFY(!f.jump);
        QCOMPARE(f.next, 0x1005);
        TargetMemory[0x0040] = 0x00;
        f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});
        QVERIFY(f.jump);
        QCOMPARE(f.next, 0x0FF5);
    }

    void bitBranchFailsWhenTheBoardDoesNotAnswer()
    {
        delete main_;
        main_ = nullptr;
        MainFormFixture f;
        f.Start();   // board mode on a scripted line that never answers
        QCOMPARE(TargetMode, BoardMode);
        const Flow f1 = At(0x1000, {0x12, 0x40, 0x00, 0x10});
        QVERIFY(!f1.ok);
        QVERIFY(!BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), qsizetype(1));
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        // Every other instruction needs nothing of the target.
        const Flow f2 = At(0x1000, {0x27, 0x10});
        QVERIFY(f2.ok);
    }
};

QTEST_MAIN(InstructionFlowTest)
#include "InstructionFlow_test.moc"
