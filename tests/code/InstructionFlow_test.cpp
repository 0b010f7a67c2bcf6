#include <QtTest>

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
Flow At(std::int32_t pc, const QList<int>& bytes, bool followCalls = false)
{
    ProgramBase = pc;
    ProgramBuffer.fill(0x01);
    for (int i = 0; i < bytes.size(); ++i)
        ProgramBuffer[i] = InstructionWindow[i] = static_cast<std::uint8_t>(bytes[i]);
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
}  // namespace

class InstructionFlowTest : public QObject {
    Q_OBJECT
    std::unique_ptr<frmMain> main_;

private slots:
    void init()
    {
        ResetTargetState();
        TargetMode = SimulatorMode;   // bit branches read TargetMemory
        main_ = std::make_unique<frmMain>();
    }
    void cleanup() { main_.reset(); }

    void conditionsFollowTheFlags()
    {
        const CpuRegisterRecord& r = CpuRegisters;
        SetFlags(0xA5);   // S . H . . Z . C
        QVERIFY(r.FlagC && !r.FlagV && r.FlagZ && !r.FlagN && !r.FlagI && r.FlagH && !r.FlagX && r.FlagS);
        SetFlags(0x5A);
        QVERIFY(!r.FlagC && r.FlagV && !r.FlagZ && r.FlagN && r.FlagI && !r.FlagH && r.FlagX && !r.FlagS);

        // Opcode, CCR (C 01, V 02, Z 04, N 08), taken.
        const std::tuple<int, int, bool> cases[] = {
            {0x20, 0x00, true},  {0x21, 0x0F, false}, {0x22, 0x00, true},  {0x22, 0x01, false},
            {0x23, 0x04, true},  {0x24, 0x01, false}, {0x25, 0x01, true},  {0x26, 0x04, false},
            {0x27, 0x04, true},  {0x28, 0x02, false}, {0x29, 0x02, true},  {0x2A, 0x08, false},
            {0x2B, 0x08, true},  {0x2C, 0x08, false}, {0x2C, 0x0A, true},  {0x2D, 0x02, true},
            {0x2E, 0x04, false}, {0x2E, 0x00, true},  {0x2F, 0x08, true},  {0x2F, 0x00, false}};
        for (const auto& [opcode, ccr, taken] : cases) {
            SetFlags(std::uint8_t(ccr));
            const Flow f = At(0x1000, {opcode, 0x10});
            const QByteArray where = QByteArray::number(opcode, 16) + " CCR " + QByteArray::number(ccr, 16);
            QVERIFY2(f.ok && f.jump == taken && !f.call && !f.ret, where);
            QVERIFY2(f.next == (taken ? 0x1012 : 0x1002), where);
        }
    }

    void callsJumpsAndReturns()
    {
        Flow f = At(0x1000, {0x8D, 0x10});   // BSR stepped over, then followed
        QVERIFY(f.next == 0x1002 && f.call && !f.jump);
        f = At(0x1000, {0x8D, 0x10}, true);
        QVERIFY(f.next == 0x1012 && f.call && !f.jump);
        QCOMPARE(At(0x1000, {0x9D, 0x12}, true).next, 0x0012);   // JSR $12
        f = At(0x1000, {0xBD, 0x12, 0x34});                        // JSR $1234 stepped over
        QVERIFY(f.next == 0x1003 && f.call);

        CpuRegisters.IX = 0xFFFF;
        f = At(0x1000, {0x6E, 0xFF});   // JMP $FF,X wraps
        QVERIFY(f.next == 0x00FE && f.jump && !f.call);
        CpuRegisters.IY = 0xFFFF;
        f = At(0x1000, {0x18, 0xAD, 0xFF}, true);   // JSR $FF,Y
        QVERIFY(f.next == 0x00FE && f.call);

        StackBuffer[1] = 0x12;   // RTS: the return address from the stack copy
        StackBuffer[2] = 0x34;
        f = At(0x1000, {0x39});
        QVERIFY(f.next == 0x1234 && f.ret && !f.jump);

        // RTI: the frame above SP is CCR, B, A, X, Y, then PC at SP + 8.
        CpuRegisters.SP = 0x00F0;
        TargetMemory[0x00F8] = 0xE1;
        TargetMemory[0x00F9] = 0x23;
        f = At(0x1000, {0x3B});
        QVERIFY(f.ok && f.next == 0xE123 && !f.ret && !f.jump);

        f = At(0xFFFE, {0x20, 0xFE});   // a branch to itself at the top of memory
        QVERIFY(f.next == 0xFFFE && f.jump);
        QCOMPARE(At(0xFFFF, {0x01}).next, 0x0000);         // the next instruction wraps
        QCOMPARE(At(0x1000, {0x18, 0x12}).next, 0x1002);   // a bad pair is two bytes long
    }

    void bitBranchesTestTargetMemory()
    {
        TargetMemory[0x0040] = 0x55;
        // Opcode, mask, taken: BRSET needs all mask bits set, BRCLR all clear; a mask of 0 always branches.
        const std::tuple<int, int, bool> cases[] = {
            {0x12, 0x14, true}, {0x12, 0x34, false}, {0x13, 0x02, true}, {0x13, 0x14, false}, {0x13, 0x00, true}};
        for (const auto& [opcode, mask, taken] : cases) {
            const Flow f = At(0x1000, {opcode, 0x40, mask, 0x10});
            QVERIFY(f.ok);
            QCOMPARE(f.jump, taken);
            QCOMPARE(f.next, taken ? 0x1014 : 0x1004);
        }
        CpuRegisters.IY = 0x0030;
        Flow f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});   // BRCLR $10,Y $FF at $40
        QVERIFY(!f.jump && f.next == 0x1005);
        TargetMemory[0x0040] = 0x00;
        f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});
        QVERIFY(f.jump && f.next == 0x0FF5);
    }

    void bitBranchFailsWhenTheBoardDoesNotAnswer()
    {
        main_.reset();
        MainFormFixture f;
        f.Start();   // board mode on a scripted line that never answers
        QCOMPARE(TargetMode, BoardMode);
        QVERIFY(!At(0x1000, {0x12, 0x40, 0x00, 0x10}).ok);
        QVERIFY(!BoardConnected);
        QCOMPARE(f.boxes.boxes.size(), qsizetype(1));
        QCOMPARE(f.boxes.boxes[0].text, QString("No Response from M68HC11 Board !"));
        QVERIFY(At(0x1000, {0x27, 0x10}).ok);   // every other instruction needs nothing of the target
    }
};

QTEST_MAIN(InstructionFlowTest)
#include "InstructionFlow_test.moc"
