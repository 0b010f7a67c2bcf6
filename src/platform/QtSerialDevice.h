// A serial port device at a device path (/dev/ttyUSB0, /dev/pts/3 ...).
#pragma once

#include "platform/SerialDevice.h"

#include <QSerialPort>

class QtSerialDevice : public SerialDevice {
public:
    explicit QtSerialDevice(const QString& path);

    bool Open(QString& error) override;
    void Close() override;
    QByteArray ReadAvailable() override;
    void WaitForInput(std::chrono::milliseconds most) override;
    void Write(const QByteArray& bytes) override;
    std::optional<bool> Cts() override;

private:
    QString path_;
    QSerialPort port_;
    bool lost_ = false;
};
