// The frames that carry registers, the reply check and the save area layout.
// The read, write, program and erase frames are checked on the wire by the
// exchange tests.
#include <QtTest>

#include "target/MonitorFrames.h"

namespace {
QByteArray Hex(const char* text)
{
    return QByteArray::fromHex(text);
}

CpuRegisterRecord SampleRegisters()
{
    CpuRegisterRecord r;
    r.A = 0x12;
    r.B = 0x34;
    r.IX = 0x5678;
    r.IY = 0x9ABC;
    r.SP = 0x01F0;
    r.CCR = 0xD5;
    r.PC = 0xE123;
    return r;
}
} // namespace

class MonitorFramesTest : public QObject {
    Q_OBJECT
private slots:
    void stepAndExecuteFramesCarryTheRegisters()
    {
        const CpuRegisterRecord r = SampleRegisters();
        const QByteArray step = monitor::StepFrame(r, {0x86, 0x42, 0x01, 0x01});
        QCOMPARE(step.size(), 15);
        QCOMPARE(step.left(14), Hex("53 1234 5678 9ABC 01F0 D5 86420101"));
        QVERIFY(monitor::ChecksumValid(step));
        // "X": the code buffer jumps to the host's PC.
        const QByteArray run = monitor::ExecuteFrame(r);
        QCOMPARE(run.size(), 14);
        QCOMPARE(run.left(13), Hex("58 1234 5678 9ABC 01F0 D5 7EE123"));
        QVERIFY(monitor::ChecksumValid(run));
    }

    void replyChecksumIgnoresTheFirstByte()
    {
        QVERIFY(monitor::ChecksumValid(Hex("06AABB9B")));
        QVERIFY(monitor::ChecksumValid(Hex("FFAABB9B")));
        QVERIFY(!monitor::ChecksumValid(Hex("06AABB9C")));
        QVERIFY(!monitor::ChecksumValid(Hex("06ABBB9B")));
    }

    void saveAreaLayoutRoundTrips()
    {
        const CpuRegisterRecord r = SampleRegisters();
        const monitor::SaveAreaBytes saved = monitor::SaveAreaOf(r);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(saved.data()), 9), Hex("1234 5678 9ABC 01F0 D5"));
        CpuRegisterRecord back;
        back.PC = 0x4321;
        monitor::RegistersFromSaveArea(saved, back);
        QCOMPARE(back.A, r.A);
        QCOMPARE(back.B, r.B);
        QCOMPARE(back.IX, r.IX);
        QCOMPARE(back.IY, r.IY);
        QCOMPARE(back.SP, r.SP);
        QCOMPARE(back.CCR, r.CCR);
        QCOMPARE(back.PC, 0x4321);   // no frame carries the PC back
    }
};

QTEST_APPLESS_MAIN(MonitorFramesTest)
#include "MonitorFrames_test.moc"
