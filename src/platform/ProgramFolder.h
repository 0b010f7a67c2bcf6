// The folder of the program's own file: the current folder after start-up,
// and where the help file and the assembler live beside the IDE.
#pragma once

#include <QString>

QString ProgramFolder();

// Tests point the program folder elsewhere; an empty text restores the real one.
void SetProgramFolder(const QString& folder);
