#include "SerialLine.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace hc11board {

namespace {

std::string SystemError(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

// Raw 8N1 at 38400 bit/s, no flow control, no modem control.
bool MakeRaw(int fd)
{
    termios settings{};
    if (tcgetattr(fd, &settings) != 0)
        return false;
    cfmakeraw(&settings);
    cfsetispeed(&settings, B38400);
    cfsetospeed(&settings, B38400);
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cflag &= ~(CRTSCTS | CSTOPB | PARENB);
    settings.c_iflag &= ~(IXON | IXOFF | IXANY);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    return tcsetattr(fd, TCSANOW, &settings) == 0;
}

} // namespace

SerialLine& SerialLine::operator=(SerialLine&& other) noexcept
{
    if (this != &other) {
        if (fd_ >= 0)
            close(fd_);
        fd_ = std::exchange(other.fd_, -1);
        path_ = std::move(other.path_);
        pseudoTerminal_ = other.pseudoTerminal_;
    }
    return *this;
}

SerialLine::~SerialLine()
{
    if (fd_ >= 0)
        close(fd_);
}

SerialLine SerialLine::OpenPseudoTerminal(std::string& error)
{
    SerialLine line;
    const int fd = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) {
        error = SystemError("cannot open a pseudo-terminal");
        return line;
    }
    line.fd_ = fd;
    if (grantpt(fd) != 0 || unlockpt(fd) != 0) {
        error = SystemError("cannot unlock the pseudo-terminal");
        return SerialLine();
    }
    const char* slave = ptsname(fd);
    if (!slave) {
        error = SystemError("cannot name the pseudo-terminal");
        return SerialLine();
    }
    // The master's settings are the pair's: raw, so no byte is translated
    // before the host has set its own.
    if (!MakeRaw(fd)) {
        error = SystemError("cannot set the pseudo-terminal to raw mode");
        return SerialLine();
    }
    line.path_ = slave;
    line.pseudoTerminal_ = true;
    line.ClearSlave();
    return line;
}

void SerialLine::ClearSlave() const
{
    if (!pseudoTerminal_)
        return;
    // Only the slave's side can flush what waits there to be read; closing
    // it marks the master's side hung up.
    const int slave = open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave < 0)
        return;
    tcflush(slave, TCIFLUSH);
    close(slave);
}

SerialLine SerialLine::OpenDevice(const std::string& path, std::string& error)
{
    SerialLine line;
    const int fd = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) {
        error = SystemError("cannot open " + path);
        return line;
    }
    line.fd_ = fd;
    line.path_ = path;
    // A device that is not a terminal (a pipe, a socket) is served as it is.
    if (isatty(fd) && !MakeRaw(fd)) {
        error = SystemError("cannot set " + path + " to raw mode");
        return SerialLine();
    }
    return line;
}

} // namespace hc11board
