#include <QtTest>

#include "platform/SerialPortList.h"

class SerialPortListTest : public QObject {
    Q_OBJECT
private slots:
    void labelsTellWhatIsKnown()
    {
        const struct { const char* description; std::optional<quint16> vendor, product; const char* label; } rows[] = {
            {"FT232R USB UART", 0x0403, 0x6001, "/dev/ttyUSB0 - FT232R USB UART (USB 0403:6001)"},
            {"  ", std::nullopt, std::nullopt, "/dev/ttyUSB0"},
            {"", 0x2341, std::nullopt, "/dev/ttyUSB0"},
            {"", 0x2341, 0x43, "/dev/ttyUSB0 (USB 2341:0043)"},
        };
        for (const auto& row : rows)
            QCOMPARE(SerialPortLabel("/dev/ttyUSB0", row.description, row.vendor, row.product), QString(row.label));
    }
};

QTEST_APPLESS_MAIN(SerialPortListTest)
#include "SerialPortList_test.moc"
