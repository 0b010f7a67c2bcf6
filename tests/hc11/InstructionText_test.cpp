// The instruction text is what the disassembler shows and what the assembler
// reads: every row of the table, written out from its bytes, must assemble
// back into the same bytes.
#include <QtTest>

#include "hc11/InstructionText.h"
#include "hc11/asm/Assembler.h"
#include "support/S19Image.h"

namespace {
constexpr std::uint16_t Origin = 0x1000;

struct OperandValues {
    const char* what;
    std::uint8_t byte, mask, offset;
    std::uint8_t wordHigh;   // at least 1: an address below $100 reads back as direct
};
}  // namespace

class InstructionTextTest : public QObject {
    Q_OBJECT
private slots:
    void everyRowReadsBackIntoItsBytes()
    {
        const OperandValues cases[] = {{"low values, farthest forward", 0x00, 0x01, 0x7F, 0x01},
                                       {"high values, farthest back", 0xFF, 0x80, 0x80, 0xFF},
                                       {"middle values, onto itself", 0x5A, 0xA5, 0xFE, 0x80}};
        for (const OperandValues& values : cases) {
            std::string source = " ORG $1000\n";
            std::map<int, std::uint8_t> expected;
            std::uint16_t at = Origin;
            for (const hc11::Instruction& row : hc11::AllInstructions()) {
                std::vector<std::uint8_t> bytes;
                if (row.page)
                    bytes.push_back(row.page);
                bytes.push_back(row.opcode);
                for (const hc11::Field field : hc11::FormatOf(row.mode).fields) {
                    switch (field) {
                    case hc11::Field::None: break;
                    case hc11::Field::Byte: bytes.push_back(values.byte); break;
                    case hc11::Field::Mask: bytes.push_back(values.mask); break;
                    case hc11::Field::Offset: bytes.push_back(values.offset); break;
                    case hc11::Field::Word: bytes.insert(bytes.end(), {values.wordHigh, values.byte}); break;
                    }
                }
                QCOMPARE(int(bytes.size()), int(row.length));
                const std::size_t opcodeBytes = row.page ? 2 : 1;
                source += ' ';
                hc11::AppendInstructionText(source, row, bytes.data() + opcodeBytes,
                                            static_cast<std::uint16_t>(at + row.length));
                source += '\n';
                for (std::uint8_t b : bytes)
                    expected[at++] = b;
            }
            const auto result = hc11::as11::AssembleSource(source);
            QVERIFY2(result.errors.empty(),
                     qPrintable(QString("%1\n%2").arg(values.what, QString::fromStdString(result.ErrorFileText()))));
            const asmtest::S19Image image = asmtest::ReadS19(result.s19);
            QVERIFY2(image.problem.empty(), image.problem.c_str());
            for (const auto& [address, byte] : expected) {
                const int ours = image.bytes.count(address) ? image.bytes.at(address) : -1;
                QVERIFY2(ours == byte, qPrintable(QString::asprintf("%s: $%04X holds %02X, not %02X", values.what,
                                                                    address, ours, byte)));
            }
            QCOMPARE(image.bytes.size(), expected.size());
        }
    }
};

QTEST_APPLESS_MAIN(InstructionTextTest)
#include "InstructionText_test.moc"
