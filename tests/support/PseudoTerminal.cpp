#include "support/PseudoTerminal.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

PseudoTerminal::PseudoTerminal()
{
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master_ < 0)
        return;
    if (grantpt(master_) != 0 || unlockpt(master_) != 0) {
        Close();
        return;
    }
    path_ = QString::fromLocal8Bit(ptsname(master_));
    // The device side starts raw too, so that no byte is echoed or translated
    // before the program sets the line up.
    const int slave = ::open(ptsname(master_), O_RDWR | O_NOCTTY);
    if (slave >= 0) {
        termios mode{};
        if (tcgetattr(slave, &mode) == 0) {
            cfmakeraw(&mode);
            tcsetattr(slave, TCSANOW, &mode);
        }
        ::close(slave);
    }
}

PseudoTerminal::~PseudoTerminal() { Close(); }

void PseudoTerminal::Write(const QByteArray& bytes)
{
    qsizetype done = 0;
    while (master_ >= 0 && done < bytes.size()) {
        const ssize_t n = ::write(master_, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (n > 0)
            done += n;
        else
            QThread::msleep(1);
    }
}

QByteArray PseudoTerminal::Read(int count, int timeoutMs)
{
    QByteArray bytes;
    QElapsedTimer clock;
    clock.start();
    while (master_ >= 0 && bytes.size() < count && clock.elapsed() < timeoutMs) {
        QCoreApplication::processEvents();
        pollfd ready{master_, POLLIN, 0};
        if (::poll(&ready, 1, 5) <= 0)
            continue;
        char chunk[512];
        const ssize_t n = ::read(master_, chunk, std::min<size_t>(sizeof chunk, static_cast<size_t>(count - bytes.size())));
        if (n > 0)
            bytes.append(chunk, n);
    }
    return bytes;
}

void PseudoTerminal::Close()
{
    if (master_ >= 0)
        ::close(master_);
    master_ = -1;
}
