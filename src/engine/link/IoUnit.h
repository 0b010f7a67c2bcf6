// The input-output unit: a one-byte input port and a one-byte output port
// with eight LEDs, each with a handshake flag, mapped into the simulated
// target's memory:
//   $6000 in flag   1 while the user's byte waits; a program read of $6001 clears it
//   $6001 in data   the byte the user entered
//   $6002 out flag  1 while the program's byte is unacknowledged; Read clears it
//   $6003 out data  the byte the program wrote
// Values are kept as eight binary digits, most significant first, and every
// conversion goes through that form. The window mirrors this state.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace iounit {

// Each gives "error" when it cannot convert; the from* give eight binary digits.
QString removeLeadingZeroes(const QString& Value);
QString fromInt(const QString& Value, const QString& valType);   // "signed" or "unsigned"
QString fromHex(const QString& Value);
QString fromBinary(const QString& Value);
QString toInt(const QString& Value, const QString& valType);     // " 5", "-1"
QString toHex(const QString& Value);                             // "0F"
QString toBCD(const QString& Value);                             // "42"

const QStringList& InFormats();    // "Signed", "Unsigned", "Hex", "Binary"
const QStringList& OutFormats();   // "Signed", "Unsigned", "Hex", "BCD"

}  // namespace iounit

class IoUnit {
public:
    static constexpr std::int32_t InFlagAddress = 0x6000;
    static constexpr std::int32_t InDataAddress = 0x6001;
    static constexpr std::int32_t OutFlagAddress = 0x6002;

    // The panels' fields as the window shows them.
    QString TextIn;
    QString TextOut = QStringLiteral("0");
    QString TextInBinary = QStringLiteral("00000000");
    QString TextOutBinary = QStringLiteral("00000000");
    QString InFormat = QStringLiteral("Signed");
    QString OutFormat = QStringLiteral("Signed");
    bool InFresh = false;     // "Data Pending"
    bool OutFresh = false;    // "Data Ready"
    bool LedPower = false;    // "LED Power On"

    // What the simulator and the host's writes tell the unit.
    void setInFresh(std::uint8_t setting) { InFresh = setting & 1; }
    void setOutFresh(std::uint8_t setting) { OutFresh = setting & 1; }
    void setInDataRegister(std::uint8_t Data);
    void setOutDataRegister(std::uint8_t Data);

    // A format chosen (or refreshed): TextIn (unless empty) and TextOut
    // show the data register in it; the binary fields do not change.
    void SetInFormat(const QString& format);
    void SetOutFormat(const QString& format);

    // The Enter button: TextIn in InFormat becomes the in data, pending in
    // target memory. False for a wrong value: TextIn is emptied, nothing
    // else changes.
    bool Enter();
    // The Read button: the out flag cleared; the data stays shown.
    void Read();

    // LED 0 is the leftmost, labelled "1", showing bit 7.
    bool LedLit(int led) const;
};
