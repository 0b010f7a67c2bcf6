#include "platform/SerialPortList.h"

#include <QSerialPortInfo>
#include <algorithm>

QString SerialPortLabel(const QString& path, const QString& description, std::optional<quint16> vendor,
                        std::optional<quint16> product)
{
    QString label = path;
    if (!description.trimmed().isEmpty())
        label += QStringLiteral(" - ") + description.trimmed();
    if (vendor && product)
        label += QStringLiteral(" (USB %1:%2)")
                     .arg(*vendor, 4, 16, QLatin1Char('0'))
                     .arg(*product, 4, 16, QLatin1Char('0'));
    return label;
}

QList<SerialPortChoice> AvailableSerialPorts()
{
    QList<SerialPortChoice> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const std::optional<quint16> vendor =
            info.hasVendorIdentifier() ? std::optional<quint16>(info.vendorIdentifier()) : std::nullopt;
        const std::optional<quint16> product =
            info.hasProductIdentifier() ? std::optional<quint16>(info.productIdentifier()) : std::nullopt;
        ports.append({info.systemLocation(), SerialPortLabel(info.systemLocation(), info.description(), vendor, product)});
    }
    const auto adapter = [](const QString& path) {
        return path.contains(QStringLiteral("ttyUSB")) || path.contains(QStringLiteral("ttyACM"));
    };
    std::stable_sort(ports.begin(), ports.end(), [&](const SerialPortChoice& a, const SerialPortChoice& b) {
        if (adapter(a.path) != adapter(b.path))
            return adapter(a.path);
        return a.path < b.path;
    });
    return ports;
}
