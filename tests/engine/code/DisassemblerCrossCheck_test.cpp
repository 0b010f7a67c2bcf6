// Decodes every opcode of every page with our decoder and with GNU objdump for
// the 68HC11 (an independent disassembler) and compares lengths and mnemonics.

#include <map>

#include "engine/code/Asm.h"
#include "hc11/InstructionSet.h"
#include "engine/state/TargetState.h"

namespace {
constexpr int SlotSize = 8;   // each instruction starts a slot padded with NOPs

// The spellings objdump uses where ours are fixed otherwise.
QString OurSpelling(QString name)
{
    name = name.toUpper();
    if (name.startsWith("ASL"))
        name.replace(0, 3, "LSL");
    return name == "BHS" ? "BCC" : name == "BLO" ? "BCS" : name;
}
}  // namespace

class DisassemblerCrossCheckTest : public QObject {
    Q_OBJECT
private slots:
    void agreesWithObjdump()
    {
        const QString objdump = QStandardPaths::findExecutable("m68hc11-objdump");
        if (objdump.isEmpty())
            QFAIL("m68hc11-objdump is missing: scripts/setup.sh installs binutils-m68hc1x");

        // Every legal row of the table, each in its own slot.
        QByteArray image;
        for (const hc11::Instruction& row : hc11::AllInstructions()) {
            QByteArray slot(SlotSize, char(0x01));
            int i = 0;
            if (row.page)
                slot[i++] = char(row.page);
            slot[i++] = char(row.opcode);
            for (; i < row.length; ++i)
                slot[i] = char(0x10);
            image += slot;
        }
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(image);
        file.flush();
        QProcess process;
        process.start(objdump, {"-D", "-b", "binary", "-m", "m68hc11", file.fileName()});
        QVERIFY(process.waitForFinished(60000));

        // "   a:\t86 05       \tldaa\t#0x5": address, bytes, mnemonic. Lines without a
        // mnemonic continue the bytes of the line before.
        static const QRegularExpression instructionLine(R"(^\s*([0-9a-f]+):\t[0-9a-f ]+\t(\S+))");
        std::map<int, QString> mnemonicAt;
        for (const QString& line : QString::fromLatin1(process.readAllStandardOutput()).split('\n'))
            if (const auto m = instructionLine.match(line); m.hasMatch())
                mnemonicAt[m.captured(1).toInt(nullptr, 16)] = m.captured(2);

        int at = 0;
        ProgramBase = 0;
        for (const hc11::Instruction& row : hc11::AllInstructions()) {
            const auto it = mnemonicAt.find(at);
            QVERIFY2(it != mnemonicAt.end(), qPrintable(QString("objdump lost the slot at %1").arg(at)));
            const auto next = std::next(it);
            const int theirLength = (next == mnemonicAt.end() ? int(image.size()) : next->first) - at;

            std::copy_n(image.constData() + at, SlotSize, ProgramBuffer.begin());
            std::int32_t address = 0;
            std::int16_t length = 0;
            std::string text;
            DisAsmLine(address, length, text);
            const QString ours = QString::fromStdString(text).section(' ', 0, 0);
            const QString where = QString("%1 %2: ours %3 (%4), objdump %5 (%6)")
                                      .arg(row.page, 2, 16, QChar('0')).arg(row.opcode, 2, 16, QChar('0'))
                                      .arg(ours).arg(length).arg(it->second).arg(theirLength);
            QVERIFY2(length == theirLength, qPrintable(where));
            QVERIFY2(ours == OurSpelling(it->second), qPrintable(where));
            at += SlotSize;
        }
        QCOMPARE(at / SlotSize, 307);
    }
};

QTEST_APPLESS_MAIN(DisassemblerCrossCheckTest)
#include "DisassemblerCrossCheck_test.moc"
