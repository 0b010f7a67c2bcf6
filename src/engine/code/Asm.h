// What the debugger knows of M68HC11 machine code: the text of one instruction,
// where the flow goes after it, and how many E-clock cycles it takes. All of it
// reads ProgramBuffer at ProgramBase; only the bit branches look at the target.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

// Reads out.size() bytes of the target from address on; false when the read
// failed (the target link's Reader(), or a plain array in a test).
using TargetBytesReader = std::function<bool(std::int32_t address, std::span<std::uint8_t> out)>;

// Decodes the instruction at Address into its length (1 to 5) and its text.
// An Address below ProgramBase gets 65536 added and keeps it, so that a page
// that wraps past $FFFF reads from the start of the buffer.
void DisAsmLine(std::int32_t& Address, std::int16_t& Length, std::string& Text);

// The Length that DisAsmLine gives, without the text.
std::int16_t InstructionLength(std::int32_t Address);

// True when all bytes of the instruction at Address lie inside ProgramBuffer.
bool InstructionInBuffer(std::int32_t Address);

// Sets the eight Flag records of CpuRegisters from CCR bits 0 to 7.
void SplitCCR();

// Works out the address of the instruction that runs after the one at Address.
// A bit branch reads its tested byte, RTI its return address, through
// ReadTarget; false only when that read failed (an empty reader reads nothing).
bool NextAddress(std::int32_t& Address, bool& FollowCalls, std::int32_t& Next, bool& Jump,
                 bool& Call, bool& Return, const TargetBytesReader& ReadTarget);

// E-clock cycles of the instruction at Address (0 for illegal sequences and WAI).
std::uint8_t ClockCycles(std::int32_t& Address);
