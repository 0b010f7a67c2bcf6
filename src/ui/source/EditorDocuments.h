// The editor documents as the assembler run, the error list and the print
// commands see them: frmMain's Documents and ActiveDocument point here.
#pragma once

class frmMain;

// Installs the editor side into main's Documents and ActiveDocument.
void ConnectEditorDocuments(frmMain& main);
