#include <QtTest>

#include "platform/MSComm.h"
#include "platform/QtSerialDevice.h"
#include "platform/SettingsStore.h"
#include "platform/TickCount.h"
#include "support/FakeSerialLine.h"
#include "support/PseudoTerminal.h"
#include "support/TestSettings.h"

#include <QSignalSpy>

namespace {
// A clock that moves only when the test says so.
struct ManualClock {
    std::uint32_t now = 1000;
    ManualClock() { SetTickCountSource([this] { return now; }); }
    ~ManualClock() { SetTickCountSource({}); }
};

// Points port 1 at the pseudo-terminal.
void UsePseudoTerminal(MSComm& comm, const PseudoTerminal& pty)
{
    const QString path = pty.DevicePath();
    comm.SetDeviceFactory([path](int) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<QtSerialDevice>(path);
    });
}
}  // namespace

class MSCommTest : public QObject {
    Q_OBJECT
private slots:
    // ---- With a scripted line ----------------------------------------------
    void openingTellsWhyItFailed()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        comm.SetCommPort(3);
        line.FailOpen("Device or resource busy");
        QVERIFY(!comm.SetPortOpen(true));
        QVERIFY(!comm.PortOpen());
        QCOMPARE(comm.ErrorDescription(), QString("Device or resource busy"));
        QCOMPARE(line.LastPort(), 3);
        QVERIFY(!comm.CTSHolding());   // a closed port holds nothing

        line.FailOpen({});
        QVERIFY(comm.SetPortOpen(true));
        QVERIFY(comm.SetPortOpen(true));   // already open: no second device
        QCOMPARE(line.OpenCount(), 1);
        QVERIFY(comm.SetPortOpen(false));
        QVERIFY(!line.IsOpen());
    }

    void receiveEventComesAtTheThresholdFromTheEventLoop()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        QSignalSpy events(&comm, &MSComm::OnComm);
        comm.SetRThreshold(6);

        line.Arrive("12345");
        QCoreApplication::processEvents();
        QCOMPARE(events.count(), 0);   // below the threshold
        line.Arrive("6");
        QCOMPARE(events.count(), 0);   // never from inside the arrival itself
        QTRY_COMPARE(events.count(), 1);
        QCOMPARE(comm.CommEvent(), int(MSComm::comEvReceive));
        QCOMPARE(comm.Input(), QByteArray("123456"));

        // Threshold 0 keeps the event off, however much arrives.
        comm.SetRThreshold(0);
        line.Arrive("abcdefgh");
        QTest::qWait(20);
        QCOMPARE(events.count(), 1);
        QCOMPARE(comm.InBufferCount(), 8);
    }

    void eventIsDroppedWhenAnExchangeTookTheBytesFirst()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        QSignalSpy events(&comm, &MSComm::OnComm);
        comm.SetRThreshold(6);
        line.Arrive("abcdefg");
        comm.SetInBufferCount(0);   // emptied before the event loop ran
        QTest::qWait(20);
        QCOMPARE(events.count(), 0);
    }

    void busyPollSeesBytesWithoutAnEventLoop()
    {
        ManualClock clock;
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        line.SetReplyDelay(30);
        line.SetResponder([](const QByteArray& frame) { return frame.toUpper(); });
        comm.Output("abc");
        QCOMPARE(line.TakeWritten(), QByteArray("abc"));
        QCOMPARE(comm.InBufferCount(), 0);
        clock.now += 29;
        QCOMPARE(comm.InBufferCount(), 0);
        clock.now += 1;
        QCOMPARE(comm.InBufferCount(), 3);
        QCOMPARE(comm.Input(), QByteArray("ABC"));
    }

    void inputTakesInputLenBytesAndEmptyingDropsTheRest()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        line.Arrive("0123456789");
        comm.SetInputLen(4);
        QCOMPARE(comm.Input(), QByteArray("0123"));
        QCOMPARE(comm.InBufferCount(), 6);
        comm.SetInputLen(0);
        QCOMPARE(comm.Input(), QByteArray("456789"));
        QCOMPARE(comm.Input(), QByteArray());

        line.Arrive("old");
        comm.SetInBufferCount(0);
        line.Arrive("new");
        QCOMPARE(comm.Input(), QByteArray("new"));
    }

    void receiveBufferHoldsAtMost2048Bytes()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        line.Arrive(QByteArray(2000, 'a'));
        line.Arrive(QByteArray(100, 'b'));
        QCOMPARE(comm.InBufferCount(), MSComm::ReceiveBufferSize);
        const QByteArray all = comm.Input();
        QCOMPARE(all.count('b'), 48);   // the overrun loses the newest bytes
        line.Arrive("c");
        QCOMPARE(comm.Input(), QByteArray("c"));
    }

    void ctsChangesRaiseEvent3()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        QVERIFY(comm.CTSHolding());
        QSignalSpy events(&comm, &MSComm::OnComm);
        comm.PollLines();
        QCOMPARE(events.count(), 0);   // no change, no event
        line.SetCTS(false);
        QTRY_COMPARE(events.count(), 1);   // the port's own poll notices
        QCOMPARE(comm.CommEvent(), int(MSComm::comEvCTS));
        QVERIFY(!comm.CTSHolding());
        line.SetCTS(true);
        comm.PollLines();
        QCOMPARE(events.count(), 2);

        line.SetModemLines(false);   // no modem lines at all reads as high
        QVERIFY(comm.CTSHolding());
    }

    void vanishedPeerClosesThePort()
    {
        FakeSerialLine line;
        MSComm comm;
        comm.SetDeviceFactory(line.Factory());
        QVERIFY(comm.SetPortOpen(true));
        QSignalSpy events(&comm, &MSComm::OnComm);
        line.Vanish();
        QTRY_VERIFY(!comm.PortOpen());
        QVERIFY(!line.IsOpen());
        QCOMPARE(events.count(), 1);   // the presence line drops with it
        QCOMPARE(comm.CommEvent(), int(MSComm::comEvCTS));
        QVERIFY(comm.SetPortOpen(true));   // and it can be opened again
    }

    void portNumbersMapToDevicePathsFromTheStore()
    {
        TestSettings store;
        QCOMPARE(PortDevicePath(1), QString("/dev/ttyS0"));
        QCOMPARE(PortDevicePath(2), QString("/dev/ttyUSB0"));
        QCOMPARE(PortDevicePath(4), QString("/dev/ttyACM0"));
        QCOMPARE(PortDevicePath(5), QString());
        SaveSetting("Settings", "PortDevice2", "/dev/pts/7");
        QCOMPARE(PortDevicePath(2), QString("/dev/pts/7"));

        MSComm comm;
        comm.SetCommPort(0);
        QVERIFY(!comm.SetPortOpen(true));
        QVERIFY(!comm.ErrorDescription().isEmpty());
    }

    // ---- With a pseudo-terminal ---------------------------------------------
    void pseudoTerminalCarriesBytesBothWays()
    {
        PseudoTerminal pty;
        QVERIFY(pty.IsValid());
        MSComm comm;
        UsePseudoTerminal(comm, pty);
        QVERIFY2(comm.SetPortOpen(true), qPrintable(comm.ErrorDescription()));
        QVERIFY(comm.CTSHolding());   // no modem lines: taken as present

        const QByteArray frame = QByteArray::fromHex("52E000010D0A00FF");
        comm.Output(frame);   // goes out at once, without the event loop
        QCOMPARE(pty.Read(frame.size()), frame);

        pty.Write(QByteArray::fromHex("000102030D0AFF"));
        QElapsedTimer clock;
        clock.start();
        while (comm.InBufferCount() < 7 && clock.elapsed() < 2000) {
        }   // a busy poll, as the exchanges do it
        QCOMPARE(comm.Input(), QByteArray::fromHex("000102030D0AFF"));
    }

    void pseudoTerminalRaisesTheReceiveEvent()
    {
        PseudoTerminal pty;
        MSComm comm;
        UsePseudoTerminal(comm, pty);
        QVERIFY(comm.SetPortOpen(true));
        QSignalSpy events(&comm, &MSComm::OnComm);
        comm.SetRThreshold(6);
        pty.Write("BBBBBB");
        QTRY_COMPARE(events.count(), 1);
        QCOMPARE(comm.Input(), QByteArray("BBBBBB"));
    }

    void pseudoTerminalWhosePeerVanishesIsClosed()
    {
        PseudoTerminal pty;
        MSComm comm;
        UsePseudoTerminal(comm, pty);
        QVERIFY(comm.SetPortOpen(true));
        pty.Close();
        QTRY_VERIFY_WITH_TIMEOUT(!comm.PortOpen(), 2000);
        QCOMPARE(comm.InBufferCount(), 0);
    }

    void missingDeviceFailsWithADescription()
    {
        MSComm comm;
        comm.SetDeviceFactory([](int) -> std::unique_ptr<SerialDevice> {
            return std::make_unique<QtSerialDevice>("/dev/orvane-no-such-port");
        });
        QVERIFY(!comm.SetPortOpen(true));
        QVERIFY(!comm.ErrorDescription().isEmpty());
    }
};

QTEST_MAIN(MSCommTest)
#include "MSComm_test.moc"
