// While the assembler's batch runs the windows keep painting, but the user's
// input waits: nothing may start a second run or touch the files. Escape
// cancels the run. The wait cursor shows for as long as the gate stands.
#pragma once

#include <QObject>

class AssembleRun;

class AssembleInputGate : public QObject {
public:
    explicit AssembleInputGate(AssembleRun& run);
    ~AssembleInputGate() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    AssembleRun& run_;
};
