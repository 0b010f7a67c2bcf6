// File > Download of machine code, from prog.s19 in a fresh work folder.
#pragma once

#include "engine/source/SourceRecords.h"
#include "support/WorkFolder.h"
#include "ui/main/frmMain.h"

#include <QTest>

inline void DownloadFile(frmMain& form, const QByteArray& s19)
{
    WorkFolder folder;
    folder.Enter();
    QVERIFY(folder.Write("prog.s19", s19));
    S19File = "prog.s19";
    form.mnuFileDownload_Click();
    S19File.clear();
}
