// A pseudo-terminal pair: DevicePath() is a serial device the IDE opens like
// a port; the test writes the other end as the board.
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

    // The board's end goes away: the host's next reads fail.
    void Close();

private:
    int master_ = -1;
    QString path_;
};
