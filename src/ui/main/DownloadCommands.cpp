// The two ways into a download on frmMain: the File menu entry, which asks
// for a file while S19File is empty, and the toolbar button, which takes
// S19File without asking whenever that file exists.
#include "engine/code/S19Download.h"
#include "ui/code/frmDownload.h"
#include "engine/state/TargetState.h"
#include "engine/source/SourceRecords.h"
#include "ui/main/frmMain.h"
#include "ui/main/OpenFileChoice.h"

void frmMain::mnuFileDownload_Click()
{
    if (!S19File.isEmpty()) {
        // A name whose file has gone since does nothing at all.
        if (!S19FileExists())
            return;
        Dialog.FileName = S19File;
    } else if (!ChooseFileToOpen(Dialog, QStringLiteral("Download"),
                                 QStringLiteral("Machine Code (*.s19)|*.s19|All Files (*.*)|*.*"), S19File)) {
        return;
    }
    frmDownload::ShowModal();
    // A fresh program counts its cycles from nought.
    ClockCount = 0;
    ClockCountUpdate();
}

void frmMain::FileDownload()
{
    if (!S19FileExists()) {
        mnuFileDownload_Click();
        return;
    }
    Dialog.FileName = S19File;
    frmDownload::ShowModal();
}
