// A full disk for the life of the object: this process may not grow a file
// past the given size, and a write that would fails with "File too large"
// (the signal it raises otherwise is ignored meanwhile). Programs started
// meanwhile inherit the limit.
#pragma once

#include <csignal>
#include <sys/resource.h>

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &previous_);
        rlimit lowered = previous_;
        lowered.rlim_cur = bytes;   // the soft limit alone, so that it can be raised again
        setrlimit(RLIMIT_FSIZE, &lowered);
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, signal_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit previous_{};
    void (*signal_)(int) = nullptr;
};
