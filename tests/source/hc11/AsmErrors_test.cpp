#include <QtTest>

#include "AsmTestHelpers.h"
#include "support/ListingRules.h"

using namespace asmtest;
using hc11::as11::AssembleSource;

class AsmErrorsTest : public QObject {
    Q_OBJECT
private slots:
    void eachErrorNamesItsLineProblemAndText_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("unknown mnemonic") << " NOP\n LDAX #1\n" << "2: unknown mnemonic 'LDAX'";
        QTest::newRow("undefined symbol") << " LDAA NOWHERE\n" << "1: undefined symbol 'NOWHERE'";
        QTest::newRow("duplicate symbol") << "A NOP\nA NOP\n" << "2: duplicate symbol 'A' (first defined on line 1)";
        QTest::newRow("EQU then SET") << "A EQU 1\nA SET 2\n" << "2: duplicate symbol 'A' (first defined on line 1)";
        QTest::newRow("branch forward")
            << "L BRA FAR\n RMB 200\nFAR NOP\n" << "1: branch out of range by 73 bytes: 'FAR'";
        QTest::newRow("branch back") << "B RMB 127\n BNE B\n" << "2: branch out of range by 1 bytes: 'B'";
        QTest::newRow("bit branch") << "B RMB 200\n BRSET 0,X 1 B\n" << "2: branch out of range by 76 bytes: 'B'";
        QTest::newRow("immediate store") << " STAA #1\n" << "1: bad addressing mode: STAA has no immediate form: '#1'";
        QTest::newRow("indexed on branch") << " BRA 1,X\n" << "1: bad addressing mode: BRA has no indexed form: '1,X'";
        QTest::newRow("forced direct on JMP") << " JMP <$10\n" << "1: bad addressing mode: JMP has no direct form: '<$10'";
        QTest::newRow("bad register") << " LDAA 1,Z\n" << "1: bad operand '1,Z' for LDAA";
        QTest::newRow("missing operand") << " LDAA\n" << "1: missing operand '' for LDAA";
        QTest::newRow("bit missing mask") << " BSET $10\n" << "1: missing mask '' for BSET";
        QTest::newRow("byte too big") << " LDAA #256\n" << "1: value out of range: '256' is 256, allowed -128 to 255";
        QTest::newRow("forced direct") << " LDAA <$100\n" << "1: value out of range: '$100' is 256, allowed 0 to 255";
        QTest::newRow("offset negative") << " LDAA -1,X\n" << "1: value out of range: '-1' is -1, allowed 0 to 255";
        QTest::newRow("word too big") << " FDB 65536\n" << "1: value out of range: '65536' is 65536, allowed -32768 to 65535";
        QTest::newRow("bad number") << " FCB $1G\n" << "1: bad number: '$1G'";
        QTest::newRow("division") << " FCB 1/0\n" << "1: division by zero: '/0'";
        QTest::newRow("EQU without label") << " EQU 5\n" << "1: EQU needs a label";
        QTest::newRow("EQU circular") << "A EQU B\nB EQU A\n LDAA A\n"
                                      << "1: circular definition of 'B'\n2: circular definition of 'B'\n"
                                         "3: symbol 'A' has no value: circular definition of 'B'";
        QTest::newRow("ORG forward") << " ORG LATER\nLATER EQU 5\n"
                                     << "1: value must be known where it is used: 'LATER' is not defined above this line";
        QTest::newRow("FCC unclosed") << " FCC /abc\n" << "1: missing closing delimiter in '/abc'";
        QTest::newRow("bad label") << "9LIVES NOP\n" << "1: bad label '9LIVES'";
        QTest::newRow("wraps") << " ORG $FFFF\n FDB 1\n" << "2: code runs past $FFFF and wraps to $0000";
        QTest::newRow("FILL form") << " FILL 1\n" << "1: FILL needs a value and a count: '1'";
    }
    void eachErrorNamesItsLineProblemAndText()
    {
        QFETCH(QString, source);
        QFETCH(QString, expected);
        QCOMPARE(Errors(source.toStdString()), expected);
    }

    void anErrorNeverStopsTheLinesAfterIt()
    {
        const auto result = AssembleSource(" ORG $100\n BOGUS\n LDAA #300\nOK LDAB #1\n FCB UNDEF\n NOP\n");
        QCOMPARE(int(result.errors.size()), 3);
        const S19Image image = ReadS19(result.s19);
        // LDAA keeps its two bytes so later addresses stay right.
        QCOMPARE(int(image.bytes.at(0x102)), 0xC6);
        QCOMPARE(int(image.bytes.at(0x104)), 0x00);   // FCB of an unknown symbol
        QCOMPARE(int(image.bytes.at(0x105)), 0x01);
        // The listing shows each error under its line.
        const std::string& lst = result.listing;
        const auto at = lst.find("BOGUS");
        QVERIFY(lst.find("***** error: unknown mnemonic 'BOGUS'", at) != std::string::npos);
        QVERIFY(lst.find("3 errors") != std::string::npos);
    }

    void phaseErrorsAreCaught()
    {
        // A forward reference to a SET symbol changes between the passes:
        // the first pass sees its last value, the second the one in force.
        const QString errors = Errors("N SET 1\n RMB N\nL NOP\nN SET 2\n BRA L\n");
        QVERIFY2(errors.isEmpty(), qPrintable(errors));
        QCOMPARE(Errors(" RMB N\nN SET 1\n"), QString("1: value must be known where it is used: 'N' is not defined above this line"));
    }

    void hostileSourcesEndQuicklyAndCleanly()
    {
        // Ten thousand errors, each reported.
        std::string many;
        for (int i = 0; i < 10000; ++i)
            many += " FOO" + std::to_string(i) + "\n";
        QCOMPARE(int(AssembleSource(many).errors.size()), 10000);

        // Binary bytes, NULs and control characters: errors, printable messages.
        std::string binary;
        for (int i = 0; i < 4096; ++i)
            binary.push_back(char((i * 7919) & 0xFF));
        const auto b = AssembleSource(binary);
        for (const auto& e : b.errors)
            for (char c : e.message)
                QVERIFY(c >= 32 && c < 127);

        // A megabyte-long line is one error with a clipped quote.
        const auto longLine = AssembleSource(" FCB " + std::string(1 << 20, '1') + "+\n");
        QCOMPARE(int(longLine.errors.size()), 1);
        QVERIFY(longLine.errors[0].message.size() < 100);

        // A deep chain of forward definitions is refused, not a crash.
        std::string chain;
        for (int i = 0; i < 5000; ++i)
            chain += "S" + std::to_string(i) + " EQU S" + std::to_string(i + 1) + "+1\n";
        chain += "S5000 EQU 0\n";
        const auto c = AssembleSource(chain);
        QVERIFY(!c.errors.empty());
        QVERIFY(c.errors[0].message.find("nested too deeply") != std::string::npos);
        // ...but a chain of moderate depth resolves.
        std::string shortChain;
        for (int i = 0; i < 100; ++i)
            shortChain += "S" + std::to_string(i) + " EQU S" + std::to_string(i + 1) + "+1\n";
        shortChain += "S100 EQU 0\n ORG 0\n FCB S0\n";
        QCOMPARE(Hex(CodeAt(shortChain, 0, 1)), QString("64"));

        // Output is capped: endless zero blocks stop at the limit.
        std::string blocks;
        for (int i = 0; i < 40; ++i)
            blocks += " ORG 0\n BSZ $FFFF\n";
        const auto big = AssembleSource(blocks);
        QVERIFY(!big.errors.empty());
        QVERIFY(big.errors.back().message.find("too much code") != std::string::npos);
        QVERIFY(big.s19.size() < 4u * 1024 * 1024);
    }

    void wrappedCodeSplitsItsRecordsAtTheTop()
    {
        const auto result = AssembleSource(" ORG $FFFE\n FCB 1,2,3,4\n");
        QCOMPARE(int(result.errors.size()), 1);
        const S19Image image = ReadS19(result.s19);
        QVERIFY(image.problem.empty());
        QCOMPARE(image.dataRecords, 2);
        QCOMPARE(int(image.bytes.at(0xFFFF)), 2);
        QCOMPARE(int(image.bytes.at(0x0000)), 3);
    }
};

QTEST_APPLESS_MAIN(AsmErrorsTest)
#include "AsmErrors_test.moc"
