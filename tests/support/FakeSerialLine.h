// A scripted serial line for MSComm: the test plays the board. It can refuse
// to open, hold CTS low, answer late, send garbage or vanish, which a
// pseudo-terminal cannot. Plug it in with
//     FakeSerialLine line;  comm.SetDeviceFactory(line.Factory());
#pragma once

#include "platform/SerialDevice.h"

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

class FakeSerialLine {
public:
    FakeSerialLine();
    ~FakeSerialLine();

    SerialDeviceFactory Factory() const;

    // Opening: the next openings fail with this description; empty lets them succeed.
    void FailOpen(const QString& description);
    int OpenCount() const;
    int LastPort() const;      // the port number of the last opening
    bool IsOpen() const;

    // CTS, high by default.
    void SetCTS(bool high);
    int CtsReads() const;      // how often the host has looked at CTS

    // Board to host, at once.
    void Arrive(const QByteArray& bytes);

    // The board's side of an exchange: called with each Output; what it returns
    // arrives once the tick count (GetTickCount) has moved on by the reply delay.
    void SetResponder(std::function<QByteArray(const QByteArray& written)> responder);
    void SetReplyDelay(std::uint32_t delayMs);

    // Host to board: everything written since the last TakeWritten.
    QByteArray TakeWritten();

    // The peer vanishes: the line reports a fatal read error.
    void Vanish();

    struct State;

private:
    std::shared_ptr<State> state_;
};
