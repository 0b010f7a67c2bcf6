// The process-wide source records: file names without a folder, resolved
// against the current folder (file dialogs change it), except the path.
#pragma once

#include <QString>

extern QString AsmFile;            // the source that Assemble works on
extern QString LstFile;            // the listing whose symbols are loaded; panel 3 names it
extern QString ErrFile;            // the error file of the last run that left one
extern QString S19File;            // the machine code that Download takes; panel 2 names it
extern QString ErrorSourcePath;    // folder and name of the source the error list belongs to
extern QString ErrorSourceTitle;   // that source's name without its folder
