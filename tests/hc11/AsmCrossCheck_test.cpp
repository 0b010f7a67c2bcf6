#include "hc11/asm/Assembler.h"
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
        // A skip would hide that the instruction table lost its only outside check.
        if (!GnuHc11Available())
            QFAIL("m68hc11-as is not installed: the test command installs binutils-m68hc1x");
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        std::string gnuText, log;
        QVERIFY2(RunGnuHc11(dir.path().toStdString(), program.gnu, Origin, gnuText, log), log.c_str());

        const auto ours = hc11::as11::AssembleSource(" ORG $1000\n" + program.ours);   // at Origin
        QVERIFY2(ours.errors.empty(), ours.ErrorFileText().c_str());

        const S19Image mine = ReadS19(ours.s19), theirs = ReadS19(gnuText);
        QVERIFY2(mine.problem.empty() && theirs.problem.empty(), (mine.problem + theirs.problem).c_str());
        QVERIFY(!mine.bytes.empty());
        // GNU may pad its section at the end with zeros; nothing else may differ.
        const int last = mine.bytes.rbegin()->first;
        for (const auto& [address, byte] : theirs.bytes)
            QVERIFY2(mine.bytes.count(address) || (address > last && byte == 0),
                     qPrintable(QString::asprintf("GNU has %02X at $%04X, we have nothing", byte, address)));
        for (const auto& [address, byte] : mine.bytes) {
            const int gnu = theirs.bytes.count(address) ? theirs.bytes.at(address) : -1;
            QVERIFY2(gnu == byte, qPrintable(QString::asprintf("$%04X: ours %02X, GNU %02X", address, byte, gnu)));
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

    void secondSpellingsMatchGnu()
    {
        // The table holds LSL, BCC and BCS only; these names reach them through the keywords.
        const std::string lines = "A0 ASL 3,X\n ASLA\n ASLB\n ASLD\n BHS A0\n BLO A0\n";
        CompareWithGnu({lines, lines});
    }
};

QTEST_APPLESS_MAIN(AsmCrossCheckTest)
#include "AsmCrossCheck_test.moc"
