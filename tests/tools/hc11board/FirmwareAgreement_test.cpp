// The monitor firmware steps the CPU as the built-in monitor does: thousands
// of straight-line instructions from the instruction table, with random
// registers and operands, give the same "S" replies on both, and leave the
// same memory behind. The instructions keep away from the monitors' own
// memory: the save area and code buffer, and the firmware's RAM and EPROM at
// $BA00-$BFFF. The nine bytes below the stack pointer, the firmware's way in
// and out, are the firmware's after each step: a PUL reads them afterwards. The CCR's X bit stays set: once cleared,
// only a reset sets it on an HC11, where the built-in monitor just loads it.
#include <QtTest>

#include "BoardUnderTest.h"
#include "hc11/InstructionSet.h"

#include <random>

using namespace boardtest;
using hc11::Mnemonic;
using hc11::Mode;

namespace {

constexpr std::uint16_t DataStart = 0x2000, DataSize = 0x1000;   // what extended and indexed operands reach
constexpr std::uint8_t DirectStart = 0x20;                        // direct operands: $20-$FF
constexpr std::uint16_t StackPointer = 0x0300;
constexpr int Steps = 3000;

// Instructions the host hands to the code buffer, less those that set the
// stack pointer anywhere or the X bit; jumps, calls, returns, branches,
// interrupts and the low-power states the host does itself.
bool Steppable(const hc11::Instruction& ins)
{
    switch (ins.mode) {
    case Mode::Relative: case Mode::BitBranchDirect: case Mode::BitBranchIndexedX: case Mode::BitBranchIndexedY:
        return false;
    default: break;
    }
    switch (ins.mnemonic) {
    case Mnemonic::JMP: case Mnemonic::JSR: case Mnemonic::RTS: case Mnemonic::RTI: case Mnemonic::SWI:
    case Mnemonic::WAI: case Mnemonic::STOP: case Mnemonic::TAP: case Mnemonic::LDS: case Mnemonic::TXS:
    case Mnemonic::TYS:
        return false;
    default: return true;
    }
}

// The instruction's bytes with operands inside the data areas.
std::array<std::uint8_t, monitor::StepCodeSize> Code(const hc11::Instruction& ins, std::mt19937& random)
{
    std::array<std::uint8_t, monitor::StepCodeSize> code;
    code.fill(monitor::Nop);
    int at = 0;
    if (ins.page != 0)
        code[at++] = ins.page;
    code[at++] = ins.opcode;
    const auto byte = [&] { return std::uint8_t(random()); };
    switch (ins.mode) {
    case Mode::Direct: case Mode::BitDirect:
        code[at++] = std::uint8_t(DirectStart + random() % (0x100 - DirectStart - 1));
        break;
    case Mode::Extended: {
        const auto address = std::uint16_t(DataStart + random() % (DataSize - 1));
        code[at++] = std::uint8_t(address >> 8);
        code[at++] = std::uint8_t(address);
        break;
    }
    default:
        break;
    }
    while (at < ins.length)   // immediate data, index offsets, masks
        code[at++] = byte();
    return code;
}

CpuRegisterRecord RandomRegisters(std::mt19937& random)
{
    const auto index = [&] { return int(DataStart + random() % (DataSize - 0x100)); };
    return {.A = std::uint8_t(random()), .B = std::uint8_t(random()), .IX = index(), .IY = index(),
            .SP = StackPointer, .CCR = std::uint8_t(random() | hc11::ccr::X)};
}

void Fill(BoardUnderTest& board, std::uint16_t start, int size, std::mt19937::result_type seed)
{
    std::mt19937 random(seed);
    for (int done = 0; done < size; done += monitor::MaxWriteCount) {
        Bytes chunk(std::min(size - done, monitor::MaxWriteCount));
        for (std::uint8_t& b : chunk)
            b = std::uint8_t(random());
        board.Send(WriteFrame(std::uint16_t(start + done), chunk));
    }
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
        for (BoardUnderTest* board : {&builtIn, &firmware}) {
            Fill(*board, DataStart, DataSize, 1);
            Fill(*board, DirectStart, 0x100 - DirectStart, 2);
        }
        std::mt19937 random(20261124);
        for (int step = 0; step < Steps; ++step) {
            const hc11::Instruction& ins = *table[random() % table.size()];
            const Bytes frame = ToBytes(monitor::StepFrame(RandomRegisters(random), Code(ins, random)));
            const Bytes expected = builtIn.Send(frame);
            QCOMPARE(expected.size(), std::size_t(monitor::StepReplySize));
            QVERIFY2(firmware.Send(frame, 0, monitor::StepReplySize) == expected,
                     qPrintable(QStringLiteral("step %1: %2").arg(step).arg(hc11::MnemonicName(ins.mnemonic).data())));
            for (std::uint16_t a = StackPointer - 16; a <= StackPointer + 16; ++a)
                builtIn.Hardware().Poke(a, firmware.Hardware().Peek(a));
        }
        for (int address = DirectStart; address < DataStart + DataSize; ++address) {
            if (address == 0x100)
                address = DataStart;
            QCOMPARE(firmware.Hardware().Peek(std::uint16_t(address)), builtIn.Hardware().Peek(std::uint16_t(address)));
        }
    }
};

QTEST_APPLESS_MAIN(FirmwareAgreementTest)
#include "FirmwareAgreement_test.moc"
