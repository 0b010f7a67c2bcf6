// The core against the whole instruction table: every row's cycle count and
// length, every illegal byte sequence as a harmless no-op, and random
// programs that can neither hang a call nor run away with the bus.

#include "support/CpuHarness.h"

#include <random>

using namespace hc11;

namespace {

// Counts the accesses of each step; no instruction needs more than its five
// bytes of fetch and a nine-byte frame plus a vector.
struct CountingBus final : Bus {
    FlatMemory memory;
    int accesses = 0;
    std::uint8_t Read(std::uint16_t address) override { return ++accesses, memory.Read(address); }
    void Write(std::uint16_t address, std::uint8_t value) override { ++accesses, memory.Write(address, value); }
};

} // namespace

class CpuCoverageTest : public QObject {
    Q_OBJECT
private slots:
    void everyRowTakesItsTableCyclesAndLength()
    {
        int rows = 0;
        for (const Instruction& row : AllInstructions()) {
            CpuHarness h;
            // IDIV and FDIV divide without trouble; operand bytes of 0 end
            // every branch, taken or not, behind itself.
            h.cpu.regs = {0x01, 0x02, 0x0400, 0, 0x0100, CpuHarness::Origin, 0xD0};
            row.page ? h.Poke(CpuHarness::Origin, {row.page, row.opcode, 0, 0, 0})
                     : h.Poke(CpuHarness::Origin, {row.opcode, 0, 0, 0, 0});
            const QByteArray what = QByteArray(MnemonicName(row.mnemonic).data()) + " page "
                + QByteArray::number(row.page) + " opcode " + QByteArray::number(row.opcode, 16);
            QVERIFY2(h.cpu.Step() == row.cycles, what);
            QVERIFY2(h.cpu.cycles == row.cycles, what);
            const Mnemonic m = row.mnemonic;
            if (m != Mnemonic::JMP && m != Mnemonic::JSR && m != Mnemonic::RTS && m != Mnemonic::RTI && m != Mnemonic::SWI)
                QVERIFY2(h.cpu.regs.pc == CpuHarness::Origin + row.length, what);
            ++rows;
        }
        QCOMPARE(rows, 307);
    }

    void illegalSequencesAreNoOpsOfTheirDecodedLength()
    {
        int illegal = 0;
        for (int page : {0x00, 0x18, 0x1A, 0xCD}) {
            for (int opcode = 0; opcode < 256; ++opcode) {
                if ((page == 0 && IsPrefix(opcode)) || FindInstruction(page, opcode))
                    continue;
                ++illegal;
                CpuHarness h;
                page ? h.Poke(CpuHarness::Origin, {page, opcode, 0x55, 0x66, 0x77})
                     : h.Poke(CpuHarness::Origin, {opcode, 0x55, 0x66, 0x77});
                const FlatMemory before = h.memory;
                h.cpu.regs = {0x12, 0x34, 0x5678, 0x9ABC, 0x0100, CpuHarness::Origin, 0x0F};
                QCOMPARE(h.cpu.Step(), 0);
                const Registers& r = h.cpu.regs;
                QCOMPARE(int(r.pc), CpuHarness::Origin + (page ? 2 : 1));
                QVERIFY(r.D() == 0x1234 && r.ix == 0x5678 && r.iy == 0x9ABC && r.sp == 0x0100 && r.ccr == 0x0F);
                QVERIFY(h.memory.bytes == before.bytes);
            }
        }
        QCOMPARE(illegal, 21 + (256 - 64) + (256 - 7) + (256 - 4));
    }

    void randomProgramsStayBoundedInEveryStep()
    {
        std::mt19937 random(20240611);
        CountingBus bus;
        Cpu cpu(bus);
        for (int round = 0; round < 20; ++round) {
            for (auto& byte : bus.memory.bytes)
                byte = std::uint8_t(random());
            const auto word = [&] { return std::uint16_t(random()); };
            cpu.regs = {std::uint8_t(random()), std::uint8_t(random()), word(), word(), word(), word(), std::uint8_t(random())};
            cpu.SetXirq(round % 3 == 0);
            cpu.SetMaskableRequest(round % 2 ? IrqVector : 0);
            std::uint64_t sum = cpu.cycles;
            for (int step = 0; step < 20000; ++step) {
                if (cpu.State() != RunState::Running)
                    cpu.SetState(RunState::Running);
                bus.accesses = 0;
                const int spent = cpu.Step();
                QVERIFY(spent >= 0 && spent <= 41 && bus.accesses <= 5 + 9 + 2);
                sum += spent;
            }
            QCOMPARE(cpu.cycles, sum);
        }
    }
};

QTEST_APPLESS_MAIN(CpuCoverageTest)
#include "CpuCoverage_test.moc"
