#include "hc11/InstructionText.h"
#include "hc11/asm/Assembler.h"
#include "support/S19Image.h"

using namespace asmtest;
using hc11::as11::AssembleSource;

namespace {
// The `count` bytes from `from` as hex ("86 12"; "EE" where nothing was
// written), or the errors when there are any.
QString CodeAt(const std::string& source, int from, int count)
{
    const auto result = AssembleSource(source);
    const S19Image image = ReadS19(result.s19);
    if (!result.errors.empty() || !image.problem.empty())
        return QString::fromStdString(result.ErrorFileText() + image.problem);
    QStringList bytes;
    for (int a = from; a < from + count; ++a) {
        const auto it = image.bytes.find(a & 0xFFFF);
        bytes << QString::asprintf("%02X", it == image.bytes.end() ? 0xEE : it->second);
    }
    return bytes.join(' ');
}

// "line: message" of every error, one a line.
QString Errors(const std::string& source)
{
    return QString::fromStdString(AssembleSource(source).ErrorFileText()).trimmed();
}
} // namespace

class AssemblerTest : public QObject {
    Q_OBJECT
private slots:
    void everyModeEncodes()
    {
        const struct { const char* source; int count; const char* bytes; } rows[] = {
            // Known and below $100: direct; known above, or defined only below: extended.
            {" LDAA $40\n LDAA $0100\n", 5, "96 40 B6 01 00"},
            {"ZP EQU $20\n LDAA ZP\n LDAA LATE\nLATE EQU $30\n", 5, "96 20 B6 00 30"},
            {" LDAA >$40\n LDAA <LATE\nLATE EQU $30\n", 5, "B6 00 40 96 30"},   // '<' and '>' force it
            {" JMP $10\n JSR $10\n", 5, "7E 00 10 9D 10"},   // JMP has no direct form
            // Immediate width comes from the instruction.
            {" LDAA #$12\n LDD #$12\n", 5, "86 12 CC 00 12"},
            {" LDX #-1\n CPY #'A'\n LDAB #-128\n", 9, "CE FF FF 18 8C 00 41 C6 80"},
            // Indexed forms with an empty offset and a register in lower case.
            {" LDAA 5,X\n LDAA ,X\n LDAA 5,y\n", 7, "A6 05 A6 00 18 A6 05"},
            // Bit instructions take blanks, commas and an optional '#'.
            {" BSET $10,#$80\n BSET $10 $80\n BSET $10,$80 comment words\n", 9, "14 10 80 14 10 80 14 10 80"},
            {"LOOP BRCLR 0,X $01 LOOP\n", 4, "1F 00 01 FC"},   // a loop onto itself
            {"L BRSET 2,Y #1 L\n", 5, "18 1E 02 01 FB"},
            // Branches and the longest reach each way (the second spellings are in the GNU cross-check).
            {"HERE BRA HERE\n bne NEXT\nNEXT NOP\n BSR *+2\n", 7, "20 FE 26 00 01 8D 00"},
            {" BRA *+129\n BRA *-126\n", 4, "20 7F 20 80"},
            // Data directives; RMB and RMW reserve without writing.
            {" FCB 1,$FF,-1,'A'\n FDB $1234,-2\n", 8, "01 FF FF 41 12 34 FF FE"},
            {" FCC /A b/\n FCC 'x'\n FCC \"y,z\"\n FCC ,',\n", 8, "41 20 62 78 79 2C 7A 27"},
            {" BSZ 2\n ZMB 1\n FILL $AA,2\n FCB 9\n", 6, "00 00 00 AA AA 09"},
            {" RMB 2\n RMW 1\n FCB 7\n FCB 1,2 and a comment\n", 7, "EE EE EE EE 07 01 02"},
            // Forward EQU chains in any order; SET may change a value.
            {" LDAA #A\nA EQU B+1\nB EQU C*2\nC EQU 5\n", 2, "86 0B"},
            {"N SET 1\n FCB N\nN SET N+1\n FCB N\n", 2, "01 02"},
            // Labels with a colon, alone on a line, case-sensitive; on ORG they name the new origin.
            {"Start: NOP\nalone\n LDX #alone\n LDX #Start\n", 7, "01 CE 10 01 CE 10 00"},
            {"x EQU 1\nX EQU 2\n FCB x,X\n", 2, "01 02"},
            {"HERE ORG $1002\n FDB HERE\n", 4, "EE EE 10 02"},
            // Lines end at LF, CR LF or a lone CR; ignored directives change nothing.
            {" NOP\r\n INCA\r DECA\n\r\nLAST RTS", 4, "01 4C 4A 39"},
            {" OPT l\n PAGE\n NAM x\n TTL A title\n SPC 2\n NOP\n", 1, "01"},
            // The 6800 and 6809 names that sources for Motorola's assemblers use.
            {" LDA 0,X\n ora #$80\n STA $40\n LDB 1,X\n ORB $41\n STB 1,X\n CMPX #$1010\n CMPD 2,Y\n CMPY $20\n", 21,
             "A6 00 8A 80 97 40 E6 01 DA 41 E7 01 8C 10 10 CD A3 02 18 9C 20"},
        };
        for (const auto& row : rows)
            QCOMPARE(CodeAt(std::string(" ORG $1000\n") + row.source, 0x1000, row.count), QString(row.bytes));
        const std::string longName(40, 'a'), longOther = std::string(39, 'a') + "b";   // all letters count
        QCOMPARE(CodeAt(longName + " EQU 1\n" + longOther + " EQU 2\n FCB " + longName + "," + longOther + "\n", 0, 2),
                 QString("01 02"));
        QCOMPARE(CodeAt("\xEF\xBB\xBF ORG $1000\n NOP\n", 0x1000, 1), QString("01"));   // a UTF-8 byte order mark
    }

    void theDisassemblersTextReadsBackIntoItsBytes()
    {
        // Every row written out as the disassembler shows it, operand bytes at
        // the ends of their ranges and branches farthest forward, back and onto
        // themselves. A 16-bit operand keeps its high byte above 0: "$0012"
        // would read back as direct.
        const std::array<std::uint8_t, 4> cases[] = {   // byte, mask, offset, high byte of a word
            {0x00, 0x01, 0x7F, 0x01}, {0xFF, 0x80, 0x80, 0xFF}, {0x5A, 0xA5, 0xFE, 0x80}};
        for (const auto& [byte, mask, offset, high] : cases) {
            std::string source = " ORG $1000\n";
            QStringList expected;
            std::uint16_t next = 0x1000;
            for (const hc11::Instruction& row : hc11::AllInstructions()) {
                std::vector<std::uint8_t> bytes;
                if (row.page)
                    bytes.push_back(row.page);
                bytes.push_back(row.opcode);
                const std::size_t opcodeBytes = bytes.size();
                for (const hc11::Field field : hc11::FormatOf(row.mode).fields) {
                    if (field == hc11::Field::Word)
                        bytes.push_back(high);
                    if (field != hc11::Field::None)
                        bytes.push_back(field == hc11::Field::Mask ? mask : field == hc11::Field::Offset ? offset : byte);
                }
                QCOMPARE(bytes.size(), std::size_t(row.length));
                next += row.length;
                source += ' ';
                hc11::AppendInstructionText(source, row, bytes.data() + opcodeBytes, next);
                source += '\n';
                for (const std::uint8_t b : bytes)
                    expected << QString::asprintf("%02X", b);
            }
            QCOMPARE(CodeAt(source, 0x1000, int(expected.size())), expected.join(' '));
        }
    }

    void endGivesTheStartAndStopsReading()
    {
        const auto result = AssembleSource(" ORG $E000\nGO NOP\n END GO\n this is not read\n", "demo");
        QVERIFY(result.errors.empty());
        const S19Image image = ReadS19(result.s19);
        QCOMPARE(image.start, 0xE000);
        QCOMPARE(image.header, std::string("demo"));
        QCOMPARE(int(image.bytes.size()), 1);
        QCOMPARE(ReadS19(AssembleSource(" NOP\n").s19).start, 0);
    }
    void eachErrorNamesItsLineProblemAndText()
    {
        const char* const rows[][2] = {
            {" NOP\n LDAX #1\n", "2: unknown mnemonic 'LDAX'"},
            {" LDAA NOWHERE\n", "1: undefined symbol 'NOWHERE'"},
            {"A NOP\nA NOP\n", "2: duplicate symbol 'A' (first defined on line 1)"},
            {"L BRA FAR\n RMB 200\nFAR NOP\n", "1: branch out of range by 73 bytes: 'FAR'"},
            {"B RMB 127\n BNE B\n", "2: branch out of range by 1 bytes: 'B'"},
            {"B RMB 200\n BRSET 0,X 1 B\n", "2: branch out of range by 76 bytes: 'B'"},
            {" STAA #1\n", "1: bad addressing mode: STAA has no immediate form: '#1'"},
            {" JMP <$10\n", "1: bad addressing mode: JMP has no direct form: '<$10'"},
            {" LDAA 1,Z\n", "1: bad operand '1,Z' for LDAA"},
            {" LDAA\n", "1: missing operand '' for LDAA"},
            {" BSET $10\n", "1: missing mask '' for BSET"},
            {" LDAA #256\n", "1: value out of range: '256' is 256, allowed -128 to 255"},
            {" LDAA <$100\n", "1: value out of range: '$100' is 256, allowed 0 to 255"},
            {" LDAA -1,X\n", "1: value out of range: '-1' is -1, allowed 0 to 255"},
            {" FDB 65536\n", "1: value out of range: '65536' is 65536, allowed -32768 to 65535"},
            {" FCB $1G\n", "1: bad number: '$1G'"},
            {" FCB 1/0\n", "1: division by zero: '/0'"},
            {" EQU 5\n", "1: EQU needs a label"},
            {"A EQU B\nB EQU A\n LDAA A\n", "1: circular definition of 'B'\n2: circular definition of 'B'\n"
                                            "3: symbol 'A' has no value: circular definition of 'B'"},
            {" ORG LATER\nLATER EQU 5\n",
             "1: value must be known where it is used: 'LATER' is not defined above this line"},
            // A SET symbol used before it is set in the source is not known yet.
            {" RMB N\nN SET 1\n", "1: value must be known where it is used: 'N' is not defined above this line"},
            {" FCC /abc\n", "1: missing closing delimiter in '/abc'"},
            {"9LIVES NOP\n", "1: bad label '9LIVES'"},
            {" ORG $FFFF\n FDB 1\n", "2: code runs past $FFFF and wraps to $0000"},
            {" FILL 1\n", "1: FILL needs a value and a count: '1'"},
            // The first pass sees a SET symbol's last value, the second the one in force: no phase error.
            {"N SET 1\n RMB N\nL NOP\nN SET 2\n BRA L\n", ""},
        };
        for (const auto& [source, expected] : rows)
            QCOMPARE(Errors(source), QString(expected));
    }

    void anErrorNeverStopsTheLinesAfterIt()
    {
        const auto result = AssembleSource(" ORG $100\n BOGUS\n LDAA #300\nOK LDAB #1\n FCB UNDEF\n NOP\n");
        QCOMPARE(int(result.errors.size()), 3);
        const S19Image image = ReadS19(result.s19);
        // LDAA keeps its two bytes so later addresses stay right; an unknown symbol gives 0.
        QCOMPARE(int(image.bytes.at(0x102)), 0xC6);
        QCOMPARE(int(image.bytes.at(0x104)), 0x00);
        QCOMPARE(int(image.bytes.at(0x105)), 0x01);
        const std::string& lst = result.listing;
        QVERIFY(lst.find("***** error: unknown mnemonic 'BOGUS'", lst.find("BOGUS")) != std::string::npos);
        QVERIFY(lst.find("3 errors") != std::string::npos);

        // Code that wraps splits its records at the top.
        const S19Image wrapped = ReadS19(AssembleSource(" ORG $FFFE\n FCB 1,2,3,4\n").s19);
        QVERIFY(wrapped.problem.empty());
        QCOMPARE(wrapped.dataRecords, 2);
        QVERIFY(wrapped.bytes.at(0xFFFF) == 2 && wrapped.bytes.at(0x0000) == 3);
    }

    void hostileSourcesEndQuicklyAndCleanly()
    {
        std::string many;   // ten thousand errors, each reported
        for (int i = 0; i < 10000; ++i)
            many += " FOO" + std::to_string(i) + "\n";
        QCOMPARE(int(AssembleSource(many).errors.size()), 10000);

        // A deep chain of forward definitions is refused, not a crash; a moderate one resolves.
        const auto chain = [](int depth) {
            std::string text;
            for (int i = 0; i < depth; ++i)
                text += 'S' + std::to_string(i) + " EQU S" + std::to_string(i + 1) + "+1\n";
            return text + "S" + std::to_string(depth) + " EQU 0\n ORG 0\n FCB S0\n";
        };
        QVERIFY(Errors(chain(5000)).section(QLatin1Char('\n'), 0, 0).contains("nested too deeply"));
        QCOMPARE(CodeAt(chain(100), 0, 1), QString("64"));

        std::string blocks;   // output is capped: endless zero blocks stop at the limit
        for (int i = 0; i < 40; ++i)
            blocks += " ORG 0\n BSZ $FFFF\n";
        const auto big = AssembleSource(blocks);
        QVERIFY(!big.errors.empty() && big.errors.back().message.find("too much code") != std::string::npos);
        QVERIFY(big.s19.size() < 4u * 1024 * 1024);
    }
};

QTEST_APPLESS_MAIN(AssemblerTest)
#include "Assembler_test.moc"
