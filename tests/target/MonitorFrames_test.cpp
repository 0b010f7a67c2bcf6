// The frames that carry registers; the others are checked on the wire by the
// exchange tests.
#include <QtTest>

#include "target/MonitorFrames.h"

class MonitorFramesTest : public QObject {
    Q_OBJECT
private slots:
    void stepAndExecuteFramesCarryTheRegisters()
    {
        const CpuRegisterRecord r{.A = 0x12, .B = 0x34, .IX = 0x5678, .IY = 0x9ABC, .PC = 0xE123, .SP = 0x01F0, .CCR = 0xD5};
        QCOMPARE(monitor::StepFrame(r, {0x86, 0x42, 0x01, 0x01}), QByteArray::fromHex("53 1234 5678 9ABC 01F0 D5 86420101 06"));
        // "X": the code buffer jumps to the host's PC.
        QCOMPARE(monitor::ExecuteFrame(r), QByteArray::fromHex("58 1234 5678 9ABC 01F0 D5 7EE123 4E"));
    }
};

QTEST_APPLESS_MAIN(MonitorFramesTest)
#include "MonitorFrames_test.moc"
