#include "support/PseudoTerminal.h"

#include <QThread>

#include <fcntl.h>
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

void PseudoTerminal::Close()
{
    if (master_ >= 0)
        ::close(master_);
    master_ = -1;
}
