#include "views/frmMemAdr.h"

#include "platform/ModalDialog.h"
#include "views/EntryFields.h"
#include "workspace/frmMain.h"

std::int32_t MemoryGoAddress = 0;

frmMemAdr::frmMemAdr(QWidget* parent) : frmAddress(parent)
{
    setObjectName(QStringLiteral("frmMemAdr"));
    setWindowTitle(QStringLiteral("Memory Display Address"));
}

void frmMemAdr::ShowModal()
{
    frmMemAdr form(MainForm);
    RunModal(form);
    if (EntryAccepted)
        MemoryGoAddress = EntryValue;
}
