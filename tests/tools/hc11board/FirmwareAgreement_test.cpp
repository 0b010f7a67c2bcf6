// The monitor firmware steps the CPU as the built-in monitor does: thousands
// of straight-line instructions from the instruction table, with random
// registers and operands, give the same "S" replies and leave the same
// memory. Their operands keep to RAM away from the monitors' own memory
// ($0000-$000D, $BA00-$BFFF). The nine bytes below the stack pointer are the
// firmware's way in and out; a PUL may read them later, so the built-in
// board gets the firmware's after each step. The CCR's X bit stays set: once
// cleared, only a reset sets it on an HC11, which the built-in monitor does
// not model.
#include "BoardUnderTest.h"
#include "hc11/InstructionSet.h"

#include <random>

using namespace boardtest;
using hc11::Mnemonic;
using hc11::Mode;

namespace {

constexpr std::uint16_t DataStart = 0x2000, DataSize = 0x1000;   // extended and indexed operands
constexpr std::uint8_t DirectStart = 0x20;                        // direct operands: $20-$FF
constexpr std::uint16_t StackPointer = 0x0300;

// What the host hands to the code buffer (it does jumps, calls, returns and
// branches itself), less what sets the stack pointer anywhere or the X bit.
bool Steppable(const hc11::Instruction& ins)
{
    using enum Mnemonic;
    const Mnemonic m = ins.mnemonic;
    return ins.mode != Mode::Relative && ins.mode != Mode::BitBranchDirect && ins.mode != Mode::BitBranchIndexedX
        && ins.mode != Mode::BitBranchIndexedY && m != JMP && m != JSR && m != RTS && m != RTI && m != SWI
        && m != WAI && m != STOP && m != TAP && m != LDS && m != TXS && m != TYS;
}

std::array<std::uint8_t, monitor::StepCodeSize> Code(const hc11::Instruction& ins, std::mt19937& random)
{
    std::array<std::uint8_t, monitor::StepCodeSize> code;
    code.fill(monitor::Nop);
    int at = 0;
    if (ins.page != 0)
        code[at++] = ins.page;
    code[at++] = ins.opcode;
    if (ins.mode == Mode::Direct || ins.mode == Mode::BitDirect)
        code[at++] = std::uint8_t(DirectStart + random() % (0xFF - DirectStart));
    if (ins.mode == Mode::Extended) {
        const auto address = std::uint16_t(DataStart + random() % (DataSize - 1));
        code[at++] = std::uint8_t(address >> 8);
        code[at++] = std::uint8_t(address);
    }
    while (at < ins.length && at < int(code.size()))   // immediate data, index offsets, masks
        code[at++] = std::uint8_t(random());
    return code;
}

} // namespace

class FirmwareAgreementTest : public QObject {
    Q_OBJECT
private slots:
    void stepsAgreeWithTheBuiltInMonitor()
    {
        std::vector<const hc11::Instruction*> table;
        for (const hc11::Instruction& ins : hc11::AllInstructions())
            if (Steppable(ins))
                table.push_back(&ins);
        BoardUnderTest builtIn(false), firmware(true);
        std::mt19937 random(20261124);
        for (int address = DirectStart; address < DataStart + DataSize; address = address == 0xFF ? DataStart : address + 1) {
            const auto value = std::uint8_t(random());
            builtIn.Hardware().Poke(std::uint16_t(address), value);
            firmware.Hardware().Poke(std::uint16_t(address), value);
        }
        const auto index = [&] { return int(DataStart + random() % (DataSize - 0x100)); };
        for (int step = 0; step < 3000; ++step) {
            const hc11::Instruction& ins = *table[random() % table.size()];
            const CpuRegisterRecord registers{.A = std::uint8_t(random()), .B = std::uint8_t(random()), .IX = index(),
                                              .IY = index(), .SP = StackPointer,
                                              .CCR = std::uint8_t(random() | hc11::ccr::X)};
            const Bytes frame = ToBytes(monitor::StepFrame(registers, Code(ins, random)));
            const Bytes expected = builtIn.Send(frame);
            QCOMPARE(expected.size(), std::size_t(monitor::StepReplySize));
            QVERIFY2(firmware.Send(frame, 0, monitor::StepReplySize) == expected,
                     qPrintable(QStringLiteral("step %1: %2").arg(step).arg(hc11::MnemonicName(ins.mnemonic).data())));
            for (std::uint16_t a = StackPointer - 16; a <= StackPointer + 16; ++a)
                builtIn.Hardware().Poke(a, firmware.Hardware().Peek(a));
        }
        for (int address = DirectStart; address < DataStart + DataSize; address = address == 0xFF ? DataStart : address + 1)
            QCOMPARE(firmware.Hardware().Peek(std::uint16_t(address)), builtIn.Hardware().Peek(std::uint16_t(address)));
    }
};

QTEST_APPLESS_MAIN(FirmwareAgreementTest)
#include "FirmwareAgreement_test.moc"
