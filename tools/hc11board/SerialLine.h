// The board's end of the serial line: a new pseudo-terminal whose slave the
// host opens, or an existing device. Raw 8-bit, no translation of any byte.
#pragma once

#include <string>

namespace hc11board {

class SerialLine {
public:
    SerialLine() = default;
    SerialLine(const SerialLine&) = delete;
    SerialLine& operator=(const SerialLine&) = delete;
    SerialLine(SerialLine&& other) noexcept { *this = std::move(other); }
    SerialLine& operator=(SerialLine&& other) noexcept;
    ~SerialLine();

    // Both return a line that is not Open() on failure, with error set.
    static SerialLine OpenPseudoTerminal(std::string& error);
    static SerialLine OpenDevice(const std::string& path, std::string& error);

    bool Open() const { return fd_ >= 0; }
    int Fd() const { return fd_; }
    // The path the host opens: the pseudo-terminal's slave, or the device.
    const std::string& Path() const { return path_; }
    bool IsPseudoTerminal() const { return pseudoTerminal_; }
    // Readies a pseudo-terminal's slave for the next host: drops what the
    // board wrote and no host read, which the slave would keep for whoever
    // opens it next, and leaves the master reporting a hang-up until a host
    // opens it (a new pair reports none before its slave was first opened).
    void ClearSlave() const;

private:
    int fd_ = -1;
    std::string path_;
    bool pseudoTerminal_ = false;
};

} // namespace hc11board
