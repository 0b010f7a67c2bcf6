// "Download": the modal window that shows a download (engine/code/S19Download.h).
// It starts the run on its first activation, so it is on the screen before
// the first byte moves. After a run that wrote something the debugger is set
// up for the program: breakpoints gone, the CPU, stack and disassembly
// windows open on PC.
#pragma once

#include "engine/code/S19Download.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

class frmDownload : public QDialog, public DownloadView {
    Q_OBJECT
public:
    // Downloads the file that MainForm->Dialog.FileName names; the caller sets it.
    static void ShowModal();

    explicit frmDownload(QWidget* parent = nullptr);

    bool DownloadStarted = false;   // the work has begun; later activations do nothing
    bool DownloadCancel = false;    // cmdCancel was pressed

    QLabel* lbDown = nullptr;
    QLabel* lbAddress = nullptr;
    QLabel* lbSize = nullptr;
    QProgressBar* ProgressBar = nullptr;
    QPushButton* cmdCancel = nullptr;

    void cmdCancel_Click();
    // Escape and the window button count as Cancel while the run goes on.
    void reject() override;

    // The run's view.
    void ShowProgress(int percent) override;
    void ShowRecord(std::int32_t address, int count) override;
    void LetEventsRun() override;
    bool CancelRequested() const override { return DownloadCancel; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum class Outcome { Ended, Failed };
    void Form_Activate();
    // The run and its messages; the window is unloaded at its end.
    Outcome Download();
    void Unload();
    bool unloaded_ = false;
};

// What a run that wrote something leaves behind: panel 2, no breakpoints,
// the CPU, stack and disassembly windows open and refreshed on PC.
void SetUpDownloadedProgram();
