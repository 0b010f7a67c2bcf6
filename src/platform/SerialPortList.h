// The serial ports the system reports, for the user to pick the device
// behind a port number.
#pragma once

#include <QList>
#include <QString>
#include <optional>

struct SerialPortChoice {
    QString path;    // "/dev/ttyUSB0"
    QString label;   // the path with what the system knows of the device
};

// "/dev/ttyUSB0 - FT232R USB UART (USB 0403:6001)"; the parts that are not
// known are left out.
QString SerialPortLabel(const QString& path, const QString& description, std::optional<quint16> vendor,
                        std::optional<quint16> product);

// USB serial adapters (ttyUSB, ttyACM) first, then the rest, each by path.
QList<SerialPortChoice> AvailableSerialPorts();
