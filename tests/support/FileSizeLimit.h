// A full disk for the life of the object: no file of this process may grow
// past the given size, and a write that would fails with "File too large"
// instead of raising its signal. Programs started meanwhile inherit the limit.
#pragma once

#include <csignal>
#include <sys/resource.h>

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &previous_);
        const rlimit lowered{bytes, previous_.rlim_max};   // the soft limit alone, so that it can be raised again
        setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    void (*signal_)(int);
    rlimit previous_{};
};
