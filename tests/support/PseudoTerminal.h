// A pseudo-terminal pair: DevicePath() is a serial device the IDE opens like
// a port; the test reads and writes the other end as the board.
#pragma once

#include <QByteArray>
#include <QString>

class PseudoTerminal {
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    bool IsValid() const { return master_ >= 0; }
    QString DevicePath() const { return path_; }

    // Board to host.
    void Write(const QByteArray& bytes);
    // Host to board: waits up to timeoutMs, letting window events run, until
    // count bytes have come; gives what came.
    QByteArray Read(int count, int timeoutMs = 1000);

    // The board's end goes away: the host's next reads fail.
    void Close();

private:
    int master_ = -1;
    QString path_;
};
