#include "hc11board/Monitor.h"

namespace hc11board {

namespace {

std::uint8_t NegatedSum(const std::uint8_t* bytes, std::size_t count)
{
    std::uint8_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum = std::uint8_t(sum + bytes[i]);
    return std::uint8_t(-sum);
}

} // namespace

Monitor::Monitor(MonitorSettings settings) : settings_(settings)
{
    cpu_.Reset();
    InitialiseSaveArea();
}

void Monitor::Receive(const std::uint8_t* bytes, std::size_t count, std::uint64_t nowMs)
{
    Service(nowMs);
    for (std::size_t i = 0; i < count; ++i) {
        switch (mode_) {
        case Mode::Running:
            memory_.sci.Receive(bytes[i]);
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
        data[i] = memory_.Peek(std::uint16_t(frame.Address() + i));
    Send(Ack);
    output_.insert(output_.end(), data.begin(), data.end());
    Send(NegatedSum(data.data(), data.size()));
}

void Monitor::StoreBytes(const Frame& frame, bool program)
{
    const int count = frame.bytes[3];
    for (int i = 0; i < count; ++i) {
        const auto address = std::uint16_t(frame.Address() + i);
        if (program)
            memory_.Program(address, frame.bytes[4 + i]);
        else
            memory_.Poke(address, frame.bytes[4 + i]);
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
    memory_.EraseFlash();
    Send(Ack);
}

void Monitor::LoadCodeBuffer(const Frame& frame)
{
    for (int i = 1; i <= 13; ++i)
        memory_.Poke(std::uint16_t(SaveArea + i - 1), frame.bytes[i]);
    hc11::Registers& r = cpu_.regs;
    r.a = frame.bytes[1];
    r.b = frame.bytes[2];
    r.ix = std::uint16_t(frame.bytes[3] << 8 | frame.bytes[4]);
    r.iy = std::uint16_t(frame.bytes[5] << 8 | frame.bytes[6]);
    r.sp = std::uint16_t(frame.bytes[7] << 8 | frame.bytes[8]);
    r.ccr = frame.bytes[9];
    r.pc = CodeBuffer;
    cpu_.SetState(hc11::RunState::Running);
}

void Monitor::Step()
{
    const std::uint64_t start = cpu_.cycles;
    while (cpu_.regs.pc != ReturnPoint) {
        if (cpu_.cycles - start >= settings_.stepBudget) {
            ++abandonedSteps_;
            CollectSciOutput();
            return;
        }
        StepCpu();
    }
    ArriveAtReturnPoint();
}

std::uint64_t Monitor::Run(std::uint64_t cycles)
{
    const std::uint64_t start = cpu_.cycles;
    while (mode_ == Mode::Running && cpu_.cycles - start < cycles) {
        if (cpu_.regs.pc == ReturnPoint) {
            ArriveAtReturnPoint();
            mode_ = Mode::Listening;
            break;
        }
        StepCpu();
    }
    CollectSciOutput();
    return cpu_.cycles - start;
}

void Monitor::StepCpu()
{
    Sci& sci = memory_.sci;
    sci.Advance(cpu_.cycles);
    cpu_.SetMaskableRequest(sci.InterruptRequested(memory_.Peek(Sccr2Address)) ? SciVector : 0);
    // An illegal opcode counts no cycles in the core; on the board time still
    // passes, and a walk through illegal bytes must use up a step's budget.
    if (cpu_.Step() == 0)
        ++cpu_.cycles;
}

void Monitor::ArriveAtReturnPoint()
{
    const hc11::Registers& r = cpu_.regs;
    const std::uint8_t saved[9] = {
        r.a, r.b,
        std::uint8_t(r.ix >> 8), std::uint8_t(r.ix),
        std::uint8_t(r.iy >> 8), std::uint8_t(r.iy),
        std::uint8_t(r.sp >> 8), std::uint8_t(r.sp),
        r.ccr,
    };
    for (int i = 0; i < 9; ++i)
        memory_.Poke(std::uint16_t(SaveArea + i), saved[i]);
    Send(Ack);
    output_.insert(output_.end(), saved, saved + 9);
    Send(NegatedSum(saved, 9));
}

void Monitor::InitialiseSaveArea()
{
    const std::uint8_t saved[9] = {
        0, 0, 0, 0, 0, 0,
        std::uint8_t(ResetStackPointer >> 8), std::uint8_t(ResetStackPointer),
        hc11::ccr::S | hc11::ccr::X | hc11::ccr::I,
    };
    for (int i = 0; i < 9; ++i)
        memory_.Poke(std::uint16_t(SaveArea + i), saved[i]);
}

void Monitor::Reset()
{
    CollectSciOutput();   // what the SCI had sent before the reset is on the wire already
    memory_.ResetDevices();
    cpu_.SetXirq(false);
    cpu_.SetMaskableRequest(0);
    cpu_.Reset();
    InitialiseSaveArea();
    parser_.Clear();
    mode_ = Mode::Listening;
    output_.insert(output_.end(), ResetReport.begin(), ResetReport.end());
}

void Monitor::CollectSciOutput()
{
    std::vector<std::uint8_t>& line = memory_.sci.lineOutput;
    output_.insert(output_.end(), line.begin(), line.end());
    line.clear();
}

std::vector<std::uint8_t> Monitor::TakeOutput()
{
    CollectSciOutput();
    std::vector<std::uint8_t> taken;
    taken.swap(output_);
    return taken;
}

} // namespace hc11board
