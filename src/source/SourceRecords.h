// The process-wide source records: file names without a folder, resolved
// against the current folder (file dialogs change it).
#pragma once

#include <QString>

extern QString LstFile;   // the listing whose symbols are loaded; panel 3 names it
extern QString S19File;   // the machine code that Download takes; panel 2 names it
extern QString AsmFile;   // the source Assemble works on: the active editor's file title, or ""
