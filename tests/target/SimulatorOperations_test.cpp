// The target operations in simulator mode, where TargetMemory is the target,
// and the simulator component's memory events with the input-output unit.
#include <QtTest>

#include "core/TargetState.h"
#include "platform/SettingsStore.h"
#include "support/MainFormFixture.h"

namespace {
// Records what the input-output unit's window is told, in order.
struct IoUnitSpy : IoUnitHooks {
    QStringList calls;
    void setInFresh(std::uint8_t d) override { calls << QString("InFresh %1").arg(d); }
    void setInDataRegister(std::uint8_t d) override { calls << QString("InData %1").arg(d); }
    void setOutFresh(std::uint8_t d) override { calls << QString("OutFresh %1").arg(d); }
    void setOutDataRegister(std::uint8_t d) override { calls << QString("OutData %1").arg(d); }
};

frmMain& StartSimulator(MainFormFixture& f)
{
    SaveSetting("Settings", "SimEnabled", "True");
    frmMain& form = f.Start();
    f.line.TakeWritten();
    return form;
}

void FillPattern()
{
    for (int i = 0; i < 65536; ++i)
        TargetMemory[i] = static_cast<std::uint8_t>(i * 7 + (i >> 8));
}
} // namespace

class SimulatorOperationsTest : public QObject {
    Q_OBJECT
private slots:
    // ---- Reads wrap at 65,536 --------------------------------------------------
    void readsWrapPastTheTopOfMemory()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        FillPattern();

        ProgramBase = 0xFF80;
        form.InProgram();
        QCOMPARE(ProgramBuffer[0], TargetMemory[0xFF80]);
        QCOMPARE(ProgramBuffer[127], TargetMemory[0xFFFF]);
        QCOMPARE(ProgramBuffer[128], TargetMemory[0x0000]);
        QCOMPARE(ProgramBuffer[255], TargetMemory[0x007F]);

        MemoryPageAddress = 0xFE10;
        form.InMemory();
        QCOMPARE(MemoryPage[0], TargetMemory[0xFE10]);
        QCOMPARE(MemoryPage[0x1EF], TargetMemory[0xFFFF]);
        QCOMPARE(MemoryPage[0x1F0], TargetMemory[0x0000]);
        QCOMPARE(MemoryPage[1023], TargetMemory[0x020F]);

        // The stack's nine bytes go on at $0000 like every other read.
        CpuRegisters.SP = 0xFFFC;
        form.InStack();
        QCOMPARE(StackBuffer[0], TargetMemory[0xFFFC]);
        QCOMPARE(StackBuffer[3], TargetMemory[0xFFFF]);
        QCOMPARE(StackBuffer[4], TargetMemory[0x0000]);
        QCOMPARE(StackBuffer[8], TargetMemory[0x0004]);

        std::int32_t address = 0xFFFF;
        std::vector<std::uint8_t> bytes;
        form.InBytes(address, bytes, 3);
        QCOMPARE(bytes, (std::vector<std::uint8_t>{TargetMemory[0xFFFF], TargetMemory[0], TargetMemory[1]}));
        QVERIFY(BoardConnected);
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));
        QVERIFY(f.line.TakeWritten().isEmpty());   // nothing ever goes to the port
    }

    void writesWrapAndTouchNothingElse()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        std::int32_t address = 0xFFFE;
        form.OutBytes(address, {1, 2, 3, 4}, 3);
        QCOMPARE(TargetMemory[0xFFFE], std::uint8_t(1));
        QCOMPARE(TargetMemory[0xFFFF], std::uint8_t(2));
        QCOMPARE(TargetMemory[0x0000], std::uint8_t(3));
        QCOMPARE(TargetMemory[0x0001], std::uint8_t(0));   // Count, not the array's size
        // A count the frame cannot carry, or more than the data holds, writes nothing.
        address = 0x2000;
        form.OutBytes(address, {9, 9}, 3);
        form.OutBytes(address, {9, 9}, 0);
        QCOMPARE(TargetMemory[0x2000], std::uint8_t(0));
    }

    // ---- The save area is the CPU ---------------------------------------------
    void writingTheSaveAreaMovesTheRegisters()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        CpuRegisters.PC = 0xE000;
        std::int32_t address = 6;
        form.OutByte(address, 0x01);
        address = 7;
        form.OutByte(address, 0xE0);
        address = 0;
        form.OutBytes(address, {0xAA, 0xBB, 0x12, 0x34, 0x56, 0x78}, 6);
        address = 8;
        form.OutByte(address, 0x05);   // C and Z
        form.InCPU();
        QCOMPARE(CpuRegisters.SP, 0x01E0);
        QCOMPARE(CpuRegisters.A, std::uint8_t(0xAA));
        QCOMPARE(CpuRegisters.B, std::uint8_t(0xBB));
        QCOMPARE(CpuRegisters.IX, 0x1234);
        QCOMPARE(CpuRegisters.IY, 0x5678);
        QCOMPARE(CpuRegisters.CCR, std::uint8_t(0x05));
        QVERIFY(CpuRegisters.FlagC && CpuRegisters.FlagZ);
        QVERIFY(!CpuRegisters.FlagV && !CpuRegisters.FlagN && !CpuRegisters.FlagI);
        QCOMPARE(CpuRegisters.PC, 0xE000);   // the host's alone
    }

    // ---- Flash -----------------------------------------------------------------
    void eraseFillsTheFlashAreaOnly()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        TargetMemory[0xDFFF] = 0x11;
        TargetMemory[0xE000] = 0x22;
        TargetMemory[0xFFFE] = 0xE0;
        TargetMemory[0xFFFF] = 0x00;
        BoardConnected = false;   // left as it is by a simulated erase
        form.FlashErase();
        QCOMPARE(TargetMemory[0xDFFF], std::uint8_t(0x11));
        QCOMPARE(TargetMemory[0xE000], std::uint8_t(0xFF));
        QCOMPARE(TargetMemory[0xFFFF], std::uint8_t(0xFF));
        QVERIFY(!BoardConnected);
        // A download without a vector leaves PC at $FFFF.
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0xFFFF);
    }

    void programmingWritesFlashAndRamAlike()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        form.FlashErase();
        std::int32_t address = 0xFFFE;
        form.Programm(address, {0xE1, 0x23}, 2);
        address = 0x0100;
        form.Programm(address, {0x86, 0x42, 0x00}, 2);
        QCOMPARE(TargetMemory[0x0100], std::uint8_t(0x86));
        QCOMPARE(TargetMemory[0x0101], std::uint8_t(0x42));
        QCOMPARE(TargetMemory[0x0102], std::uint8_t(0x00));
        form.InResetVector(CpuRegisters.PC);
        QCOMPARE(CpuRegisters.PC, 0xE123);
    }

    // ---- The input-output unit ------------------------------------------------
    void hostWritesToTheUnitReachItsWindow()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        IoUnitSpy spy;
        form.IoUnitWindow = &spy;
        for (std::int32_t a = 0x5FFF; a <= 0x6004; ++a) {
            std::int32_t address = a;
            form.OutByte(address, static_cast<std::uint8_t>(a & 0xFF));
        }
        QCOMPARE(spy.calls, (QStringList{"InFresh 0", "InData 1", "OutFresh 2", "OutData 3"}));
        QCOMPARE(TargetMemory[0x6003], std::uint8_t(3));
        // OutBytes has no such hook.
        std::int32_t address = 0x6000;
        form.OutBytes(address, {1, 1}, 2);
        QCOMPARE(spy.calls.size(), 4);
    }

    void hostWriteReachesTheUnitBeforeTheBoardIsFound()
    {
        MainFormFixture f;
        frmMain& form = f.Start();   // board mode
        IoUnitSpy spy;
        form.IoUnitWindow = &spy;
        f.line.SetCTS(false);
        f.line.TakeWritten();
        std::int32_t address = 0x6001;
        form.OutByte(address, 0x5A);
        QCOMPARE(spy.calls, QStringList{"InData 90"});
        QCOMPARE(f.boxes.boxes.size(), 1);
        QCOMPARE(f.boxes.boxes[0].text, QString("M68HC11 Board Not Connected !"));
        QVERIFY(f.line.TakeWritten().isEmpty());
    }

    void simulatedProgramDrivesTheUnitWhileItsWindowIsOpen()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        IoUnitSpy spy;
        form.IoUnitWindow = &spy;
        form.Menu("mnuViewIOunit")->setChecked(true);
        TargetMemory[0x6000] = 1;
        TargetMemory[0x6001] = 0x77;
        std::int16_t a = 0, b = 0, ccr = 0;
        std::int32_t ix = 0, iy = 0, sp = 0x1FF;
        form.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, 0xB6, 0x60, 0x00, 1, 1);   // LDAA $6000: no effect
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(1));
        QVERIFY(spy.calls.isEmpty());
        form.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, 0xB6, 0x60, 0x01, 1, 1);   // LDAA $6001
        QCOMPARE(a, std::int16_t(0x77));
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(0));
        form.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, 0xB7, 0x60, 0x03, 1, 1);   // STAA $6003
        QCOMPARE(TargetMemory[0x6003], std::uint8_t(0x77));
        QCOMPARE(TargetMemory[0x6002], std::uint8_t(1));
        QCOMPARE(spy.calls, (QStringList{"InFresh 0", "OutData 119", "OutFresh 1"}));
    }

    void unitCellsArePlainMemoryWhileItsWindowIsClosed()
    {
        MainFormFixture f;
        frmMain& form = StartSimulator(f);
        TargetMemory[0x6000] = 1;
        TargetMemory[0x6001] = 0x33;
        std::int16_t a = 0x44, b = 0, ccr = 0;
        std::int32_t ix = 0, iy = 0, sp = 0x1FF;
        form.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, 0xF6, 0x60, 0x01, 1, 1);   // LDAB $6001
        form.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, 0xB7, 0x60, 0x03, 1, 1);   // STAA $6003
        QCOMPARE(b, std::int16_t(0x33));
        QCOMPARE(TargetMemory[0x6000], std::uint8_t(1));
        QCOMPARE(TargetMemory[0x6002], std::uint8_t(0));
        QCOMPARE(TargetMemory[0x6003], std::uint8_t(0x44));
    }
};

QTEST_MAIN(SimulatorOperationsTest)
#include "SimulatorOperations_test.moc"
