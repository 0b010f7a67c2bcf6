// The two monitors the frame tests run against, driven alike: the built-in
// monitor of hc11board, which answers a frame at once, and the monitor
// firmware (monitor.s19 in the program folder) on the chip as `hc11board
// --rom` runs it, whose chip runs until its answer is complete.
#pragma once

#include "BoardFrames.h"
#include "hc11/asm/S19Reader.h"
#include "hc11board/Monitor.h"
#include "hc11board/RomRunner.h"
#include "support/BoardProcess.h"

#include <QFile>
#include <memory>
#include <utility>

namespace boardtest {

inline const hc11::as11::S19Image& FirmwareImage()
{
    static const hc11::as11::S19Image image = [] {
        QFile file(qEnvironmentVariable("ORVANE_PROGRAM_DIR") + QStringLiteral("/monitor.s19"));
        return hc11::as11::ReadS19(file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "");
    }();
    return image;
}

class BoardUnderTest {
public:
    explicit BoardUnderTest(bool firmware, hc11board::MonitorSettings settings = {})
    {
        if (firmware)
            rom_ = std::make_unique<hc11board::RomRunner>(FirmwareImage(), hc11board::FlashTimingFor(settings));
        else
            monitor_ = std::make_unique<hc11board::Monitor>(settings);
        program_ = rom_ ? static_cast<hc11board::BoardProgram*>(rom_.get()) : monitor_.get();
        RunFor(0);   // the firmware's report of its first start
    }

    hc11board::BoardProgram& Program() { return *program_; }
    hc11board::Board& Hardware() { return rom_ ? rom_->Hardware() : monitor_->Memory(); }
    hc11::Cpu& Cpu() { return Hardware().Hc11().Core(); }
    hc11board::Monitor& BuiltIn() { return *monitor_; }

    // Bytes onto the line, nothing run; nowMs is the built-in monitor's clock.
    void Feed(const Bytes& bytes, std::uint64_t nowMs = 0) { program_->Receive(bytes.data(), bytes.size(), nowMs); }

    // A frame and what comes back: for "X" the first byte, as the host takes
    // it; otherwise replySize bytes, or with 0 all until the line is quiet.
    Bytes Send(const Bytes& bytes, std::uint64_t nowMs = 0, std::size_t replySize = 0)
    {
        Feed(bytes, nowMs);
        return RunFor(bytes[0] == 'X' ? 1 : replySize);
    }
    // The reset button, and what the monitor sends then.
    Bytes Reset()
    {
        program_->Reset();
        return RunFor(0);
    }

    // Runs the board in slices of 2000 E cycles until count bytes came;
    // with count 0 until 20 slices passed without one, or 1500 without any
    // (an erase takes about 1000). Bytes behind the count wait for the next
    // call, as a free run's first ones behind the ACK of "X".
    Bytes RunFor(std::size_t count)
    {
        Bytes out = std::exchange(pending_, {});
        for (int slice = 0, quiet = 0;; ++slice) {
            const Bytes more = program_->TakeOutput();
            out.insert(out.end(), more.begin(), more.end());
            quiet = more.empty() ? quiet + 1 : 0;
            if ((count > 0 ? out.size() >= count : quiet > (out.empty() ? 1500 : 20)) || slice == 4000)
                break;
            program_->Run(2000);
        }
        if (count > 0 && out.size() > count) {
            pending_.assign(out.begin() + std::ptrdiff_t(count), out.end());
            out.resize(count);
        }
        return out;
    }

private:
    std::unique_ptr<hc11board::Monitor> monitor_;
    std::unique_ptr<hc11board::RomRunner> rom_;
    hc11board::BoardProgram* program_ = nullptr;
    Bytes pending_;
};

} // namespace boardtest
