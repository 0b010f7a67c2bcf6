#include "engine/state/TargetState.h"
#include "engine/state/TargetMoves.h"

#include "engine/state/ByteHistory.h"

std::uint8_t TargetMode = BoardMode;
bool BoardConnected = false;
bool BoardRunning = false;
const char* StatusSuffix = "";
bool SimulatePeripherals = false;

CpuRegisterRecord CpuRegisters;

std::array<std::uint8_t, RegisterBlockSize> RegisterBlock{};
std::array<std::uint8_t, PiaSize> PiaBlock{};
std::array<std::uint8_t, 1024> MemoryPage{};
std::array<std::uint8_t, 256> ProgramBuffer{};
std::array<std::uint8_t, 9> StackBuffer{};
std::array<std::uint8_t, 50> StackViewBuffer{};
std::array<std::uint8_t, 5> InstructionWindow{};
std::int32_t ProgramBase = 0;
std::int32_t MemoryPageAddress = 0;
std::int32_t StackViewAddress = 0;

std::array<std::uint8_t, 65536> TargetMemory{};

std::array<std::int32_t, MaxBreakpoints> BreakpointTable{};
std::int16_t BreakpointCount = 0;

bool StepExecute = false;
bool StepPlain = false;
bool StepOverActive = false;
bool StepOutActive = false;
bool PlayActive = false;
bool AnimateActive = false;
bool RunStopped = false;
std::int32_t RunToAddress = 0;
std::int64_t ClockCount = 0;

void ResetTargetState()
{
    TargetMode = BoardMode;
    BoardConnected = BoardRunning = false;
    StatusSuffix = "";
    SimulatePeripherals = false;
    CpuRegisters = CpuRegisterRecord{};
    RegisterBlock.fill(0);
    PiaBlock.fill(0);
    MemoryPage.fill(0);
    ProgramBuffer.fill(0);
    StackBuffer.fill(0);
    StackViewBuffer.fill(0);
    InstructionWindow.fill(0);
    ProgramBase = MemoryPageAddress = StackViewAddress = 0;
    TargetMemory.fill(0);
    TargetMoves = 0;
    SeenBytes.Clear();
    BreakpointTable.fill(0);
    BreakpointCount = 0;
    StepExecute = StepPlain = StepOverActive = StepOutActive = false;
    PlayActive = AnimateActive = RunStopped = false;
    RunToAddress = 0;
    ClockCount = 0;
}
