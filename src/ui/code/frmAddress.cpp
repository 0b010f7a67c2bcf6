#include "ui/code/frmAddress.h"

#include "engine/code/SymbolTable.h"
#include "platform/widgets/ModalDialog.h"
#include "platform/widgets/MsgBox.h"
#include "ui/views/EntryFields.h"
#include "ui/main/frmMain.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

frmAddress::frmAddress(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAddress"));
    setWindowTitle(QStringLiteral("Go To Address"));
    setProperty("HelpContextID", HelpContextID);

    lbAdr = new QLabel(QStringLiteral("Address:"), this);
    lbAdr->setObjectName(QStringLiteral("lbAdr"));
    txtAdr = new QLineEdit(this);
    txtAdr->setObjectName(QStringLiteral("txtAdr"));
    txtAdr->setMaxLength(18);

    auto* layout = new QVBoxLayout(this);
    auto* entry = new QHBoxLayout;
    entry->addWidget(lbAdr);
    entry->addWidget(txtAdr);
    layout->addLayout(entry);
    // OK stops on an empty box.
    layout->addLayout(OkCancelRow(*this, cmdOK, cmdCancel, [this] { cmdOK_Click(); }));
    txtAdr->setFocus();
}

void frmAddress::ShowModal()
{
    frmAddress form(MainForm);
    RunModal(form);
}

void frmAddress::cmdOK_Click()
{
    if (txtAdr->text().isEmpty()) {
        txtAdr->setFocus();
        return;
    }
    EntryValue = AddressFromText(txtAdr->text());
    if (EntryValue != -1) {
        EntryAccepted = true;
        accept();
        return;
    }
    txtAdr->clear();
    MsgBox(QStringLiteral("Invalid Address !"), MbInformation, QStringLiteral("Orvane - Go To Address"));
    // The message box may have put another window in front of the one that asked.
    if (MainForm) {
        if (QMdiSubWindow* active = MainForm->mdiArea()->activeSubWindow())
            active->raise();
    }
    txtAdr->setFocus();
}
