// The command line of hc11board: what each option sets, and clear refusals.
#include <QtTest>

#include "hc11board/Options.h"

using namespace hc11board;

class BoardOptionsTest : public QObject {
    Q_OBJECT
private slots:
    void everyOptionReachesItsSetting()
    {
        const ParsedOptions parsed = ParseOptions({"--device", "/dev/ttyS1", "--paced", "--fast", "--stay",
                                                   "--step-budget", "5000", "--erase-ms", "2900", "--erase-fails"});
        QVERIFY2(parsed.error.empty(), parsed.error.c_str());
        const Options& o = parsed.options;
        QCOMPARE(o.device, std::string("/dev/ttyS1"));
        QVERIFY(o.paced && o.fast && o.stay && o.monitor.eraseFails);
        QCOMPARE(o.monitor.stepBudget, std::uint64_t(5000));
        QCOMPARE(o.monitor.eraseMs, std::uint64_t(2900));
    }

    void badCommandLinesAreRefusedWithAReason_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("reason");
        QTest::newRow("unknown") << QStringList{"--pace"} << "unknown option \"--pace\"";
        QTest::newRow("missing value") << QStringList{"--paced", "--device"} << "--device needs a value";
        QTest::newRow("not a number") << QStringList{"--erase-ms", "3s"} << "--erase-ms needs a whole number, not \"3s\"";
        QTest::newRow("empty") << QStringList{"--step-budget", ""} << "--step-budget needs a whole number, not \"\"";
        QTest::newRow("zero budget") << QStringList{"--step-budget", "0"} << "--step-budget must be at least 1";
    }

    void badCommandLinesAreRefusedWithAReason()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, reason);
        std::vector<std::string> args;
        for (const QString& a : arguments)
            args.push_back(a.toStdString());
        QCOMPARE(QString::fromStdString(ParseOptions(args).error), reason);
    }
};

QTEST_APPLESS_MAIN(BoardOptionsTest)
#include "BoardOptions_test.moc"
