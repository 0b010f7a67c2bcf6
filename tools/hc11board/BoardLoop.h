// The program's one loop: bytes between the serial line and what runs on the
// board (the monitor or a ROM), a free run held to real time, resets from
// standard input and SIGUSR1, and the end on SIGTERM or when the host closes
// the line.
#pragma once

#include "SerialLine.h"
#include "WireTiming.h"
#include "hc11board/BoardProgram.h"
#include "hc11board/Options.h"

#include <deque>
#include <string>

namespace hc11board {

class BoardLoop {
public:
    // Takes over SIGTERM, SIGINT, SIGHUP and SIGUSR1 at once, so that none of
    // them can end the process before the loop runs.
    BoardLoop(const Options& options, SerialLine& line, BoardProgram& program);
    ~BoardLoop();

    bool Ready() const { return signalFd_ >= 0; }
    // Switches the board on before its line is named: a ROM's first moments.
    void PowerOn();
    // Serves until the end; returns the exit code.
    int Run();

private:
    void HandleSignals();
    void HandleStandardInput();
    void HandleCommand(const std::string& command);
    // Reads what the host sent; false when the line has gone.
    bool ReadLine();
    // True while the host has the line open (always for a device).
    bool HostPresent();
    void HostGone();
    long long PollTimeoutNs(SteadyClock::time_point now) const;
    void RunProgram(SteadyClock::time_point now);
    // Paced: hands the board the bytes from the host whose wire time is over.
    void DeliverInput(SteadyClock::time_point now);
    void QueueOutput(SteadyClock::time_point now);
    void WriteOutput(SteadyClock::time_point now);
    std::uint64_t Milliseconds(SteadyClock::time_point now) const;
    void Reset();

    const Options options_;
    SerialLine& line_;
    BoardProgram& program_;
    WirePacer pacer_;        // board to host
    WirePacer inputPacer_;   // host to board
    EClock eclock_;
    SteadyClock::time_point started_ = SteadyClock::now();
    std::deque<std::uint8_t> output_;
    std::deque<std::uint8_t> input_;   // paced bytes from the host still on the wire
    std::size_t dueBytes_ = 0;   // paced bytes whose time has come
    std::string stdinText_;
    int signalFd_ = -1;
    bool stdinOpen_ = true;
    bool hostPresent_ = false;
    bool wasRunning_ = false;
    bool quit_ = false;
    int exitCode_ = 0;
};

} // namespace hc11board
