// Putting a machine-code file into the target over the link: the flash
// erased, every good S1 record programmed in file order, and PC read from the
// reset vector, also after a Cancel or a failed record. The same steps for the
// board and the simulator. The download window shows it through DownloadView.
#pragma once

#include "engine/link/TargetLink.h"

#include <QString>
#include <cstdint>

class DownloadView {
public:
    virtual ~DownloadView() = default;
    // The share of the file read so far, 0 to 100.
    virtual void ShowProgress(int percent) = 0;
    // The good record that is about to be programmed.
    virtual void ShowRecord(std::int32_t address, int count) = 0;
    // Lets pending events run once, after every line: Cancel comes in here.
    virtual void LetEventsRun() = 0;
    virtual bool CancelRequested() const = 0;
};

struct DownloadResult {
    enum class Kind {
        Ended,      // the file was read to its end, or Cancel or a failed record stopped it; PC has the vector
        NoTarget,   // the erase left the target unreachable: nothing was written
        Failed,     // a file error or a refused record: PC is as it was
    };
    Kind kind = Kind::Ended;
    QString failure;        // Failed: what the user is told, before " !"
    bool written = false;   // a record reached the target and no Cancel came
};

// Downloads the file at path.
DownloadResult DownloadMachineCode(TargetLink& link, const QString& path, DownloadView& view);

// S19File names a file in the current folder.
bool S19FileExists();
