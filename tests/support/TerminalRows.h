// The terminal's Hex mode row as a user reads it: 16 bytes in hex, a bar,
// and the same bytes as characters.
#pragma once

#include <QString>

inline QString HexRow(const QString& hex, const QString& chars)
{
    return hex.leftJustified(48, ' ') + " | " + chars.leftJustified(16, ' ');
}
