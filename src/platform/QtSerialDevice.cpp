#include "platform/QtSerialDevice.h"

#include "platform/DeviceAccess.h"

#include <cerrno>
#include <poll.h>

namespace {
// True when the line at this descriptor has gone: its peer closed, the
// device was pulled, or the descriptor is no longer valid.
bool HungUp(int fd)
{
    pollfd line{fd, POLLIN, 0};
    if (::poll(&line, 1, 0) < 0)
        return errno != EINTR;
    return (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}
}  // namespace

QtSerialDevice::QtSerialDevice(const QString& path) : path_(path)
{
    port_.setPortName(path);
    // The receive buffer is MSComm's; Qt's own stays unbounded so that nothing
    // is held back in the driver.
    port_.setReadBufferSize(0);
    QObject::connect(&port_, &QSerialPort::readyRead, [this] {
        if (DataArrived)
            DataArrived();
    });
    QObject::connect(&port_, &QSerialPort::errorOccurred, [this](QSerialPort::SerialPortError e) {
        if (e != QSerialPort::ResourceError && e != QSerialPort::ReadError)
            return;
        if (!port_.isOpen() || lost_)
            return;
        if (!HungUp(port_.handle())) {
            // A read notice whose bytes a poll in between had already taken
            // reads nothing, and Qt calls that an error (naming whatever errno
            // was left); as a resource error it even stops reading. The line
            // is still there: clear it and read on.
            port_.clearError();
            if (e == QSerialPort::ResourceError)
                port_.setReadBufferSize(0);   // turns the read notice back on
            return;
        }
        // A vanished peer makes every further read fail; report it once.
        lost_ = true;
        if (LineLost)
            LineLost();
    });
}

bool QtSerialDevice::Open(QString& error)
{
    if (port_.portName().isEmpty()) {
        error = QStringLiteral("No device is set for this port");
        return false;
    }
    lost_ = false;
    if (!port_.open(QIODevice::ReadWrite)) {
        // The most common first hurdle: the device is a group's, and the fix is
        // to join it. Qt's PermissionError also stands for a busy or locked
        // device, so the access itself is asked.
        error = port_.error() == QSerialPort::PermissionError && AccessRefused(path_) ? PermissionAdvice(path_)
                                                                                      : port_.errorString();
        return false;
    }
    const bool set = port_.setBaudRate(38400) && port_.setDataBits(QSerialPort::Data8)
        && port_.setParity(QSerialPort::NoParity) && port_.setStopBits(QSerialPort::OneStop)
        && port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!set) {
        error = port_.errorString();
        port_.close();
        return false;
    }
    port_.clear();
    return true;
}

void QtSerialDevice::Close()
{
    if (port_.isOpen())
        port_.close();
}

QByteArray QtSerialDevice::ReadAvailable()
{
    if (!port_.isOpen() || lost_)
        return {};
    // Without an event loop Qt reads the driver only here; a timeout is no error.
    if (!port_.waitForReadyRead(0) && port_.error() == QSerialPort::TimeoutError)
        port_.clearError();
    return port_.readAll();
}

void QtSerialDevice::WaitForInput(std::chrono::milliseconds most)
{
    if (!port_.isOpen() || lost_)
        return;
    // Wakes as soon as the driver has bytes; what it reads waits in the port.
    if (!port_.waitForReadyRead(static_cast<int>(most.count())) && port_.error() == QSerialPort::TimeoutError)
        port_.clearError();
}

void QtSerialDevice::Write(const QByteArray& bytes)
{
    if (!port_.isOpen() || lost_)
        return;
    port_.write(bytes);
    port_.flush();
}

std::optional<bool> QtSerialDevice::Cts()
{
    if (!port_.isOpen())
        return std::nullopt;
    const QSerialPort::PinoutSignals lines = port_.pinoutSignals();
    // A line without modem signals (a pseudo-terminal) refuses the query.
    if (port_.error() != QSerialPort::NoError) {
        port_.clearError();
        return std::nullopt;
    }
    return lines.testFlag(QSerialPort::ClearToSendSignal);
}
