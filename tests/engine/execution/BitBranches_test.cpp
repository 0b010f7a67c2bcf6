// BRSET and BRCLR on the debugger alone, in the simulator and on the board
// emulator with its built-in monitor and with the monitor firmware: Step
// Into, Step Over and Play go where the plain core goes and leave its
// registers and cycle count.
#include <QtTest>

#include "engine/execution/Breakpoints.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "support/BoardProcess.h"
#include "support/CpuHarness.h"
#include "support/DebuggerFixture.h"
#include "support/RegisterSnapshot.h"
#include "support/S19Image.h"

#include <map>

namespace {
// BRSET and BRCLR in the direct, X and Y modes, each taken and not taken. A
// taken branch skips an INCB; a branch that should not be taken leads to FAIL.
const char* const BitBranchSource =
    "        ORG   $2000\n"
    "START   LDX   #$0040\n"
    "        LDY   #$0050\n"
    "        LDAA  #$81\n"
    "        STAA  $40\n"
    "        STAA  $52\n"
    "        CLRB\n"
    "        BRSET $40 $81 D1\n"
    "        INCB\n"
    "D1      BRSET $40 $02 FAIL\n"
    "        BRCLR $40 $02 D3\n"
    "        INCB\n"
    "D3      BRCLR $40 $01 FAIL\n"
    "        BRSET 0,X $80 X1\n"
    "        INCB\n"
    "X1      BRSET 0,X $40 FAIL\n"
    "        BRCLR 0,X $7E X3\n"
    "        INCB\n"
    "X3      BRCLR 0,X $80 FAIL\n"
    "        BRSET 2,Y $01 Y1\n"
    "        INCB\n"
    "Y1      BRSET 2,Y $04 FAIL\n"
    "        BRCLR 2,Y $04 Y3\n"
    "        INCB\n"
    "Y3      BRCLR 2,Y $80 FAIL\n"
    "        ADDB  #$10\n"
    "        BRA   END\n"
    "FAIL    LDAB  #$EE\n"
    "END     NOP\n";

// What the plain core does from START to END: the PC after every instruction,
// the registers and the cycles.
struct CoreRun {
    QList<std::int32_t> trace;
    RegisterSnapshot end;
    int cycles = 0;
};

CoreRun RunOnCore(const std::map<int, std::uint8_t>& program, std::int32_t start, std::int32_t end)
{
    CpuHarness core;
    for (const auto& [address, byte] : program)
        core.memory.bytes[address] = byte;
    core.cpu.regs = {};
    core.cpu.regs.sp = 0x01FF;
    core.cpu.regs.ccr = 0xD0;
    core.cpu.regs.pc = static_cast<std::uint16_t>(start);
    CoreRun run;
    while (core.cpu.regs.pc != end && run.trace.size() < 100) {
        run.cycles += core.cpu.Step();
        run.trace << core.cpu.regs.pc;
    }
    const hc11::Registers& r = core.cpu.regs;
    run.end = {r.pc, r.ix, r.iy, r.sp, r.a, r.b, r.ccr};
    return run;
}
}  // namespace

class BitBranchesTest : public QObject {
    Q_OBJECT
private slots:
    void bitBranchesGoWhereTheCoreGoesOnBothBackEnds()
    {
        const auto assembled = hc11::as11::AssembleSource(BitBranchSource, "BITS");
        QVERIFY(assembled.errors.empty());
        const std::map<int, std::uint8_t> program = asmtest::ReadS19(assembled.s19).bytes;
        const std::int32_t start = program.begin()->first;
        const std::int32_t end = program.rbegin()->first;   // the NOP
        const CoreRun core = RunOnCore(program, start, end);
        QCOMPARE(core.end.b, 0x10);   // the program itself checks the core: no INCB, no FAIL
        {
            DebuggerFixture f(true);
            RunBitBranches(f, program, core);
            if (QTest::currentTestFailed())
                return;
        }
        for (const bool firmware : {false, true}) {
            BoardProcess emulator(firmware ? BoardProcess::Firmware() : QStringList{});
            QVERIFY(!emulator.DevicePath().isEmpty());
            DebuggerFixture f(emulator.DevicePath());
            if (firmware)
                BoardProcess::SettleAfterOpen();
            RunBitBranches(f, program, core);
            if (QTest::currentTestFailed())
                return;
        }
    }

private:
    // The flow analysis and the steps on the debugger alone, without windows.
    void RunBitBranches(DebuggerFixture& f, const std::map<int, std::uint8_t>& program, const CoreRun& core)
    {
        std::vector<std::uint8_t> bytes;
        for (const auto& [address, byte] : program)
            bytes.push_back(byte);
        const std::int32_t start = program.begin()->first;
        std::int32_t at = start;
        f.link.OutBytes(at, bytes, static_cast<std::int16_t>(bytes.size()));
        QVERIFY(BoardConnected);
        const auto restart = [start] {
            CpuRegisters = CpuRegisterRecord{};
            CpuRegisters.SP = 0x01FF;
            CpuRegisters.CCR = 0xD0;
            SplitCCR();
            CpuRegisters.PC = start;
            ClockCount = 0;
        };
        for (const char* command : {"Step Into", "Step Over"}) {
            restart();
            QList<std::int32_t> trace;
            while (CpuRegisters.PC != core.end.pc && trace.size() < core.trace.size() + 5) {
                if (QByteArray(command) == "Step Into")
                    f.debugger.StepInto();
                else
                    f.debugger.StepOver();
                trace << CpuRegisters.PC;
            }
            QVERIFY2(trace == core.trace, command);
            QCOMPARE(HostRegisters(), core.end);
            if (QByteArray(command) == "Step Into")
                QCOMPARE(ClockCount, core.cycles);
        }
        restart();
        QVERIFY(AddBreakpoint(core.end.pc));
        f.debugger.Play();
        QCOMPARE(HostRegisters(), core.end);
        QCOMPARE(ClockCount, core.cycles);
        QVERIFY(f.reports.failures.isEmpty());
    }
};

QTEST_MAIN(BitBranchesTest)
#include "BitBranches_test.moc"
