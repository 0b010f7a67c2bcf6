#include "hc11board/Options.h"

using namespace hc11board;

class BoardOptionsTest : public QObject {
    Q_OBJECT
private slots:
    void everyOptionReachesItsSetting()
    {
        const ParsedOptions parsed = ParseOptions({"--device", "/dev/ttyS1", "--rom", "a.s19", "--paced", "--fast", "--stay",
                                                   "--step-budget", "5000", "--erase-ms", "2900", "--erase-fails"});
        QVERIFY2(parsed.error.empty(), parsed.error.c_str());
        const Options& o = parsed.options;
        QCOMPARE(o.device, std::string("/dev/ttyS1"));
        QCOMPARE(o.rom, std::string("a.s19"));
        QVERIFY(o.paced && o.fast && o.stay && o.monitor.eraseFails);
        QCOMPARE(o.monitor.stepBudget, std::uint64_t(5000));
        QCOMPARE(o.monitor.eraseMs, std::uint64_t(2900));
    }

    void badCommandLinesAreRefusedWithAReason()
    {
        const std::pair<std::vector<std::string>, std::string> rows[] = {
            {{"--pace"}, "unknown option \"--pace\""},
            {{"--paced", "--device"}, "--device needs a value"},
            {{"--rom"}, "--rom needs a value"},
            {{"--erase-ms", "3s"}, "--erase-ms needs a whole number, not \"3s\""},
            {{"--step-budget", ""}, "--step-budget needs a whole number, not \"\""},
            {{"--step-budget", "0"}, "--step-budget must be at least 1"},
        };
        for (const auto& [arguments, reason] : rows)
            QCOMPARE(ParseOptions(arguments).error, reason);
    }
};

QTEST_APPLESS_MAIN(BoardOptionsTest)
#include "BoardOptions_test.moc"
