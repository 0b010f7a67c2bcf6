// The serial control of the main window: one port, opened by number, with a
// receive buffer that the program reads in blocks, a receive event raised at a
// threshold, and CTS as the board's presence line.
#pragma once

#include "platform/SerialDevice.h"

#include <QObject>
#include <QTimer>

class MSComm : public QObject {
    Q_OBJECT
public:
    static constexpr int ReceiveBufferSize = 2048;
    static constexpr int TransmitBufferSize = 512;
    // Values of CommEvent.
    static constexpr int comEvReceive = 2;
    static constexpr int comEvCTS = 3;

    explicit MSComm(QObject* parent = nullptr);
    ~MSComm() override;

    // Port number 1 to 4; takes effect at the next opening.
    int CommPort() const { return commPort_; }
    void SetCommPort(int port) { commPort_ = port; }

    bool PortOpen() const { return device_ != nullptr; }
    // Opens or closes. Opening can fail: then false, and ErrorDescription says why.
    bool SetPortOpen(bool open);
    QString ErrorDescription() const { return error_; }

    // True while CTS is high; a line without modem signals counts as high,
    // a closed port as low.
    bool CTSHolding();

    // Received bytes that raise OnComm with CommEvent 2; 0 turns the event off.
    int RThreshold() const { return rThreshold_; }
    void SetRThreshold(int count);

    // Bytes in the receive buffer, including any that have just arrived, so a
    // busy poll without an event loop still sees them.
    int InBufferCount();
    // Only 0 is meaningful: empties the receive buffer.
    void SetInBufferCount(int count);

    // How many bytes Input takes; 0 takes all.
    int InputLen() const { return inputLen_; }
    void SetInputLen(int count) { inputLen_ = count; }

    QByteArray Input();
    void Output(const QByteArray& bytes);
    // Returns once bytes have arrived, or after at most the given time.
    void WaitForInput(std::chrono::milliseconds most);

    // What raised the last OnComm: comEvReceive or comEvCTS.
    int CommEvent() const { return commEvent_; }

    // Where devices come from; tests plug in a scripted line.
    void SetDeviceFactory(SerialDeviceFactory factory) { factory_ = std::move(factory); }

    // Looks at the CTS line and raises comEvCTS on a change; runs on a timer
    // while the port is open, since the platform gives no event for it.
    void PollLines();

signals:
    void OnComm();

private:
    void Pull();
    void ScheduleReceiveEvent();
    void RaiseReceiveEvent();
    void LineLost();

    SerialDeviceFactory factory_;
    std::unique_ptr<SerialDevice> device_;
    QByteArray buffer_;
    QByteArray waiting_;   // read from the device, behind a full buffer
    QString error_;
    QTimer linePoll_;
    int commPort_ = 1;
    int rThreshold_ = 0;
    int inputLen_ = 0;
    int commEvent_ = 0;
    bool lastCts_ = false;
    bool pulling_ = false;
    bool receiveEventPending_ = false;
};

// The device path of a port number: the one set in this process, else the
// settings store's (section "Settings", keys "PortDevice1" to "PortDevice4").
QString PortDevicePath(int port);
// Sets the path for the next opening; the store gets it at exit.
void SetPortDevicePath(int port, const QString& path);
// The path a port number has when the store has none.
QString DefaultPortDevicePath(int port);
