#include <QtTest>

#include "AsmTestHelpers.h"

using namespace asmtest;

class AsmEncodingTest : public QObject {
    Q_OBJECT
private slots:
    void directOrExtendedByFirstPassKnowledge()
    {
        // Known and below $100: direct. Known above: extended.
        QCOMPARE(Code(" LDAA $40\n LDAA $0100\n", 5), QString("96 40 B6 01 00"));
        // A symbol defined above counts as known; one defined below does not.
        QCOMPARE(Code("ZP EQU $20\n LDAA ZP\n LDAA LATE\nLATE EQU $30\n", 5),
                 QString("96 20 B6 00 30"));
        // '<' and '>' force the choice.
        QCOMPARE(Code(" LDAA >$40\n LDAA <LATE\nLATE EQU $30\n", 5), QString("B6 00 40 96 30"));
        // JMP has no direct form: small addresses stay extended.
        QCOMPARE(Code(" JMP $10\n", 3), QString("7E 00 10"));
        QCOMPARE(Code(" JSR $10\n", 2), QString("9D 10"));
    }

    void immediateWidthComesFromTheInstruction()
    {
        QCOMPARE(Code(" LDAA #$12\n LDD #$12\n", 5), QString("86 12 CC 00 12"));
        QCOMPARE(Code(" LDX #-1\n CPY #'A'\n", 7), QString("CE FF FF 18 8C 00 41"));
        QCOMPARE(Code(" LDAB #-128\n", 2), QString("C6 80"));
    }

    void indexedFormsAndPrefixes()
    {
        QCOMPARE(Code(" LDAA 5,X\n LDAA ,X\n LDAA 5,y\n", 7), QString("A6 05 A6 00 18 A6 05"));
        QCOMPARE(Code(" CPD 3,X\n CPD 3,Y\n LDY 0,X\n", 9), QString("1A A3 03 CD A3 03 1A EE 00"));
        QCOMPARE(Code(" STX 1,Y\n", 3), QString("CD EF 01"));
    }

    void bitInstructionsTakeBlanksCommasAndOptionalHash()
    {
        const QString bset("14 10 80");
        QCOMPARE(Code(" BSET $10,#$80\n", 3), bset);
        QCOMPARE(Code(" BSET $10 $80\n", 3), bset);
        QCOMPARE(Code(" BSET $10,$80 comment words\n", 3), bset);
        QCOMPARE(Code(" BCLR 3,Y,#$40\n", 4), QString("18 1D 03 40"));
        QCOMPARE(Code(" BCLR ,X $40\n", 3), QString("1D 00 40"));
        // BRCLR 0,X $01 LOOP: a loop onto itself is offset -4.
        QCOMPARE(Code("LOOP BRCLR 0,X $01 LOOP\n", 4), QString("1F 00 01 FC"));
        QCOMPARE(Code("LOOP BRSET $10,#$80,LOOP\n", 4), QString("12 10 80 FC"));
        QCOMPARE(Code("L BRSET 2,Y #1 L\n", 5), QString("18 1E 02 01 FB"));
    }

    void branchesAndAliases()
    {
        QCOMPARE(Code("HERE BRA HERE\n BNE NEXT\nNEXT NOP\n", 5), QString("20 FE 26 00 01"));
        QCOMPARE(Code(" BSR *+2\n", 2), QString("8D 00"));
        // The manual's second spellings, in any letter case.
        QCOMPARE(Code(" asl 1,x\n Asla\n ASLB\n ASLD\nL bhs L\n blo L\n", 9),
                 QString("68 01 48 58 05 24 FE 25 FC"));
        // The longest reach each way.
        QCOMPARE(Code(" BRA *+129\n", 2), QString("20 7F"));
        QCOMPARE(Code(" BRA *-126\n", 2), QString("20 80"));
    }

    void dataDirectives()
    {
        QCOMPARE(Code(" FCB 1,$FF,-1,'A'\n", 4), QString("01 FF FF 41"));
        QCOMPARE(Code(" FDB $1234,-2\n", 4), QString("12 34 FF FE"));
        QCOMPARE(Code(" FCC /A b/\n FCC 'x'\n FCC \"y,z\"\n", 7), QString("41 20 62 78 79 2C 7A"));
        QCOMPARE(Code(" FCC ,',\n", 1), QString("27"));
        QCOMPARE(Code(" BSZ 2\n ZMB 1\n FILL $AA,2\n FCB 9\n", 6), QString("00 00 00 AA AA 09"));
        // RMB and RMW reserve without writing; the next byte lands after them.
        QCOMPARE(Code(" RMB 2\n RMW 1\n FCB 7\n", 5), QString("EE EE EE EE 07"));
        QCOMPARE(Code(" FCB 1,2 and a comment\n", 2), QString("01 02"));
    }

    void symbolsEquSetAndLabels()
    {
        // Forward EQU chains in any order resolve; SET may change a value.
        QCOMPARE(Code(" LDAA #A\nA EQU B+1\nB EQU C*2\nC EQU 5\n", 2), QString("86 0B"));
        QCOMPARE(Code("N SET 1\n FCB N\nN SET N+1\n FCB N\n", 2), QString("01 02"));
        // Labels with a colon, a label alone on a line, long names, case.
        QCOMPARE(Code("Start: NOP\nalone\n LDX #alone\n LDX #Start\n", 7), QString("01 CE 10 01 CE 10 00"));
        const std::string longName(40, 'a');
        const std::string longOther = std::string(39, 'a') + "b";
        QCOMPARE(Code(longName + " EQU 1\n" + longOther + " EQU 2\n FCB " + longName + "," + longOther + "\n", 2),
                 QString("01 02"));
        QCOMPARE(Code("x EQU 1\nX EQU 2\n FCB x,X\n", 2), QString("01 02"));
        // A label on ORG names the new origin.
        QCOMPARE(Code("HERE ORG $1002\n FDB HERE\n", 4), QString("EE EE 10 02"));
    }

    void linesEndAtLfCrLfOrALoneCr()
    {
        QCOMPARE(Code(" NOP\r\n INCA\r DECA\n\r\nLAST RTS", 4), QString("01 4C 4A 39"));
        const auto result = hc11::as11::AssembleSource(" NOP\r\n BAD\r\n");
        QCOMPARE(QString::fromStdString(result.ErrorFileText()), QString("2: unknown mnemonic 'BAD'\n"));
    }

    void endGivesTheStartAndStopsReading()
    {
        const auto result = hc11::as11::AssembleSource(
            " ORG $E000\nGO NOP\n END GO\n this is not read\n", "demo");
        QVERIFY(result.errors.empty());
        const S19Image image = ReadS19(result.s19);
        QCOMPARE(image.start, 0xE000);
        QCOMPARE(image.header, std::string("demo"));
        QCOMPARE(int(image.bytes.size()), 1);
        QCOMPARE(ReadS19(hc11::as11::AssembleSource(" NOP\n").s19).start, 0);
        // The ignored directives change nothing.
        QCOMPARE(Code(" OPT l\n PAGE\n NAM x\n TTL A title\n SPC 2\n NOP\n", 1), QString("01"));
    }
};

QTEST_APPLESS_MAIN(AsmEncodingTest)
#include "AsmEncoding_test.moc"
