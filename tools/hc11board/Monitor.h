// The board's serial monitor and the CPU it hands over to: takes the host's
// bytes, answers frames with their exact replies, steps the code buffer, and
// runs the user's program free until a reset.
//
//   R  reply: 1 byte (ACK), the n bytes, their checksum
//   W  writes RAM, registers, PIA (the flash stays), reply ACK
//   P  programs (flash bits only cleared), reply ACK
//   E  erases the flash to $FF, reply ACK, or NAK when erasing fails
//   S  loads $0000-$000C, runs from $0009 until $000D, stores the registers at
//      $0000-$0008 and replies ACK, A, B, IX, IY, SP, CCR, checksum
//   X  loads the same way, replies ACK and runs the program until a reset
//
// A reset restarts the monitor and sends ResetReport. Time comes in as a
// millisecond count from the caller, so the monitor itself never sleeps.
#pragma once

#include "hc11board/BoardMemory.h"
#include "hc11board/FrameParser.h"
#include "hc11/Bus.h"
#include "hc11/Cpu.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace hc11board {

constexpr std::uint8_t Ack = 6;
constexpr std::uint8_t Nak = 21;

// What the monitor sends after a reset: a new line, its prompt, and the three
// letters "B" by which the host knows a reset.
constexpr std::array<std::uint8_t, 6> ResetReport = {'\r', '\n', '>', 'B', 'B', 'B'};

constexpr std::uint16_t SaveArea = 0x0000;
constexpr std::uint16_t CodeBuffer = 0x0009;
constexpr std::uint16_t ReturnPoint = 0x000D;

// The stack pointer the monitor leaves in its save area after a reset.
constexpr std::uint16_t ResetStackPointer = 0x00FF;

struct MonitorSettings {
    // E-cycles a step may take before the monitor gives it up unanswered.
    std::uint64_t stepBudget = 10'000'000;
    // Answer every erase with NAK, as a board whose flash is worn out.
    bool eraseFails = false;
    // How long an erase keeps the monitor busy before it answers.
    std::uint64_t eraseMs = 0;
};

class Monitor {
public:
    explicit Monitor(MonitorSettings settings = {});

    enum class Mode { Listening, Erasing, Running };
    Mode CurrentMode() const { return mode_; }

    // Bytes from the line at the time nowMs: frames while listening, the SCI's
    // input during a free run, nothing while busy erasing.
    void Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs);
    void Receive(const std::vector<std::uint8_t>& bytes, std::uint64_t nowMs)
    {
        Receive(bytes.data(), bytes.size(), nowMs);
    }

    // Lets time pass for work that waits on the clock (an erase in progress).
    void Service(std::uint64_t nowMs);
    // The next time Service has something to do, if any.
    std::optional<std::uint64_t> NextDeadlineMs() const;

    // Runs the free-running program for about this many E-cycles; returns the
    // cycles spent (0 when not running).
    std::uint64_t Run(std::uint64_t cycles);

    // A hardware reset: the CPU and devices restart, RAM keeps its contents,
    // the monitor initialises its save area, forgets any partial frame and
    // sends its report.
    void Reset();

    // The host closed the line: a frame it had begun will never be finished.
    void LineDropped() { parser_.Clear(); }

    // Everything sent to the host since the last call, in order.
    std::vector<std::uint8_t> TakeOutput();

    BoardMemory& Memory() { return memory_; }
    hc11::Cpu& Cpu() { return cpu_; }
    const FrameParser& Parser() const { return parser_; }
    // Steps given up because they ran out of cycles.
    int AbandonedSteps() const { return abandonedSteps_; }

private:
    // The CPU's view of the board.
    class CpuBus final : public hc11::Bus {
    public:
        explicit CpuBus(BoardMemory& memory) : memory_(memory) {}
        std::uint8_t Read(std::uint16_t address) override { return memory_.CpuRead(address); }
        void Write(std::uint16_t address, std::uint8_t value) override { memory_.CpuWrite(address, value); }

    private:
        BoardMemory& memory_;
    };

    void Execute(const Frame& frame, std::uint64_t nowMs);
    void ReplyRead(const Frame& frame);
    void StoreBytes(const Frame& frame, bool program);
    void StartErase(std::uint64_t nowMs);
    void FinishErase();
    // Puts frame offsets 1 to 13 at $0000-$000C and the CPU at $0009.
    void LoadCodeBuffer(const Frame& frame);
    void Step();
    // One instruction (or interrupt, or idle cycle) with the SCI kept in time.
    void StepCpu();
    // The monitor's code at the return point: save the CPU, send the registers.
    void ArriveAtReturnPoint();
    void InitialiseSaveArea();
    void Send(std::uint8_t byte)
    {
        CollectSciOutput();
        output_.push_back(byte);
    }
    void CollectSciOutput();

    MonitorSettings settings_;
    BoardMemory memory_;
    CpuBus bus_{memory_};
    hc11::Cpu cpu_{bus_};
    FrameParser parser_;
    Mode mode_ = Mode::Listening;
    std::uint64_t eraseDoneMs_ = 0;
    std::vector<std::uint8_t> output_;
    int abandonedSteps_ = 0;
};

} // namespace hc11board
