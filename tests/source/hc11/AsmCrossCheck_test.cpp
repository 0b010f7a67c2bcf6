#include <QtTest>

#include "source/hc11/Assembler.h"
#include "support/AsmPrograms.h"
#include "support/GnuHc11Pipeline.h"
#include "support/S19Image.h"

using namespace asmtest;

// The same program through our assembler and through Debian's GNU HC11
// toolchain must give the same bytes at the same addresses.
class AsmCrossCheckTest : public QObject {
    Q_OBJECT
private:
    static constexpr unsigned Origin = 0x1000;

    void CompareWithGnu(const TwinSource& program)
    {
        if (!GnuHc11Available())
            QSKIP("m68hc11-as is not installed (binutils-m68hc1x)");
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        std::string gnuText, log;
        QVERIFY2(RunGnuHc11(dir.path().toStdString(), program.gnu, Origin, gnuText, log), log.c_str());

        char org[32];
        std::snprintf(org, sizeof org, " ORG $%04X\n", Origin);
        const auto ours = hc11::as11::AssembleSource(org + program.ours);
        QVERIFY2(ours.errors.empty(), ours.ErrorFileText().c_str());

        const S19Image mine = ReadS19(ours.s19);
        const S19Image theirs = ReadS19(gnuText);
        QVERIFY2(mine.problem.empty(), mine.problem.c_str());
        QVERIFY2(theirs.problem.empty(), theirs.problem.c_str());
        QVERIFY(!mine.bytes.empty());
        // GNU may pad its section at the end with zeros; nothing else may differ.
        const int last = mine.bytes.rbegin()->first;
        for (const auto& [address, byte] : theirs.bytes)
            QVERIFY2(mine.bytes.count(address) || (address > last && byte == 0),
                     qPrintable(QString::asprintf("GNU has %02X at $%04X, we have nothing", byte, address)));
        for (const auto& [address, byte] : mine.bytes) {
            const auto it = theirs.bytes.find(address);
            QVERIFY2(it != theirs.bytes.end(), qPrintable(QString::asprintf("GNU has no byte at $%04X", address)));
            QVERIFY2(it->second == byte, qPrintable(QString::asprintf("$%04X: ours %02X, GNU %02X",
                                                                      address, byte, it->second)));
        }
    }

private slots:
    void everyInstructionInEveryModeMatchesGnu()
    {
        TwinSource program;
        AppendEveryInstruction(program, "");
        QCOMPARE(program.lines, int(hc11::AllInstructions().size()));
        CompareWithGnu(program);
    }

    void aliasesDataAndBranchReachMatchGnu()
    {
        // Hand-written lines for what the table does not generate: the
        // second spellings, data directives, both ends of a branch's reach
        // and operands given as expressions.
        TwinSource program;
        const char* lines[][2] = {
            {"A0 ASL 3,X", "A0 ASL 3,X"},
            {" ASLA", " ASLA"},
            {" ASLB", " ASLB"},
            {" ASLD", " ASLD"},
            {" BHS A0", " BHS A0"},
            {" BLO A0", " BLO A0"},
            {" FCB 1,$FF,'A'", " FCB 1,$FF,'A'"},
            {" FDB A0,$1234", " FDB A0,$1234"},
            {"B0 BRA *+129", "B0 BRA B0+129"},
            {" LDAA #(3+4)*2", " LDAA #(3+4)*2"},
            {" LDX #A0+$10", " LDX #A0+$10"},
            {" BSET $10 $81", " BSET *$10,#$81"},
            {" BRCLR 4,X %11 A0", " BRCLR 4,X,#%11,A0"},
        };
        for (const auto& [ours, gnu] : lines) {
            program.ours += std::string(ours) + "\n";
            program.gnu += std::string(gnu) + "\n";
        }
        // Far enough forward for the first branch: its target is 129 on.
        program.ours += " BSZ 120\n NOP\n";
        program.gnu += " DCB.B 120,0\n NOP\n";
        CompareWithGnu(program);
    }
};

QTEST_APPLESS_MAIN(AsmCrossCheckTest)
#include "AsmCrossCheck_test.moc"
