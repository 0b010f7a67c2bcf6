#include "BoardLoop.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>
#include <vector>

namespace hc11board {

namespace {

sigset_t HandledSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGHUP);
    sigaddset(&set, SIGUSR1);
    return set;
}

// How often the loop looks whether the host has opened the pseudo-terminal:
// nothing wakes a poll when that happens.
constexpr long long HostWatchNs = 10'000'000;
// A throttled free run wakes this often to run the cycles it owes.
constexpr long long RunSliceNs = 1'000'000;
// A run with --fast runs this many cycles between looks at the line.
constexpr std::uint64_t FastSliceCycles = 50'000;
// A board is switched on before the host's program starts, so whatever it
// says at power-on goes out on a line nobody listens to. Here the chip that
// runs on its own has run this much of its time before the line is named
// (at once, not at the E clock: no one can watch it yet), and a host that
// opens the line finds it past its start, quiet until asked.
constexpr std::uint64_t PowerOnMs = 100;

bool HangUp(short revents) { return revents & (POLLHUP | POLLERR | POLLNVAL); }

} // namespace

BoardLoop::BoardLoop(const Options& options, SerialLine& line, BoardProgram& program)
    : options_(options), line_(line), program_(program), eclock_(program.EClockHertz())
{
    const sigset_t set = HandledSignals();
    if (sigprocmask(SIG_BLOCK, &set, nullptr) == 0)
        signalFd_ = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
    std::signal(SIGPIPE, SIG_IGN);
    hostPresent_ = !line_.IsPseudoTerminal();
}

BoardLoop::~BoardLoop()
{
    if (signalFd_ >= 0)
        close(signalFd_);
}

std::uint64_t BoardLoop::Milliseconds(SteadyClock::time_point now) const
{
    return std::uint64_t(std::chrono::duration_cast<std::chrono::milliseconds>(now - started_).count());
}

void BoardLoop::PowerOn()
{
    if (!program_.FreeRunning())
        return;
    program_.Run(program_.EClockHertz() * PowerOnMs / 1000);
    QueueOutput(SteadyClock::now());
}

int BoardLoop::Run()
{
    while (!quit_) {
        SteadyClock::time_point now = SteadyClock::now();
        program_.Service(Milliseconds(now));
        DeliverInput(now);
        RunProgram(now);
        // Looked at after any reset the host asked for once it had the line
        // open, so that what the reset brings reaches it.
        const bool watchLine = HostPresent();
        QueueOutput(now);
        WriteOutput(now);
        if (quit_)
            break;

        std::vector<pollfd> fds;
        fds.push_back({signalFd_, POLLIN, 0});
        const int stdinIndex = stdinOpen_ ? int(fds.size()) : -1;
        if (stdinOpen_)
            fds.push_back({STDIN_FILENO, POLLIN, 0});
        const int lineIndex = watchLine ? int(fds.size()) : -1;
        if (watchLine) {
            const bool writable = dueBytes_ > 0 || (!options_.paced && !output_.empty());
            fds.push_back({line_.Fd(), short(POLLIN | (writable ? POLLOUT : 0)), 0});
        }

        const long long timeoutNs = PollTimeoutNs(now);
        timespec timeout{time_t(timeoutNs / 1'000'000'000), long(timeoutNs % 1'000'000'000)};
        const int ready = ppoll(fds.data(), fds.size(), timeoutNs < 0 ? nullptr : &timeout, nullptr);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            std::perror("hc11board: poll");
            return 1;
        }
        if (fds[0].revents)
            HandleSignals();
        if (stdinIndex >= 0 && fds[stdinIndex].revents)
            HandleStandardInput();
        if (lineIndex >= 0 && fds[lineIndex].revents) {
            const short revents = fds[lineIndex].revents;
            // Data that came with a hang-up is still the host's last words.
            const bool lineOk = (revents & POLLIN) ? ReadLine() : true;
            if (!lineOk || HangUp(revents))
                HostGone();
        }
    }
    return exitCode_;
}

long long BoardLoop::PollTimeoutNs(SteadyClock::time_point now) const
{
    long long timeout = -1;
    auto atMost = [&timeout](long long ns) {
        ns = std::max(ns, 0LL);
        timeout = timeout < 0 ? ns : std::min(timeout, ns);
    };
    if (!hostPresent_)
        atMost(HostWatchNs);
    if (program_.FreeRunning())
        atMost(options_.fast ? 0 : RunSliceNs);
    if (options_.paced && !output_.empty() && dueBytes_ == 0)
        atMost(std::chrono::duration_cast<std::chrono::nanoseconds>(pacer_.NextDue() - now).count());
    if (!input_.empty())
        atMost(std::chrono::duration_cast<std::chrono::nanoseconds>(inputPacer_.NextDue() - now).count());
    if (const std::optional<std::uint64_t> deadline = program_.NextDeadlineMs()) {
        const auto at = started_ + std::chrono::milliseconds(*deadline);
        atMost(std::chrono::duration_cast<std::chrono::nanoseconds>(at - now).count());
    }
    return timeout;
}

bool BoardLoop::HostPresent()
{
    if (hostPresent_ || !line_.IsPseudoTerminal())
        return hostPresent_;
    // With no one on the slave side the master reports a hang-up.
    pollfd fd{line_.Fd(), POLLIN, 0};
    if (poll(&fd, 1, 0) >= 0 && !HangUp(fd.revents)) {
        hostPresent_ = true;
        std::fprintf(stderr, "hc11board: host opened %s\n", line_.Path().c_str());
    }
    return hostPresent_;
}

void BoardLoop::HostGone()
{
    if (!line_.IsPseudoTerminal() || !options_.stay) {
        std::fprintf(stderr, "hc11board: the host closed the line\n");
        quit_ = true;
        return;
    }
    std::fprintf(stderr, "hc11board: host closed %s, waiting for the next\n", line_.Path().c_str());
    hostPresent_ = false;
    output_.clear();
    input_.clear();
    dueBytes_ = 0;
    line_.ClearSlave();
    program_.LineDropped();
}

bool BoardLoop::ReadLine()
{
    std::uint8_t buffer[4096];
    for (;;) {
        const ssize_t n = read(line_.Fd(), buffer, sizeof buffer);
        if (n > 0) {
            const SteadyClock::time_point now = SteadyClock::now();
            if (!options_.paced) {
                program_.Receive(buffer, std::size_t(n), Milliseconds(now));
                continue;
            }
            // Paced, what the host wrote reaches the board a byte at a time,
            // each once its ten bits have gone by on the wire.
            if (input_.empty())
                inputPacer_.Start(now);
            input_.insert(input_.end(), buffer, buffer + n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            return true;
        return false;   // end of file, or EIO once the host side is closed
    }
}

void BoardLoop::DeliverInput(SteadyClock::time_point now)
{
    if (input_.empty())
        return;
    const std::size_t due = inputPacer_.Due(now, input_.size());
    if (due == 0)
        return;
    const std::vector<std::uint8_t> bytes(input_.begin(), input_.begin() + std::ptrdiff_t(due));
    input_.erase(input_.begin(), input_.begin() + std::ptrdiff_t(due));
    program_.Receive(bytes.data(), bytes.size(), Milliseconds(now));
}

void BoardLoop::HandleSignals()
{
    signalfd_siginfo info;
    while (read(signalFd_, &info, sizeof info) == ssize_t(sizeof info)) {
        if (info.ssi_signo == SIGUSR1)
            Reset();
        else
            quit_ = true;
    }
}

void BoardLoop::HandleStandardInput()
{
    char buffer[256];
    const ssize_t n = read(STDIN_FILENO, buffer, sizeof buffer);
    if (n <= 0) {
        if (n == 0 || errno != EINTR)
            stdinOpen_ = false;   // no more commands; the board goes on
        return;
    }
    stdinText_.append(buffer, std::size_t(n));
    std::size_t end;
    while ((end = stdinText_.find('\n')) != std::string::npos) {
        std::string command = stdinText_.substr(0, end);
        stdinText_.erase(0, end + 1);
        const auto first = command.find_first_not_of(" \t\r");
        const auto last = command.find_last_not_of(" \t\r");
        HandleCommand(first == std::string::npos ? std::string() : command.substr(first, last - first + 1));
    }
}

void BoardLoop::HandleCommand(const std::string& command)
{
    if (command == "reset")
        Reset();
    else if (command == "quit")
        quit_ = true;
    else if (!command.empty())
        std::fprintf(stderr, "hc11board: unknown command \"%s\" (reset, quit)\n", command.c_str());
}

void BoardLoop::Reset()
{
    program_.Reset();
    wasRunning_ = false;
}

void BoardLoop::RunProgram(SteadyClock::time_point now)
{
    if (!program_.FreeRunning()) {
        wasRunning_ = false;
        return;
    }
    const std::uint64_t cycles = program_.Cycles();
    if (!wasRunning_) {
        eclock_.Restart(now, cycles);
        wasRunning_ = true;
    }
    program_.Run(options_.fast ? FastSliceCycles : eclock_.CyclesOwed(now, cycles));
}

void BoardLoop::QueueOutput(SteadyClock::time_point now)
{
    const std::vector<std::uint8_t> bytes = program_.TakeOutput();
    if (bytes.empty())
        return;
    // What is sent while no one listens is lost, as on an unplugged cable.
    if (!hostPresent_)
        return;
    if (output_.empty())
        pacer_.Start(now);
    output_.insert(output_.end(), bytes.begin(), bytes.end());
}

void BoardLoop::WriteOutput(SteadyClock::time_point now)
{
    if (output_.empty())
        return;
    if (options_.paced)
        dueBytes_ += pacer_.Due(now, output_.size() - dueBytes_);
    const std::size_t sendable = options_.paced ? dueBytes_ : output_.size();
    if (sendable == 0)
        return;
    const std::vector<std::uint8_t> chunk(output_.begin(), output_.begin() + std::ptrdiff_t(sendable));
    const ssize_t written = write(line_.Fd(), chunk.data(), chunk.size());
    if (written <= 0)
        return;   // the line is full: poll says when it takes more
    output_.erase(output_.begin(), output_.begin() + written);
    if (options_.paced)
        dueBytes_ -= std::size_t(written);
}

} // namespace hc11board
