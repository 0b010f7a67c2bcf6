// The target operations through the real serial control against hc11board on
// a pseudo-terminal: memory across a page boundary and the reset vector in
// flash. Each frame's bytes are the exchange test's, the monitor's answers its
// own test's, a free run and its reset report the device windows' echo test's,
// and steps on the board the debugger's.
#include <QtTest>

#include "engine/state/TargetState.h"
#include "support/BoardProcess.h"
#include "support/DebuggerFixture.h"

class BoardLinkTest : public QObject {
    Q_OBJECT
private slots:
    void memoryAndFlashThroughTheMonitor()
    {
        BoardProcess board;
        QVERIFY(!board.DevicePath().isEmpty());
        DebuggerFixture f(board.DevicePath());
        TargetLink& link = f.link;
        std::int32_t address = 0x20FE;
        std::vector<std::uint8_t> bytes(200), back;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = std::uint8_t(i * 3 + 1);
        link.OutBytes(address, bytes, 200);
        link.InBytes(address, back, 200);
        QCOMPARE(back, bytes);
        MemoryPageAddress = 0x2000;
        link.InMemory();
        QCOMPARE(MemoryPage[0xFE + 199], std::uint8_t(200 * 3 - 2));

        address = 0xFFFE;   // the flash starts erased
        link.Programm(address, {0xE0, 0x40}, 2);
        address = 0xFFFE;
        std::uint8_t high = 0;
        link.InByte(address, high);
        QCOMPARE(high, std::uint8_t(0xE0));
        QVERIFY(f.reports.failures.isEmpty());
    }
};

QTEST_MAIN(BoardLinkTest)
#include "BoardLink_test.moc"
