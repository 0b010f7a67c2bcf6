#include <QtTest>

#include <map>

#include "source/hc11/Assembler.h"
#include "support/ListingRules.h"
#include "support/S19Image.h"

using namespace asmtest;

// The example programs under examples/ assemble cleanly, and their listings
// give the symbol reader every label and every instruction with its bytes.
class AsmExamplesTest : public QObject {
    Q_OBJECT
private slots:
    void examplesAssembleAndLoadAsSymbols_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("value");
        QTest::newRow("LED counter") << "ledcount.asm" << "WLOOP" << 0xE01F;
        QTest::newRow("serial echo") << "echo.asm" << "PUTC" << 0xE028;
        QTest::newRow("table lookup") << "lookup.asm" << "SEGMENTS" << 0xE041;
    }
    void examplesAssembleAndLoadAsSymbols()
    {
        QFETCH(QString, file);
        QFETCH(QString, label);
        QFETCH(int, value);
        const QString path = QFINDTESTDATA("../../../examples/" + file);
        QFile f(path);
        QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(path));
        const std::string source = f.readAll().toStdString();

        const auto result = hc11::as11::AssembleSource(source, file.toStdString());
        QVERIFY2(result.errors.empty(), result.ErrorFileText().c_str());
        const S19Image image = ReadS19(result.s19);
        QVERIFY(image.problem.empty());
        QCOMPARE(image.start, 0xE000);
        // The reset vector points at the start.
        QCOMPARE(image.bytes.at(0xFFFE) * 256 + image.bytes.at(0xFFFF), 0xE000);

        // Every byte of the code is in the reader's entries, at its address,
        // except what data directives hold (the reader keeps those as values).
        std::map<std::string, int> labels;
        int instructionBytes = 0;
        for (const ListingEntry& e : ReadListing(result.listing)) {
            if (!e.label.empty())
                labels.emplace(e.label, e.address);
            for (std::size_t i = 0; i < e.code.size(); ++i)
                QCOMPARE(int(e.code[i]), int(image.bytes.at(e.address + int(i))));
            instructionBytes += int(e.code.size());
        }
        QVERIFY(instructionBytes > 30);
        QCOMPARE(labels.at("START"), 0xE000);
        QCOMPARE(labels.at(label.toStdString()), value);
    }
};

QTEST_APPLESS_MAIN(AsmExamplesTest)
#include "AsmExamples_test.moc"
