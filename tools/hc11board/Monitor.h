// The board's serial monitor, answering the host's frames itself, and the
// chip it hands the user's program to:
//
//   R  reply: 1 byte (ACK), the n bytes, their checksum
//   W  writes RAM, registers, PIA (the flash stays), reply ACK
//   P  programs (flash bits only cleared), reply ACK
//   E  erases the flash to $FF, reply ACK, or NAK when erasing fails
//   S  loads $0000-$000C, runs from $0009 until $000D, stores the registers at
//      $0000-$0008 and replies ACK, A, B, IX, IY, SP, CCR, checksum
//   X  loads the same way, replies ACK and runs the program until a reset
//
// The program runs on the chip: what it sends leaves through the chip's SCI
// at the rate it programs (MonitorBaud until it does), and what the host
// sends during a free run arrives in that SCI. While the monitor itself has
// the board, the CPU is held in a wait that nothing wakes. A reset restarts
// the monitor and sends ResetReport.
#pragma once

#include "hc11board/Board.h"
#include "hc11board/BoardProgram.h"
#include "hc11board/FrameParser.h"

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

// The SCI as the monitor leaves it for a program: BAUD's prescaler 4 gives
// 31,250 bit/s from the 2 MHz E clock, the nearest rate below the line's
// 38,400; transmitter and receiver on.
constexpr std::uint8_t MonitorBaud = 0x20;
constexpr std::uint8_t MonitorSccr2 = 0x0C;

struct MonitorSettings {
    // E-cycles a step may take before the monitor gives it up unanswered.
    std::uint64_t stepBudget = 10'000'000;
    // Erases fail: the monitor answers NAK, the CPU sees DQ5.
    bool eraseFails = false;
    // How long an erase keeps the board busy (0: the monitor answers at
    // once, the CPU waits the datasheet's time).
    std::uint64_t eraseMs = 0;
};

// The flash's times with these settings.
FlashTiming FlashTimingFor(const MonitorSettings& settings);

class Monitor final : public BoardProgram {
public:
    explicit Monitor(MonitorSettings settings = {});

    enum class Mode { Listening, Erasing, Running };
    Mode CurrentMode() const { return mode_; }

    // Frames while listening, the SCI's input during a free run, nothing
    // while busy erasing.
    void Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs) override;
    void Receive(const std::vector<std::uint8_t>& bytes, std::uint64_t nowMs)
    {
        Receive(bytes.data(), bytes.size(), nowMs);
    }
    void Service(std::uint64_t nowMs) override;
    std::optional<std::uint64_t> NextDeadlineMs() const override;

    bool FreeRunning() const override { return mode_ == Mode::Running; }
    std::uint64_t Run(std::uint64_t cycles) override;
    std::uint64_t Cycles() const override { return board_.Hc11().Cycles(); }

    // The CPU and devices restart, RAM keeps its contents, the monitor
    // initialises the SCI and its save area, forgets any partial frame and
    // sends its report.
    void Reset() override;
    // A frame the host had begun will never be finished.
    void LineDropped() override { parser_.Clear(); }
    std::vector<std::uint8_t> TakeOutput() override;

    Board& Memory() { return board_; }
    hc11::Cpu& Cpu() { return board_.Hc11().Core(); }
    const FrameParser& Parser() const { return parser_; }
    // Steps given up because they ran out of cycles.
    int AbandonedSteps() const { return abandonedSteps_; }

private:
    void Execute(const Frame& frame, std::uint64_t nowMs);
    void ReplyRead(const Frame& frame);
    void StoreBytes(const Frame& frame, bool program);
    void StartErase(std::uint64_t nowMs);
    void FinishErase();
    // Puts frame offsets 1 to 13 at $0000-$000C and the CPU at $0009.
    void LoadCodeBuffer(const Frame& frame);
    void Step();
    // One instruction on the chip; an illegal opcode takes a cycle.
    void StepChip();
    // The monitor's code at the return point: save the CPU, send the registers.
    void ArriveAtReturnPoint();
    // The monitor's start after a reset: its SCI settings, its save area.
    void Start();
    // The monitor takes the board back: the CPU waits, the program's last
    // characters leave the SCI.
    void TakeOver();
    void Send(std::uint8_t byte)
    {
        CollectSciOutput();
        output_.push_back(byte);
    }
    void CollectSciOutput() { board_.TakeSciBytes(output_); }

    MonitorSettings settings_;
    Board board_;
    FrameParser parser_;
    Mode mode_ = Mode::Listening;
    std::uint64_t eraseDoneMs_ = 0;
    std::vector<std::uint8_t> output_;
    int abandonedSteps_ = 0;
};

} // namespace hc11board
