// The target operations through the real serial control against hc11board on a pseudo-terminal, with its
// built-in monitor and with the monitor firmware run by --rom (frame bytes are the exchange test's; the memory
// page on the board is the memory window's).

#include "engine/code/S19Download.h"
#include "engine/state/TargetState.h"
#include "hc11/asm/Assembler.h"
#include "support/BoardProcess.h"
#include "support/DebuggerFixture.h"
#include "support/WorkFolder.h"

namespace {

// A download's window, with nothing to show and no Cancel.
struct QuietDownload : DownloadView {
    void ShowProgress(int) override {}
    void ShowRecord(std::int32_t, int) override {}
    void LetEventsRun() override {}
    bool CancelRequested() const override { return false; }
};

const char* const GreetingProgram = R"(
        ORG     $E000
START   LDS     #$01FF
        LDAA    #$41
        INCA
        LDX     #TEXT
NEXT    LDAA    0,X
        BEQ     DONE
WAIT    LDAB    $102E
        BPL     WAIT
        STAA    $102F
        INX
        BRA     NEXT
DONE    BRA     DONE
TEXT    FCC     'Hello, board'
        FCB     0
        ORG     $FFFE
        FDB     START
)";

} // namespace

class BoardLinkTest : public QObject {
    Q_OBJECT
private slots:
    // A free run's output reaches the terminal until the reset report.
    void downloadStepsAndARunWithOutput_data() { BothMonitors(); }
    void downloadStepsAndARunWithOutput()
    {
        QFETCH(bool, firmware);
        const auto assembled = hc11::as11::AssembleSource(GreetingProgram, "HELLO");
        QVERIFY(assembled.errors.empty());
        WorkFolder folder;
        QVERIFY(folder.Write("hello.s19", QByteArray::fromStdString(assembled.s19)));
        BoardProcess board(firmware ? BoardProcess::Firmware() : QStringList{});
        QVERIFY(!board.DevicePath().isEmpty());
        DebuggerFixture f(board.DevicePath());

        QuietDownload view;
        const DownloadResult result = DownloadMachineCode(f.link, folder.Path("hello.s19"), view);
        QCOMPARE(tuple(result.kind, result.written), tuple(DownloadResult::Kind::Ended, true));
        QCOMPARE(CpuRegisters.PC, 0xE000);   // from the reset vector just programmed
        // A long write reads back whole across a page boundary.
        std::int32_t address = 0x20FE;
        std::vector<std::uint8_t> bytes(200), back;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = std::uint8_t(i * 3 + 1);
        f.link.OutBytes(address, bytes, 200);
        f.link.InBytes(address, back, 200);
        QCOMPARE(back, bytes);

        CpuRegisters.CCR = 0xD0;
        for (int i = 0; i < 3; ++i)
            f.debugger.StepInto();   // LDS, LDAA, INCA
        QCOMPARE(tuple(CpuRegisters.PC, CpuRegisters.SP, CpuRegisters.A), tuple(0xE006, 0x01FF, 0x42));

        f.view.terminal.clear();
        f.debugger.RunFree();
        QVERIFY(BoardRunning);
        QVERIFY(QTest::qWaitFor([&] {
            f.debugger.PassQuietOutput();
            return f.view.terminal == "Hello, board";
        }, 5000));
        board.Reset();
        QTRY_VERIFY_WITH_TIMEOUT(!BoardRunning, 5000);
        QCOMPARE(tuple(CpuRegisters.PC, f.reports.failures.size()), tuple(0xE000, 0));
        QCOMPARE(f.view.terminal, QByteArray("Hello, board\r\n>"));   // the report's first bytes
    }
};

QTEST_MAIN(BoardLinkTest)
#include "BoardLink_test.moc"
