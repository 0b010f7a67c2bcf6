// The process-wide records that describe the target. One instance each, zero or
// empty at start, read and written directly by whoever the record table names.
// Truth values are plain bools; the address map is a set of constants.
#pragma once

#include <array>
#include <cstdint>

// ---- Target address map ----------------------------------------------------
constexpr std::int32_t SaveAreaAddress = 0x0000;      // A, B, IXH, IXL, IYH, IYL, SPH, SPL, CCR
constexpr std::int32_t SaveAreaSize = 9;
constexpr std::int32_t CodeBufferAddress = 0x0009;    // four instruction bytes of a step
constexpr std::int32_t CodeBufferSize = 4;
constexpr std::int32_t ReturnPointAddress = 0x000D;   // code reaching here returns to the monitor
constexpr std::int32_t RegisterBlockAddress = 0x1000;
constexpr std::int32_t RegisterBlockSize = 64;
constexpr std::int32_t PiaAddress = 0x1800;
constexpr std::int32_t PiaSize = 10;
constexpr std::int32_t IoUnitAddress = 0x6000;
constexpr std::int32_t IoUnitSize = 4;
constexpr std::int32_t FlashAddress = 0xE000;
constexpr std::int32_t FlashSize = 8192;
constexpr std::int32_t ResetVectorAddress = 0xFFFE;

// ---- Back-end and link state -----------------------------------------------
constexpr std::uint8_t BoardMode = 0;
constexpr std::uint8_t SimulatorMode = 1;

extern std::uint8_t TargetMode;    // 0 Board, 1 Simulator; nothing else is ever stored
extern bool BoardConnected;        // the last exchange succeeded
extern bool BoardRunning;          // the board runs user code freely
extern const char* StatusSuffix;   // "" or " (Reset)" behind "HC11 Board: Ready"
// Simulator mode runs the program on the whole chip (register block, timer,
// SCI, interrupts, a free run) rather than on flat memory.
extern bool SimulatePeripherals;
inline bool ChipSimulated()
{
    return TargetMode == SimulatorMode && SimulatePeripherals;
}
// The target can run the program freely: the board, or the simulated chip.
inline bool FreeRunAvailable()
{
    return TargetMode == BoardMode || ChipSimulated();
}

// ---- CPU registers: the host's copy ----------------------------------------
struct CpuRegisterRecord {
    std::uint8_t A = 0;
    std::uint8_t B = 0;
    std::int32_t IX = 0;
    std::int32_t IY = 0;
    std::int32_t PC = 0;   // kept by the host alone: no back-end holds a PC
    std::int32_t SP = 0;
    std::uint8_t CCR = 0;
    // CCR bits 0..7, derived from CCR by SplitCCR.
    bool FlagC = false;
    bool FlagV = false;
    bool FlagZ = false;
    bool FlagN = false;
    bool FlagI = false;
    bool FlagH = false;
    bool FlagX = false;
    bool FlagS = false;
};
extern CpuRegisterRecord CpuRegisters;

// ---- Copies of target memory ---------------------------------------------
// Each is overwritten whole by its refresh operation; none is written back.
extern std::array<std::uint8_t, RegisterBlockSize> RegisterBlock;   // at $1000
extern std::array<std::uint8_t, PiaSize> PiaBlock;                  // at $1800
extern std::array<std::uint8_t, 1024> MemoryPage;                   // at MemoryPageAddress
extern std::array<std::uint8_t, 256> ProgramBuffer;                 // at ProgramBase
extern std::array<std::uint8_t, 9> StackBuffer;                     // at SP when read
extern std::array<std::uint8_t, 50> StackViewBuffer;                // at StackViewAddress
extern std::array<std::uint8_t, 5> InstructionWindow;               // at PC when read
extern std::int32_t ProgramBase;
extern std::int32_t MemoryPageAddress;
extern std::int32_t StackViewAddress;

// The target's memory in simulator mode; unused in board mode.
extern std::array<std::uint8_t, 65536> TargetMemory;

// ---- Execution state -------------------------------------------------------
constexpr int MaxBreakpoints = 32;
extern std::array<std::int32_t, MaxBreakpoints> BreakpointTable;   // insertion order, no gaps
extern std::int16_t BreakpointCount;

extern bool StepExecute;      // MakeStep must run an instruction on the target
extern bool StepPlain;
extern bool StepOverActive;
extern bool StepOutActive;
extern bool PlayActive;
extern bool AnimateActive;
extern bool RunStopped;       // no Play/Animate loop runs, or it has been told to end
extern std::int32_t RunToAddress;
// E cycles counted; 64 bits, since a free run at full speed passes 2^31 in seconds.
extern std::int64_t ClockCount;

// Puts every record back to its start value (zero or empty); used at start and by tests.
void ResetTargetState();
