#include "engine/state/CodePage852.h"

#include <array>

namespace {
// Bytes 128 to 255.
constexpr std::array<char16_t, 128> Upper = {
    u'\u00C7', u'\u00FC', u'\u00E9', u'\u00E2', u'\u00E4', u'\u016F', u'\u0107', u'\u00E7',
    u'\u0142', u'\u00EB', u'\u0150', u'\u0151', u'\u00EE', u'\u0179', u'\u00C4', u'\u0106',
    u'\u00C9', u'\u0139', u'\u013A', u'\u00F4', u'\u00F6', u'\u013D', u'\u013E', u'\u015A',
    u'\u015B', u'\u00D6', u'\u00DC', u'\u0164', u'\u0165', u'\u0141', u'\u00D7', u'\u010D',
    u'\u00E1', u'\u00ED', u'\u00F3', u'\u00FA', u'\u0104', u'\u0105', u'\u017D', u'\u017E',
    u'\u0118', u'\u0119', u'\u00AC', u'\u017A', u'\u010C', u'\u015F', u'\u00AB', u'\u00BB',
    u'\u2591', u'\u2592', u'\u2593', u'\u2502', u'\u2524', u'\u00C1', u'\u00C2', u'\u011A',
    u'\u015E', u'\u2563', u'\u2551', u'\u2557', u'\u255D', u'\u017B', u'\u017C', u'\u2510',
    u'\u2514', u'\u2534', u'\u252C', u'\u251C', u'\u2500', u'\u253C', u'\u0102', u'\u0103',
    u'\u255A', u'\u2554', u'\u2569', u'\u2566', u'\u2560', u'\u2550', u'\u256C', u'\u00A4',
    u'\u0111', u'\u0110', u'\u010E', u'\u00CB', u'\u010F', u'\u0147', u'\u00CD', u'\u00CE',
    u'\u011B', u'\u2518', u'\u250C', u'\u2588', u'\u2584', u'\u0162', u'\u016E', u'\u2580',
    u'\u00D3', u'\u00DF', u'\u00D4', u'\u0143', u'\u0144', u'\u0148', u'\u0160', u'\u0161',
    u'\u0154', u'\u00DA', u'\u0155', u'\u0170', u'\u00FD', u'\u00DD', u'\u0163', u'\u00B4',
    u'\u00AD', u'\u02DD', u'\u02DB', u'\u02C7', u'\u02D8', u'\u00A7', u'\u00F7', u'\u00B8',
    u'\u00B0', u'\u00A8', u'\u02D9', u'\u0171', u'\u0158', u'\u0159', u'\u25A0', u'\u00A0',
};
}  // namespace

QChar FromCodePage852(std::uint8_t byte)
{
    return byte < 128 ? QChar(byte) : QChar(Upper[byte - 128]);
}

std::optional<std::uint8_t> ToCodePage852(QChar c)
{
    if (c.unicode() < 128)
        return static_cast<std::uint8_t>(c.unicode());
    for (std::size_t i = 0; i < Upper.size(); ++i)
        if (Upper[i] == c.unicode())
            return static_cast<std::uint8_t>(128 + i);
    return std::nullopt;
}
