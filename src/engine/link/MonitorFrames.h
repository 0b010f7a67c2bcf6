// The frames the host sends to the board's monitor and the checks of its
// replies. Plain functions: every multi-byte value travels high byte first,
// and a frame ends with the byte that makes offsets 1 to the end sum to 0
// modulo 256 (the letter at offset 0 stays outside the sum).
#pragma once

#include "engine/state/TargetState.h"

#include <QByteArray>
#include <array>
#include <cstdint>
#include <span>

namespace monitor {

constexpr std::uint8_t Ack = 6;
constexpr std::uint8_t Nak = 21;
constexpr std::uint8_t JmpExtended = 0x7E;   // the code buffer's jump to PC in "X"
constexpr std::uint8_t Nop = 0x01;
constexpr std::uint8_t JsrExtended = 0xBD;   // the code buffer's call of a routine stepped over

constexpr int MaxReadCount = 256;    // travels as count 0
constexpr int MaxWriteCount = 255;
constexpr int StepCodeSize = 4;      // the code buffer at $0009-$000C
constexpr int StepReplySize = 11;    // a byte, the nine registers, the checksum
constexpr int AckReplySize = 1;

// The save area's layout: A, B, IX, IY, SP (high byte first), CCR.
using SaveAreaBytes = std::array<std::uint8_t, SaveAreaSize>;
SaveAreaBytes SaveAreaOf(const CpuRegisterRecord& registers);
// A, B, IX, IY, SP and CCR from the nine bytes of the save area; PC and the
// eight flags are left alone (SplitCCR derives the flags).
void RegistersFromSaveArea(std::span<const std::uint8_t, SaveAreaSize> bytes, CpuRegisterRecord& registers);

// Appends the checksum byte to a frame.
void AppendChecksum(QByteArray& frame);
// A reply is valid when its offsets 1 to the last byte sum to 0.
bool ChecksumValid(const QByteArray& reply);

// "R": count 1 to 256 bytes at address (held to 16 bits).
QByteArray ReadFrame(std::int32_t address, int count);
// The size of the monitor's answer to a read of count bytes.
constexpr int ReadReplySize(int count) { return count + 2; }
// The data of a read reply: offsets 1 to size - 2.
QByteArray ReadReplyData(const QByteArray& reply);

// "W" and "P": 1 to 255 bytes at address.
QByteArray WriteFrame(std::int32_t address, std::span<const std::uint8_t> data);
QByteArray ProgramFrame(std::int32_t address, std::span<const std::uint8_t> data);
// "E": 45 45 45 76.
QByteArray EraseFrame();

// "S": the registers of CpuRegisters (PC aside) and four code bytes for $0009.
QByteArray StepFrame(const CpuRegisterRecord& registers, const std::array<std::uint8_t, StepCodeSize>& code);
// "X": the registers and a jump to their PC.
QByteArray ExecuteFrame(const CpuRegisterRecord& registers);

} // namespace monitor
