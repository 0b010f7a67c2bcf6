// The debugger on the real windows, in the simulator and on the board emulator:
// both back-ends must leave the same registers and stack at every stop.
#include <QtTest>

#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/SettingsStore.h"
#include "hc11/asm/Assembler.h"
#include "engine/execution/Breakpoints.h"
#include "support/BoardProcess.h"
#include "support/CpuHarness.h"
#include "support/DebuggerFixture.h"
#include "support/DisAsmLooks.h"
#include "support/MainFormFixture.h"
#include "support/S19Image.h"
#include "engine/link/MonitorFrames.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <memory>

namespace {
const char* const Source =
    "        ORG   $2000\n"
    "START   LDAA  #$10\n"        // 2000
    "        BSR   SUB1\n"        // 2002
    "        LDX   #$3000\n"      // 2004
    "        JSR   SUB2\n"        // 2007
    "        CLRB\n"              // 200A
    "LOOP    INCB\n"              // 200B
    "        CMPB  #5\n"          // 200C
    "        BNE   LOOP\n"        // 200E
    "DONE    NOP\n"               // 2010
    "SPIN    INCA\n"              // 2011
    "        BRA   SPIN\n"        // 2012
    "SUB1    INCA\n"              // 2014
    "        PSHA\n"
    "        PULA\n"
    "        RTS\n"
    "SUB2    LDAB  #3\n"          // 2018
    "        ABA\n"
    "        RTS\n";

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

struct Registers {
    std::int32_t pc, ix, iy, sp;
    int a, b, ccr;
    bool operator==(const Registers&) const = default;
};

char* toString(const Registers& r)
{
    return qstrdup(qPrintable(QString::asprintf("PC %04X IX %04X IY %04X SP %04X A %02X B %02X CCR %02X", r.pc,
                                                r.ix, r.iy, r.sp, r.a, r.b, r.ccr)));
}

Registers HostRegisters()
{
    const CpuRegisterRecord& r = CpuRegisters;
    return {r.PC, r.IX, r.IY, r.SP, r.A, r.B, r.CCR};
}

// What the plain core does from START to END: the PC after every instruction,
// the registers and the cycles.
struct CoreRun {
    QList<std::int32_t> trace;
    Registers end;
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

struct Stop {
    QString where;
    Registers registers;
    // Read only while a routine runs: once it has returned, the board's Step Out leaves other dead bytes.
    QByteArray stack;
    bool operator==(const Stop&) const = default;
};

char* toString(const Stop& s)
{
    const std::unique_ptr<char[]> registers(toString(s.registers));
    return qstrdup(qPrintable(s.where + ": " + registers.get() + " stack " + s.stack.toHex()));
}

int RowOf(const frmDisAsm* w, std::int32_t address)
{
    for (int row = 1; row <= w->VisibleRows; ++row)
        if (w->PageRows[row - 1].RowAddress == address)
            return row;
    return 0;
}
}  // namespace

class DebuggerEndToEndTest : public QObject {
    Q_OBJECT
private slots:
    void bothBackEndsStopWithTheSameRegisters()
    {
        QList<Stop> simulator, board;
        {
            MainFormFixture f;
            SaveSetting("Settings", "SimEnabled", "True");
            RunScenario(f.Start(), f, simulator);
            if (QTest::currentTestFailed())
                return;
        }
        {
            BoardProcess emulator;
            QVERIFY(!emulator.DevicePath().isEmpty());
            MainFormFixture f;
            RunScenario(f.StartOn(emulator.DevicePath()), f, board);
            if (QTest::currentTestFailed())
                return;
        }
        QCOMPARE(board, simulator);
    }

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
        BoardProcess emulator;
        QVERIFY(!emulator.DevicePath().isEmpty());
        DebuggerFixture f(emulator.DevicePath());
        RunBitBranches(f, program, core);
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

    void Snap(QList<Stop>& stops, const QString& where, frmMain& form)
    {
        QByteArray stack;
        if (CpuRegisters.SP < 0x01FF) {
            std::int32_t address = CpuRegisters.SP + 1;
            std::vector<std::uint8_t> bytes;
            form.InBytes(address, bytes, 2);
            stack = QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
        }
        stops << Stop{where, HostRegisters(), stack};
    }

    void RunScenario(frmMain& form, MainFormFixture& f, QList<Stop>& stops)
    {
        form.showNormal();
        form.resize(1000, 900);
        const auto assembled = hc11::as11::AssembleSource(Source, "E2E");
        QVERIFY(assembled.errors.empty());
        std::vector<std::uint8_t> program;
        for (const auto& [address, byte] : asmtest::ReadS19(assembled.s19).bytes)
            program.push_back(byte);
        std::int32_t at = 0x2000;
        form.OutBytes(at, program, static_cast<std::int16_t>(program.size()));
        // The save area: A, B, IX, IY zero, SP $01FF, CCR with S, X and I set.
        CpuRegisterRecord start;
        start.SP = 0x01FF;
        start.CCR = 0xD0;
        const monitor::SaveAreaBytes saved = monitor::SaveAreaOf(start);
        at = SaveAreaAddress;
        form.OutBytes(at, std::vector<std::uint8_t>(saved.begin(), saved.end()), SaveAreaSize);
        at = 0x01FE;
        form.OutBytes(at, {0, 0}, 2);
        CpuRegisters.PC = 0x2000;
        QVERIFY(BoardConnected);

        frmDisAsm* w = frmDisAsm::Open();
        form.mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(w->parentWidget()));
        QCoreApplication::processEvents();
        QCOMPARE(CpuRegisters.SP, 0x01FF);   // the window opened at PC with the target's registers

        form.Menu("mnuRunStepInto")->trigger();   // LDAA #$10
        form.Menu("mnuRunStepInto")->trigger();   // BSR SUB1
        QCOMPARE(CpuRegisters.PC, 0x2014);
        QCOMPARE(CpuRegisters.SP, 0x01FD);
        Snap(stops, "into BSR", form);

        form.Menu("mnuRunStepInto")->trigger();   // INCA
        form.Menu("mnuRunStepOut")->trigger();
        QCOMPARE(CpuRegisters.PC, 0x2004);
        QCOMPARE(CpuRegisters.SP, 0x01FF);
        Snap(stops, "out of SUB1", form);

        form.Menu("mnuRunStepInto")->trigger();   // LDX
        form.Menu("mnuRunStepOver")->trigger();   // JSR SUB2
        QCOMPARE(CpuRegisters.PC, 0x200A);
        QCOMPARE(CpuRegisters.B, 3);
        Snap(stops, "over JSR", form);

        // A breakpoint behind the loop, which branches back four times.
        const int doneRow = RowOf(w, 0x2010);
        QVERIFY(doneRow != 0);
        w->Label_DblClick(static_cast<std::int16_t>(doneRow));
        QCOMPARE(BreakpointCount, std::int16_t(1));
        form.Menu("mnuRunPlay")->trigger();
        QCOMPARE(CpuRegisters.PC, 0x2010);
        QCOMPARE(CpuRegisters.B, 5);
        QCOMPARE(LookOf(w, doneRow), Look::CurrentBreakpoint);   // the page follows PC after a run
        Snap(stops, "play to breakpoint", form);

        // Animate off the breakpoint; Pause once A has counted up twice.
        SetDoEventsHook([&form] {
            if (CpuRegisters.A >= 0x16 && AnimateActive)
                form.Menu("mnuRunPause")->trigger();
            QCoreApplication::processEvents();
        });
        form.Menu("mnuRunAnimate")->trigger();
        SetDoEventsHook({});
        QCOMPARE(CpuRegisters.PC, 0x2012);
        QCOMPARE(CpuRegisters.A, 0x16);
        QCOMPARE(LookOf(w, RowOf(w, 0x2012)), Look::Current);
        Snap(stops, "animate paused", form);
        // ORVANE_SCREENSHOT names a folder for the simulator pass's picture (use a real display).
        const QString folder = qEnvironmentVariable("ORVANE_SCREENSHOT");
        if (!folder.isEmpty() && TargetMode == SimulatorMode) {
            w->Label_Click(static_cast<std::int16_t>(RowOf(w, 0x2011)));
            QVERIFY(form.grab().save(QDir(folder).filePath("disassembler-stepping.png")));
        }

        // Run to the cursor: a breakpoint on the current row for one Play.
        const int spinRow = RowOf(w, 0x2011);
        w->Label_Click(static_cast<std::int16_t>(spinRow));
        w->Label_DblClick(static_cast<std::int16_t>(doneRow));   // the old breakpoint goes
        QCOMPARE(LookOf(w, spinRow), Look::Current);
        form.Menu("mnuRunRunTo")->trigger();
        QCOMPARE(CpuRegisters.PC, 0x2011);
        QCOMPARE(BreakpointCount, std::int16_t(0));
        Snap(stops, "run to cursor", form);
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(DebuggerEndToEndTest)
#include "DebuggerEndToEnd_test.moc"
