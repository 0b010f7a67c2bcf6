#include "engine/code/Asm.h"
#include "engine/state/TargetState.h"
#include "engine/link/TargetMemoryAccess.h"

namespace {
struct Flow {
    bool ok;
    std::int32_t next;
    bool jump, call, ret;
};

// The target is TargetMemory; a reader that fails stands for a board that does not answer.
bool ReadMemory(std::int32_t address, std::span<std::uint8_t> out)
{
    ReadTargetMemory(address, out);
    return true;
}

// Places the instruction at PC and asks where the flow goes.
Flow At(std::int32_t pc, const QList<int>& bytes, bool followCalls = false, const TargetBytesReader& read = ReadMemory)
{
    ProgramBase = pc;
    ProgramBuffer.fill(0x01);
    // A window's copy of the bytes at PC from some other instruction: the flow must not use it.
    InstructionWindow.fill(0x00);
    for (int i = 0; i < bytes.size(); ++i)
        ProgramBuffer[i] = static_cast<std::uint8_t>(bytes[i]);
    CpuRegisters.PC = pc;
    Flow f{};
    std::int32_t address = pc;
    f.ok = NextAddress(address, followCalls, f.next, f.jump, f.call, f.ret, read);
    return f;
}
}  // namespace

class InstructionFlowTest : public QObject {
    Q_OBJECT

private slots:
    void init() { ResetTargetState(); }

    // The conditions themselves are the core's (CpuFlow); here each of the
    // four flags they read reaches them from CCR, alone and missing alone.
    void conditionsFollowTheFlags()
    {
        // Opcode, CCR (C 01, V 02, Z 04, N 08), taken.
        const std::tuple<int, int, bool> cases[] = {
            {0x25, 0x01, true}, {0x25, 0x0E, false}, {0x29, 0x02, true}, {0x29, 0x0D, false},
            {0x27, 0x04, true}, {0x27, 0x0B, false}, {0x2B, 0x08, true}, {0x2B, 0x07, false}};
        for (const auto& [opcode, ccr, taken] : cases) {
            CpuRegisters.CCR = std::uint8_t(ccr);
            SplitCCR();
            const Flow f = At(0x1000, {opcode, 0x10});
            const QByteArray where = QByteArray::number(opcode, 16) + " CCR " + QByteArray::number(ccr, 16);
            QVERIFY2(f.ok && f.jump == taken && !f.call && !f.ret, where);
            QVERIFY2(f.next == (taken ? 0x1012 : 0x1002), where);
        }
    }

    void callsJumpsAndReturns()
    {
        CpuRegisters.IX = CpuRegisters.IY = 0xFFFF;
        StackBuffer[1] = 0x12, StackBuffer[2] = 0x34;   // RTS takes its return address from the stack copy
        CpuRegisters.SP = 0x00F0;   // RTI: CCR, B, A, X, Y above SP, then PC at SP + 8
        TargetMemory[0x00F8] = 0xE1, TargetMemory[0x00F9] = 0x23;
        // PC, code, calls followed, next, then jump, call, return.
        using Row = std::tuple<std::int32_t, QList<int>, bool, std::int32_t, QList<bool>>;
        const Row rows[] = {{0x1000, {0x8D, 0x10}, false, 0x1002, {false, true, false}},         // BSR stepped over
                            {0x1000, {0x8D, 0x10}, true, 0x1012, {false, true, false}},          // BSR followed
                            {0x1000, {0xBD, 0x12, 0x34}, false, 0x1003, {false, true, false}},   // JSR $1234
                            {0x1000, {0x6E, 0xFF}, false, 0x00FE, {true, false, false}},         // JMP $FF,X wraps
                            {0x1000, {0x39}, false, 0x1234, {false, false, true}},               // RTS
                            {0x1000, {0x3B}, false, 0xE123, {false, false, false}},              // RTI
                            {0xFFFE, {0x20, 0xFE}, false, 0xFFFE, {true, false, false}},   // BRA to itself at the top
                            {0xFFFF, {0x01}, false, 0x0000, {false, false, false}},        // the next one wraps
                            {0x1000, {0x18, 0x12}, false, 0x1002, {false, false, false}}};  // a bad pair: two bytes
        for (const auto& [pc, bytes, follow, next, jumpCallReturn] : rows) {
            const Flow f = At(pc, bytes, follow);
            QVERIFY(f.ok && f.next == next && (QList<bool>{f.jump, f.call, f.ret}) == jumpCallReturn);
        }
    }

    void bitBranchesTestTargetMemory()
    {
        TargetMemory[0x0040] = 0x55;
        // Opcode, mask, taken: BRSET needs all mask bits set, BRCLR all clear; a mask of 0 always branches.
        const std::tuple<int, int, bool> cases[] = {
            {0x12, 0x14, true}, {0x12, 0x34, false}, {0x13, 0x02, true}, {0x13, 0x14, false}, {0x13, 0x00, true}};
        for (const auto& [opcode, mask, taken] : cases) {
            const Flow f = At(0x1000, {opcode, 0x40, mask, 0x10});
            QVERIFY(f.ok && f.jump == taken && f.next == (taken ? 0x1014 : 0x1004));
        }
        CpuRegisters.IY = 0x0030;
        Flow f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});   // BRCLR $10,Y $FF at $40
        QVERIFY(!f.jump && f.next == 0x1005);
        TargetMemory[0x0040] = 0x00;
        f = At(0x1000, {0x18, 0x1F, 0x10, 0xFF, 0xF0});
        QVERIFY(f.jump && f.next == 0x0FF5);
    }

    void aFailedReadOfTheTargetFailsTheAnalysis()
    {
        const auto unanswered = [](std::int32_t, std::span<std::uint8_t>) { return false; };
        QVERIFY(!At(0x1000, {0x12, 0x40, 0x00, 0x10}, false, unanswered).ok);   // BRSET reads its byte
        QVERIFY(!At(0x1000, {0x3B}, false, unanswered).ok);                     // RTI its return address
        QVERIFY(At(0x1000, {0x27, 0x10}, false, unanswered).ok);   // every other instruction needs nothing of the target
    }
};

QTEST_MAIN(InstructionFlowTest)
#include "InstructionFlow_test.moc"
