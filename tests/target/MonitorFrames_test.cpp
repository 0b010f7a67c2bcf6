// The frames that carry registers and the reply check. The read, write,
// program and erase frames and the save area are checked on the wire by the
// exchange tests.
#include <QtTest>

#include "target/MonitorFrames.h"

class MonitorFramesTest : public QObject {
    Q_OBJECT
private slots:
    void stepAndExecuteFramesCarryTheRegisters()
    {
        CpuRegisterRecord r;
        r.A = 0x12;
        r.B = 0x34;
        r.IX = 0x5678;
        r.IY = 0x9ABC;
        r.SP = 0x01F0;
        r.CCR = 0xD5;
        r.PC = 0xE123;
        QCOMPARE(monitor::StepFrame(r, {0x86, 0x42, 0x01, 0x01}), QByteArray::fromHex("53 1234 5678 9ABC 01F0 D5 86420101 06"));
        // "X": the code buffer jumps to the host's PC.
        QCOMPARE(monitor::ExecuteFrame(r), QByteArray::fromHex("58 1234 5678 9ABC 01F0 D5 7EE123 4E"));
    }

    void replyChecksumIgnoresTheFirstByte()
    {
        QVERIFY(monitor::ChecksumValid(QByteArray::fromHex("06AABB9B")));
        QVERIFY(monitor::ChecksumValid(QByteArray::fromHex("FFAABB9B")));
        QVERIFY(!monitor::ChecksumValid(QByteArray::fromHex("06AABB9C")));
        QVERIFY(!monitor::ChecksumValid(QByteArray::fromHex("06ABBB9B")));
    }
};

QTEST_APPLESS_MAIN(MonitorFramesTest)
#include "MonitorFrames_test.moc"
