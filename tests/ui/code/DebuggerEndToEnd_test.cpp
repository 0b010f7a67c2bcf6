// The debugger on the real windows, in the simulator and on the board emulator
// with its built-in monitor and with the monitor firmware: every back-end
// must leave the same registers and stack at every stop.

#include "ui/code/frmDisAsm.h"
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "hc11/asm/Assembler.h"
#include "support/BoardProcess.h"
#include "support/ui/DisAsmLooks.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ShownWindow.h"
#include "support/RegisterSnapshot.h"
#include "support/S19Image.h"
#include "engine/link/MonitorFrames.h"

#include <memory>

namespace {
const char* const Source =
    "        ORG   $2000\n"
    "START   LDAA  #$10\n        BSR   SUB1\n"            // 2000, 2002
    "        LDX   #$3000\n        JSR   SUB2\n"          // 2004, 2007
    "        CLRB\nLOOP    INCB\n        CMPB  #5\n"     // 200A, 200B, 200C
    "        BNE   LOOP\nDONE    NOP\n"                   // 200E, 2010
    "SPIN    INCA\n        BRA   SPIN\n"                  // 2011, 2012
    "SUB1    INCA\n        PSHA\n        PULA\n        RTS\n"   // 2014
    "SUB2    LDAB  #3\n        ABA\n        RTS\n"       // 2018
    // BRSET and BRCLR direct, by X and by Y, each taken and not: a branch
    // that goes wrong runs an INCB or goes back to BITS.
    "BITS    LDAA  #$81\n"        // 201C
    "        STAA  $40\n"
    "        LDX   #$0040\n"
    "        LDY   #$0030\n"
    "        BRSET $40 $81 B1\n"
    "        INCB\n"
    "B1      BRCLR 0,X $01 BITS\n"
    "        BRCLR $10,Y $7E B2\n"
    "        INCB\n"
    "B2      BRSET 0,X $02 BITS\n"
    "BEND    NOP\n";                // 203A

struct Stop {
    QString where;
    RegisterSnapshot registers;
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
            RunScenario(StartInSimulator(f), f, simulator);
            if (QTest::currentTestFailed())
                return;
        }
        for (const bool firmware : {false, true}) {
            board.clear();
            BoardProcess emulator(firmware ? BoardProcess::Firmware() : QStringList{});
            QVERIFY(!emulator.DevicePath().isEmpty());
            MainFormFixture f;
            RunScenario(f.StartOn(emulator.DevicePath()), f, board);
            if (QTest::currentTestFailed())
                return;
            QCOMPARE(board, simulator);
        }
    }

private:
    void Snap(QList<Stop>& stops, const QString& where, frmMain& form)
    {
        QByteArray stack;
        if (CpuRegisters.SP < 0x01FF) {
            std::int32_t address = CpuRegisters.SP + 1;
            std::vector<std::uint8_t> bytes;
            form.Link().InBytes(address, bytes, 2);
            stack = QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
        }
        stops << Stop{where, HostRegisters(), stack};
    }

    void RunScenario(frmMain& form, MainFormFixture& f, QList<Stop>& stops)
    {
        QVERIFY(ShowAt(form, {1000, 900}));
        const auto assembled = hc11::as11::AssembleSource(Source, "E2E");
        QVERIFY(assembled.errors.empty());
        std::vector<std::uint8_t> program;
        for (const auto& [address, byte] : asmtest::ReadS19(assembled.s19).bytes)
            program.push_back(byte);
        std::int32_t at = 0x2000;
        form.Link().OutBytes(at, program, static_cast<std::int16_t>(program.size()));
        // The save area: A, B, IX, IY zero, SP $01FF, CCR with S, X and I set.
        const monitor::SaveAreaBytes saved = monitor::SaveAreaOf({.SP = 0x01FF, .CCR = 0xD0});
        at = SaveAreaAddress;
        form.Link().OutBytes(at, std::vector<std::uint8_t>(saved.begin(), saved.end()), SaveAreaSize);
        at = 0x01FE;
        form.Link().OutBytes(at, {0, 0}, 2);
        CpuRegisters.PC = 0x2000;
        QVERIFY(BoardConnected);

        frmDisAsm* w = frmDisAsm::Open();
        Activate(form, w);
        QCOMPARE(CpuRegisters.SP, 0x01FF);   // the window opened at PC with the target's registers

        // Into BSR SUB1 (after LDAA), out of it (after INCA), over JSR SUB2 (after LDX).
        const struct { const char* where; const char* second; int pc, sp, b; } steps[] = {
            {"into BSR", "mnuRunStepInto", 0x2014, 0x01FD, 0},
            {"out of SUB1", "mnuRunStepOut", 0x2004, 0x01FF, 0},
            {"over JSR", "mnuRunStepOver", 0x200A, 0x01FF, 3},
        };
        for (const auto& step : steps) {
            form.Menu("mnuRunStepInto")->trigger();
            form.Menu(step.second)->trigger();
            QVERIFY2(CpuRegisters.PC == step.pc && CpuRegisters.SP == step.sp && CpuRegisters.B == step.b, step.where);
            Snap(stops, step.where, form);
        }

        // A breakpoint behind the loop, which branches back four times.
        const int doneRow = RowOf(w, 0x2010);
        QVERIFY(doneRow != 0);
        w->Label_DblClick(static_cast<std::int16_t>(doneRow));
        QCOMPARE(BreakpointCount, std::int16_t(1));
        form.Menu("mnuRunPlay")->trigger();
        QCOMPARE(tuple(CpuRegisters.PC, CpuRegisters.B), tuple(0x2010, 5));
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
        QVERIFY(CpuRegisters.PC == 0x2012 && CpuRegisters.A == 0x16 && LookOf(w, RowOf(w, 0x2012)) == Look::Current);
        Snap(stops, "animate paused", form);

        // Run to the cursor: a breakpoint on the current row for one Play.
        const int spinRow = RowOf(w, 0x2011);
        w->Label_Click(static_cast<std::int16_t>(spinRow));
        if (TargetMode == SimulatorMode)   // the simulator pass's picture (use a real display)
            SaveScreenshot(&form, "disassembler-stepping.png");
        w->Label_DblClick(static_cast<std::int16_t>(doneRow));   // the old breakpoint goes
        QCOMPARE(LookOf(w, spinRow), Look::Current);
        form.Menu("mnuRunRunTo")->trigger();
        QCOMPARE(tuple(CpuRegisters.PC, BreakpointCount), tuple(0x2011, 0));
        Snap(stops, "run to cursor", form);

        // The bit branches by Step Into, Step Over and Play: the host works out where each goes.
        const int b = CpuRegisters.B;
        for (const char* command : {"mnuRunStepInto", "mnuRunStepOver", "mnuRunPlay"}) {
            CpuRegisters.PC = 0x201C;
            BreakpointTable[0] = 0x203A, BreakpointCount = 1;
            int steps = 0;
            while (CpuRegisters.PC != 0x203A && steps++ < 12)
                form.Menu(command)->trigger();
            QVERIFY2(CpuRegisters.B == b && steps == (command == QString("mnuRunPlay") ? 1 : 8), command);
            Snap(stops, command, form);
        }
        QVERIFY(f.boxes.boxes.isEmpty());
    }
};

QTEST_MAIN(DebuggerEndToEndTest)
#include "DebuggerEndToEnd_test.moc"
