// The Open dialog of the commands that work on one file of one kind:
// Assemble, Download and Load Symbols.
#pragma once

#include <QString>

class CommonDialog;

// Asks for a file under title, offering filter's first pattern and proposing
// file; on OK file becomes the chosen name without its folder. False on Cancel.
bool ChooseFileToOpen(CommonDialog& dialog, const QString& title, const QString& filter, QString& file);
