// The target operations in simulator mode, where TargetMemory is the target,
// and the simulator component's memory events with the input-output unit.

#include "engine/state/TargetState.h"
#include "support/DebuggerFixture.h"
#include "support/RecordedIoUnit.h"

class SimulatorOperationsTest : public QObject {
    Q_OBJECT
private slots:
    void readsAndWritesWrapPastTheTopOfMemory()
    {
        DebuggerFixture f(true);
        TargetLink& link = f.link;
        f.line.TakeWritten();
        for (int i = 0; i < 65536; ++i)
            TargetMemory[i] = std::uint8_t(i * 7 + (i >> 8));
        const auto at = [](int address) { return TargetMemory[address & 0xFFFF]; };
        ProgramBase = 0xFF80;
        link.InProgram();
        MemoryPageAddress = 0xFE10;
        link.InMemory();
        CpuRegisters.SP = 0xFFFC;
        link.InStack();
        std::int32_t address = 0xFFFF;
        std::vector<std::uint8_t> bytes;
        link.InBytes(address, bytes, 3);
        for (int i = 0; i < 1024; ++i)
            QVERIFY(MemoryPage[i] == at(0xFE10 + i) && (i >= 256 || ProgramBuffer[i] == at(0xFF80 + i)) &&
                    (i >= 9 || StackBuffer[i] == at(0xFFFC + i)));
        QCOMPARE(bytes, (std::vector<std::uint8_t>{at(0xFFFF), at(0), at(1)}));
        QVERIFY(BoardConnected && f.reports.state == LinkState::Simulator);

        TargetMemory.fill(0);
        address = 0xFFFE;
        link.OutBytes(address, {1, 2, 3, 4}, 3);
        // Count, not the array's size.
        QCOMPARE(tuple(TargetMemory[0xFFFE], TargetMemory[0xFFFF], TargetMemory[0x0000], TargetMemory[0x0001]),
                 tuple(1, 2, 3, 0));
        // A count the frame cannot carry, or more than the data holds, writes nothing; nothing ever goes to the port.
        address = 0x2000;
        link.OutBytes(address, {9, 9}, 3);
        link.OutBytes(address, {9, 9}, 0);
        QCOMPARE(tuple(TargetMemory[0x2000], f.line.TakeWritten()), tuple(0, QByteArray()));
    }

    void hostByteWritesAndSimulatedProgramsDriveTheUnit()
    {
        DebuggerFixture f(true);
        TargetLink& link = f.link;
        RecordedIoUnit spy;
        link.IoUnitWindow = &spy;
        for (std::int32_t a = 0x5FFF; a <= 0x6004; ++a) {
            std::int32_t address = a;
            link.OutByte(address, static_cast<std::uint8_t>(a & 0xFF));
        }
        std::int32_t address = 0x6000;
        link.OutBytes(address, {1, 0x77}, 2);   // OutBytes has no such hook
        QCOMPARE(spy.calls, (QStringList{"InFresh 0", "InData 1", "OutFresh 2", "OutData 3"}));
        spy.calls.clear();

        std::int16_t a = 0x44, b = 0, ccr = 0;
        std::int32_t ix = 0, iy = 0, sp = 0x1FF;
        const auto run = [&](int opcode, int low) { link.Velmar1.ExecuteInstruction(a, b, ix, iy, sp, ccr, opcode, 0x60, low, 1, 1); };
        run(0xF6, 0x01);   // LDAB $6001 and STAA $6003 with the unit's window closed
        run(0xB7, 0x03);
        QCOMPARE(tuple(b, TargetMemory[0x6000], TargetMemory[0x6002], TargetMemory[0x6003]), tuple(0x77, 1, 2, 0x44));
        QVERIFY(spy.calls.isEmpty());
        f.reports.ioUnitShown = true;
        run(0xB6, 0x00);   // LDAA $6000: no effect
        QVERIFY(spy.calls.isEmpty() && TargetMemory[0x6000] == 1);
        run(0xB6, 0x01);   // LDAA $6001 clears the input's fresh flag
        QCOMPARE(tuple(a, TargetMemory[0x6000]), tuple(0x77, 0));
        TargetMemory[0x6002] = 0;
        run(0xB7, 0x03);   // STAA $6003 sets the output's
        QCOMPARE(tuple(TargetMemory[0x6003], TargetMemory[0x6002]), tuple(0x77, 1));
        QCOMPARE(spy.calls, (QStringList{"InFresh 0", "OutData 119", "OutFresh 1"}));
    }
};

QTEST_MAIN(SimulatorOperationsTest)
#include "SimulatorOperations_test.moc"
