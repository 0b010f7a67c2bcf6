// The board emulator hc11board as a separate process on a pseudo-terminal,
// for tests that drive the IDE's real serial control against a monitor.
// The program comes from the folder in ORVANE_PROGRAM_DIR.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTest>

class BoardProcess {
public:
    explicit BoardProcess(const QStringList& arguments = {});
    // The arguments that run the monitor firmware (monitor.s19 in the
    // program folder) in place of the built-in monitor. Its power-on report
    // has gone by before the line is named; a reset sends it again.
    static QStringList Firmware();
    ~BoardProcess();
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;

    // The pseudo-terminal the board serves, empty if it did not start.
    QString DevicePath() const { return path_; }
    // Presses the board's reset button: the monitor restarts and reports.
    void Reset();
    // The program itself: its standard input takes commands, and it can be ended.
    QProcess& Process() { return process_; }

private:
    QProcess process_;
    QString path_;
};

// The rows "built-in" and "firmware" of a test that holds for both monitors.
inline void BothMonitors()
{
    QTest::addColumn<bool>("firmware");
    QTest::newRow("built-in") << false;
    QTest::newRow("firmware") << true;
}
