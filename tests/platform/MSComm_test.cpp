#include "platform/MSComm.h"
#include "platform/QtSerialDevice.h"
#include "support/FakeSerialLine.h"
#include "support/PseudoTerminal.h"

#include <QSignalSpy>

namespace {
// A port on a scripted line, its events counted.
struct ScriptedPort {
    FakeSerialLine line;
    MSComm comm;
    QSignalSpy events{&comm, &MSComm::OnComm};
    ScriptedPort() { comm.SetDeviceFactory(line.Factory()); }
};
}  // namespace

class MSCommTest : public QObject {
    Q_OBJECT
private slots:
    void receiveEventComesAtTheThresholdFromTheEventLoop()
    {
        ScriptedPort p;
        QVERIFY(p.comm.SetPortOpen(true));
        p.comm.SetRThreshold(6);
        p.line.Arrive("12345");
        QCoreApplication::processEvents();
        QCOMPARE(p.events.count(), 0);   // below the threshold
        p.line.Arrive("6");
        QCOMPARE(p.events.count(), 0);   // never from inside the arrival itself
        QTRY_COMPARE(p.events.count(), 1);
        QVERIFY(p.comm.CommEvent() == MSComm::comEvReceive);
        p.comm.SetInBufferCount(0);

        // Emptied by an exchange before the event loop ran: no event.
        p.line.Arrive("abcdefg");
        p.comm.SetInBufferCount(0);
        QTest::qWait(20);
        QCOMPARE(p.events.count(), 1);
        // Threshold 0 keeps the event off, however much arrives.
        p.comm.SetRThreshold(0);
        p.line.Arrive("abcdefgh");
        QTest::qWait(20);
        QVERIFY(p.events.count() == 1 && p.comm.InBufferCount() == 8);
    }

    void inputLenAndTheBufferLimit()
    {
        ScriptedPort p;
        QVERIFY(p.comm.SetPortOpen(true));
        p.line.Arrive("0123456789");
        p.comm.SetInputLen(4);
        QVERIFY(p.comm.Input() == "0123" && p.comm.InBufferCount() == 6);
        p.comm.SetInputLen(0);
        QCOMPARE(p.comm.Input(), QByteArray("456789"));

        p.line.Arrive(QByteArray(2000, 'a'));
        p.line.Arrive(QByteArray(100, 'b'));
        QVERIFY(p.comm.InBufferCount() == MSComm::ReceiveBufferSize && p.comm.Input().count('b') == 48);
        // The rest waited behind the full buffer: nothing is lost.
        p.line.Arrive("c");
        QCOMPARE(p.comm.Input(), QByteArray(52, 'b') + "c");
    }

    // The host's frames and CTS on a pseudo-terminal are every board test's.
    void pseudoTerminalIsReadWithoutWaitingKeptAfterAnEmptyReadAndClosedWhenItsPeerGoes()
    {
        PseudoTerminal pty;
        QVERIFY(pty.IsValid());
        MSComm comm;
        const QString path = pty.DevicePath();
        comm.SetDeviceFactory([path](int) -> std::unique_ptr<SerialDevice> { return std::make_unique<QtSerialDevice>(path); });
        QVERIFY2(comm.SetPortOpen(true), qPrintable(comm.ErrorDescription()));
        pty.Write(QByteArray::fromHex("000102030D0AFF"));
        QElapsedTimer clock;
        clock.start();
        while (comm.InBufferCount() < 7 && clock.elapsed() < 2000) {
        }   // a busy poll that never waits: the count alone reads the line
        QCOMPARE(comm.Input(), QByteArray::fromHex("000102030D0AFF"));

        QSignalSpy events(&comm, &MSComm::OnComm);
        comm.SetRThreshold(6);

        // A handler that runs before the line's read notice in the same pass takes the bytes; the notice
        // reads nothing, an error named after the errno left over (EAGAIN even stops Qt's reading).
        // The line is still there and announces what follows.
        QMetaObject::invokeMethod(&comm, [&comm] { comm.InBufferCount(); errno = EAGAIN; }, Qt::QueuedConnection);
        pty.Write("abc");
        QTest::qWait(50);
        QVERIFY(comm.PortOpen());
        pty.Write("def");
        QTRY_COMPARE(events.count(), 1);
        QCOMPARE(comm.Input(), QByteArray("abcdef"));

        pty.Close();   // its read errors would come in a loop
        QTRY_VERIFY_WITH_TIMEOUT(!comm.PortOpen(), 2000);
        QCOMPARE(comm.InBufferCount(), 0);
    }
};

QTEST_MAIN(MSCommTest)
#include "MSComm_test.moc"
