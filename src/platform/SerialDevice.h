// The device under MSComm: a real serial port, or in tests a scripted line.
// MSComm owns one for as long as the port is open.
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

class SerialDevice {
public:
    virtual ~SerialDevice() = default;

    // Opens the line at 38400 bits per second, 8 data bits, no parity, 1 stop
    // bit, no handshake. On failure gives false and a description of the cause.
    virtual bool Open(QString& error) = 0;
    virtual void Close() = 0;

    // The bytes that have arrived by now, without waiting for more.
    virtual QByteArray ReadAvailable() = 0;
    // Waits until bytes arrive, for at most the given time; a line that
    // cannot be waited on just lets the time pass.
    virtual void WaitForInput(std::chrono::milliseconds most) { std::this_thread::sleep_for(most); }
    // Hands the bytes to the line at once, not at the next event-loop pass.
    virtual void Write(const QByteArray& bytes) = 0;

    // The CTS line, or nothing for a line without modem signals (a pseudo-terminal).
    virtual std::optional<bool> Cts() = 0;

    // Set by the owner: called when bytes arrive, and when the line fails for
    // good (the peer vanished); the owner then closes the port.
    std::function<void()> DataArrived;
    std::function<void()> LineLost;
};

// Makes the device for a port number 1 to 4.
using SerialDeviceFactory = std::function<std::unique_ptr<SerialDevice>(int port)>;
