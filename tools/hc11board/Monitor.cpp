#include "hc11board/Monitor.h"

#include "hc11/chip/RegisterMap.h"

namespace hc11board {

namespace {

namespace reg = hc11::chip::reg;

std::uint8_t NegatedSum(const std::uint8_t* bytes, std::size_t count)
{
    std::uint8_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum = std::uint8_t(sum + bytes[i]);
    return std::uint8_t(-sum);
}

// The monitor's own start-up code outlasts the window in which the
// time-protected registers take a write, as a ROM monitor's does.
constexpr std::uint64_t StartUpCycles = 64;

// The SCI may still owe a preamble, the character in its shifter and the one
// in its data register.
constexpr int FramesInFlight = 3;

} // namespace

FlashTiming FlashTimingFor(const MonitorSettings& settings)
{
    FlashTiming timing;
    timing.eraseFails = settings.eraseFails;
    if (settings.eraseMs > 0)
        timing.sectorEraseCycles = timing.chipEraseCycles = settings.eraseMs * (EClockHertzOfBoard / 1000);
    return timing;
}

Monitor::Monitor(MonitorSettings settings) : settings_(settings), board_(FlashTimingFor(settings))
{
    // Under the monitor an illegal opcode is passed over in a cycle, as this
    // board always did: the vectors are the user's flash, erased as often as
    // not, and a trap through $FFFF would run wild over RAM. A ROM gets the
    // chip's trap.
    Cpu().SetOnChip(false);
    Start();
}

void Monitor::StepChip()
{
    if (board_.Hc11().Step() == 0)
        ++Cpu().cycles;
}

void Monitor::Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs)
{
    Service(nowMs);
    for (std::size_t i = 0; i < count; ++i) {
        switch (mode_) {
        case Mode::Running:
            board_.Hc11().SciReceive(bytes[i]);
            break;
        case Mode::Erasing:
            break;   // busy with the flash: the byte is lost, as on the board
        case Mode::Listening:
            if (std::optional<Frame> frame = parser_.Feed(bytes[i], nowMs))
                Execute(*frame, nowMs);
            break;
        }
    }
}

void Monitor::Service(std::uint64_t nowMs)
{
    if (mode_ == Mode::Erasing && nowMs >= eraseDoneMs_)
        FinishErase();
}

std::optional<std::uint64_t> Monitor::NextDeadlineMs() const
{
    if (mode_ == Mode::Erasing)
        return eraseDoneMs_;
    return std::nullopt;
}

void Monitor::Execute(const Frame& frame, std::uint64_t nowMs)
{
    switch (frame.Letter()) {
    case letter::Read: ReplyRead(frame); break;
    case letter::Write: StoreBytes(frame, false); break;
    case letter::Program: StoreBytes(frame, true); break;
    case letter::Erase: StartErase(nowMs); break;
    case letter::Step:
        LoadCodeBuffer(frame);
        Step();
        break;
    case letter::Execute:
        LoadCodeBuffer(frame);
        Send(Ack);
        mode_ = Mode::Running;
        break;
    }
}

void Monitor::ReplyRead(const Frame& frame)
{
    const int count = frame.bytes[3] == 0 ? 256 : frame.bytes[3];
    std::vector<std::uint8_t> data(count);
    for (int i = 0; i < count; ++i)
        data[i] = board_.Peek(std::uint16_t(frame.Address() + i));
    Send(Ack);
    output_.insert(output_.end(), data.begin(), data.end());
    Send(NegatedSum(data.data(), data.size()));
}

void Monitor::StoreBytes(const Frame& frame, bool program)
{
    const int count = frame.bytes[3];
    for (int i = 0; i < count; ++i) {
        const auto address = std::uint16_t(frame.Address() + i);
        if (!program) {
            board_.Poke(address, frame.bytes[4 + i]);
        } else if (!board_.Program(address, frame.bytes[4 + i])) {
            Send(Nak);   // the bytes behind the failed one are not tried
            return;
        }
    }
    Send(Ack);
}

void Monitor::StartErase(std::uint64_t nowMs)
{
    if (settings_.eraseMs == 0) {
        FinishErase();
        return;
    }
    mode_ = Mode::Erasing;
    eraseDoneMs_ = nowMs + settings_.eraseMs;
}

void Monitor::FinishErase()
{
    mode_ = Mode::Listening;
    parser_.Clear();
    if (settings_.eraseFails) {
        Send(Nak);
        return;
    }
    board_.EraseFlash();
    Send(Ack);
}

void Monitor::LoadCodeBuffer(const Frame& frame)
{
    for (int i = 1; i <= 13; ++i)
        board_.Poke(std::uint16_t(SaveArea + i - 1), frame.bytes[i]);
    hc11::Cpu& cpu = Cpu();
    hc11::Registers& r = cpu.regs;
    r.a = frame.bytes[1];
    r.b = frame.bytes[2];
    r.ix = std::uint16_t(frame.bytes[3] << 8 | frame.bytes[4]);
    r.iy = std::uint16_t(frame.bytes[5] << 8 | frame.bytes[6]);
    r.sp = std::uint16_t(frame.bytes[7] << 8 | frame.bytes[8]);
    r.ccr = frame.bytes[9];
    r.pc = CodeBuffer;
    cpu.SetState(hc11::RunState::Running);
}

void Monitor::Step()
{
    hc11::chip::Chip& chip = board_.Hc11();
    const std::uint64_t start = chip.Cycles();
    while (Cpu().regs.pc != ReturnPoint) {
        if (chip.Cycles() - start >= settings_.stepBudget) {
            ++abandonedSteps_;
            TakeOver();
            return;
        }
        StepChip();
    }
    ArriveAtReturnPoint();
}

std::uint64_t Monitor::Run(std::uint64_t cycles)
{
    hc11::chip::Chip& chip = board_.Hc11();
    const std::uint64_t start = chip.Cycles();
    while (mode_ == Mode::Running && chip.Cycles() - start < cycles) {
        if (Cpu().regs.pc == ReturnPoint) {
            ArriveAtReturnPoint();
            mode_ = Mode::Listening;
            break;
        }
        StepChip();
    }
    CollectSciOutput();
    return chip.Cycles() - start;
}

void Monitor::ArriveAtReturnPoint()
{
    const hc11::Registers& r = Cpu().regs;
    const std::uint8_t saved[9] = {
        r.a, r.b,
        std::uint8_t(r.ix >> 8), std::uint8_t(r.ix),
        std::uint8_t(r.iy >> 8), std::uint8_t(r.iy),
        std::uint8_t(r.sp >> 8), std::uint8_t(r.sp),
        r.ccr,
    };
    for (int i = 0; i < 9; ++i)
        board_.Poke(std::uint16_t(SaveArea + i), saved[i]);
    TakeOver();
    Send(Ack);
    output_.insert(output_.end(), saved, saved + 9);
    Send(NegatedSum(saved, 9));
}

void Monitor::TakeOver()
{
    hc11::chip::Chip& chip = board_.Hc11();
    hc11::Cpu& cpu = chip.Core();
    cpu.regs.ccr |= hc11::ccr::S | hc11::ccr::X | hc11::ccr::I;
    cpu.SetState(hc11::RunState::Waiting);
    for (int i = 0; i < FramesInFlight && chip.SerialInterface().Sending(); ++i)
        chip.RunUntil(chip.Cycles() + chip.SerialInterface().FrameCycles());
    CollectSciOutput();
}

void Monitor::Start()
{
    hc11::chip::Chip& chip = board_.Hc11();
    TakeOver();
    chip.RunUntil(chip.Cycles() + StartUpCycles);
    chip.Poke(std::uint16_t(chip.RegisterBase() + reg::BAUD), MonitorBaud);
    chip.Poke(std::uint16_t(chip.RegisterBase() + reg::SCCR2), MonitorSccr2);
    const std::uint8_t saved[9] = {
        0, 0, 0, 0, 0, 0,
        std::uint8_t(ResetStackPointer >> 8), std::uint8_t(ResetStackPointer),
        hc11::ccr::S | hc11::ccr::X | hc11::ccr::I,
    };
    for (int i = 0; i < 9; ++i)
        board_.Poke(std::uint16_t(SaveArea + i), saved[i]);
}

void Monitor::Reset()
{
    CollectSciOutput();   // what the SCI had sent before the reset is on the wire already
    board_.Reset();
    Start();
    parser_.Clear();
    mode_ = Mode::Listening;
    output_.insert(output_.end(), ResetReport.begin(), ResetReport.end());
}

std::vector<std::uint8_t> Monitor::TakeOutput()
{
    CollectSciOutput();
    std::vector<std::uint8_t> taken;
    taken.swap(output_);
    return taken;
}

} // namespace hc11board
