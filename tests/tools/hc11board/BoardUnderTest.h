// The two monitors the frame tests run against, driven the same way: the
// built-in monitor of hc11board, and the monitor firmware (monitor.s19 in the
// program folder) on the chip as `hc11board --rom` runs it. The built-in
// monitor answers a frame at once; the firmware's chip runs in E cycles
// until its answer is complete.
#pragma once

#include "BoardFrames.h"
#include "hc11/asm/S19Reader.h"
#include "hc11board/Monitor.h"
#include "hc11board/RomRunner.h"

#include <QFile>
#include <QTest>
#include <memory>

namespace boardtest {

inline const hc11::as11::S19Image& FirmwareImage()
{
    static const hc11::as11::S19Image image = [] {
        QFile file(qEnvironmentVariable("ORVANE_PROGRAM_DIR") + QStringLiteral("/monitor.s19"));
        return file.open(QIODevice::ReadOnly) ? hc11::as11::ReadS19(file.readAll().toStdString())
                                              : hc11::as11::S19Image{{}, 1, "no monitor.s19"};
    }();
    return image;
}

// The rows of a test that runs against both monitors.
inline void BothMonitors()
{
    QTest::addColumn<bool>("firmware");
    QTest::newRow("built-in") << false;
    QTest::newRow("firmware") << true;
}

class BoardUnderTest {
public:
    explicit BoardUnderTest(bool firmware, hc11board::MonitorSettings settings = {})
    {
        if (firmware) {
            rom_ = std::make_unique<hc11board::RomRunner>(FirmwareImage(), hc11board::FlashTimingFor(settings));
            program_ = rom_.get();
            RunFor(0);   // the report of the first start
            pending_.clear();
        } else {
            monitor_ = std::make_unique<hc11board::Monitor>(settings);
            program_ = monitor_.get();
        }
    }

    bool IsFirmware() const { return rom_ != nullptr; }
    hc11board::BoardProgram& Program() { return *program_; }
    hc11board::Board& Hardware() { return rom_ ? rom_->Hardware() : monitor_->Memory(); }
    hc11::Cpu& Cpu() { return Hardware().Hc11().Core(); }
    // The built-in monitor itself, for what only it has.
    hc11board::Monitor& BuiltIn() { return *monitor_; }

    // Bytes onto the line; nothing runs. nowMs is the built-in monitor's
    // clock; the firmware's is its chip.
    void Feed(const Bytes& bytes, std::uint64_t nowMs = 0) { program_->Receive(bytes.data(), bytes.size(), nowMs); }

    // A frame out and what comes back: for "X" the first byte, the host's
    // one; otherwise all that comes until the line is quiet, or replySize
    // bytes when that is given.
    Bytes Send(const Bytes& bytes, std::uint64_t nowMs = 0, std::size_t replySize = 0)
    {
        Feed(bytes, nowMs);
        if (!rom_)
            return program_->TakeOutput();
        const bool execute = !bytes.empty() && bytes[0] == 'X';
        Bytes reply = RunFor(execute ? 1 : replySize);
        if (execute)
            pending_.assign(reply.begin() + std::min<std::size_t>(1, reply.size()), reply.end()), reply.resize(std::min<std::size_t>(1, reply.size()));
        else
            pending_.clear();
        return reply;
    }

    // A free-running program's output, until count bytes came (or a generous limit passed).
    Bytes RunUntilOutput(std::size_t count)
    {
        Bytes out = std::move(pending_);
        pending_.clear();
        for (int slice = 0; slice < 400 && out.size() < count; ++slice) {
            program_->Run(Slice);
            const Bytes more = program_->TakeOutput();
            out.insert(out.end(), more.begin(), more.end());
        }
        return out;
    }

    // The reset button, and what the monitor sends then.
    Bytes Reset()
    {
        program_->Reset();
        return rom_ ? RunFor(0) : program_->TakeOutput();
    }

private:
    static constexpr std::uint64_t Slice = 2000;           // 1 ms of the 2 MHz E clock
    static constexpr std::uint64_t QuietCycles = 40'000;   // no byte for 20 ms: the answer is complete
    // Nothing at all for 1.5 s: no answer (an erase takes 1 s).
    static constexpr std::uint64_t NoAnswerCycles = 3'000'000;

    // Runs the firmware's chip until count bytes came (0: until quiet).
    Bytes RunFor(std::size_t count)
    {
        Bytes out;
        const std::uint64_t start = program_->Cycles();
        std::uint64_t lastByte = start;
        for (;;) {
            program_->Run(Slice);
            const Bytes more = program_->TakeOutput();
            out.insert(out.end(), more.begin(), more.end());
            const std::uint64_t now = program_->Cycles();
            if (!more.empty())
                lastByte = now;
            if (count > 0 && out.size() >= count)
                return out;
            if (out.empty() ? now - start >= NoAnswerCycles : now - lastByte >= QuietCycles)
                return out;
        }
    }

    std::unique_ptr<hc11board::Monitor> monitor_;
    std::unique_ptr<hc11board::RomRunner> rom_;
    hc11board::BoardProgram* program_ = nullptr;
    Bytes pending_;   // a free run's first bytes, come with the ACK of "X"
};

} // namespace boardtest
