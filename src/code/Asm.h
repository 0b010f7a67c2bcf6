// What the debugger knows of M68HC11 machine code: the text of one instruction,
// where the flow goes after it, and how many E-clock cycles it takes. All of it
// reads ProgramBuffer at ProgramBase; only the bit branches look at the target.
#pragma once

#include <cstdint>
#include <string>

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
// False only when a bit branch could not read its tested byte from the target.
bool NextAddress(std::int32_t& Address, bool& FollowCalls, std::int32_t& Next, bool& Jump,
                 bool& Call, bool& Return);

// E-clock cycles of the instruction at Address (0 for illegal sequences and WAI).
std::uint8_t ClockCycles(std::int32_t& Address);
