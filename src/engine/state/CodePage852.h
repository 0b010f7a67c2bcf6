// The DOS code page 852 (Central European), in which the board's programs
// write and which the terminal's keys send: box drawing, shades and the
// accented letters of Central Europe above 127, ASCII below.
#pragma once

#include <QChar>
#include <cstdint>
#include <optional>

// The character a byte stands for; bytes below 128 are ASCII.
QChar FromCodePage852(std::uint8_t byte);
// The byte of a character; nullopt for a character the code page lacks.
std::optional<std::uint8_t> ToCodePage852(QChar c);
