#include "ui/views/frmWatchAdr.h"

#include "engine/code/SymbolTable.h"
#include "engine/state/Conversions.h"
#include "platform/widgets/ModalDialog.h"
#include "platform/widgets/MsgBox.h"
#include "ui/views/EntryFields.h"
#include "ui/main/frmMain.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmWatchAdr::frmWatchAdr(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmWatchAdr"));
    setWindowTitle(QStringLiteral("Watch"));

    auto* lbAdr = new QLabel(QStringLiteral("&Address:"), this);
    lbAdr->setObjectName(QStringLiteral("lbAdr"));
    txtAdr = new QLineEdit(this);
    txtAdr->setObjectName(QStringLiteral("txtAdr"));
    txtAdr->setMaxLength(18);
    lbAdr->setBuddy(txtAdr);
    auto* frame = new QGroupBox(QStringLiteral("Data Type"), this);
    frame->setObjectName(QStringLiteral("Frame"));
    optByte = new QRadioButton(QStringLiteral("&Byte"), frame);
    optByte->setObjectName(QStringLiteral("optByte"));
    optWord = new QRadioButton(QStringLiteral("&Word"), frame);
    optWord->setObjectName(QStringLiteral("optWord"));

    auto* types = new QHBoxLayout(frame);
    types->addWidget(optByte);
    types->addWidget(optWord);
    auto* layout = new QVBoxLayout(this);
    auto* entry = new QHBoxLayout;
    entry->addWidget(lbAdr);
    entry->addWidget(txtAdr);
    layout->addLayout(entry);
    layout->addWidget(frame);
    layout->addLayout(OkCancelRow(*this, cmdOK, cmdCancel, [this] { cmdOK_Click(); }));
}

void frmWatchAdr::ShowModal(int helpContext)
{
    frmWatchAdr form(MainForm);
    form.setProperty("HelpContextID", helpContext);
    form.Form_Load();
    RunModal(form);
}

void frmWatchAdr::Form_Load()
{
    txtAdr->setText(EntryText);
    txtAdr->selectAll();
    txtAdr->setFocus();
    (EntryIsWord ? optWord : optByte)->setChecked(true);
}

void frmWatchAdr::cmdOK_Click()
{
    const QString text = txtAdr->text();
    if (text.isEmpty()) {
        txtAdr->setFocus();
        return;
    }
    // An address is always a 16-bit number; a symbol only where no number reads.
    EntryValue = AddressFromText(text);
    EntryLabel = EntryValue != -1 && ParseNumber(text, true) == -1 ? text.toUpper() : QString();
    EntryIsWord = optWord->isChecked();
    if (EntryValue != -1) {
        EntryAccepted = true;
        accept();
        return;
    }
    txtAdr->clear();
    MsgBox(QStringLiteral("Invalid Address !"), MbInformation, QStringLiteral("Orvane - Watch"));
    // The watch window comes to the front only when it is open: a closed one
    // isn't opened behind its View entry's back.
    if (MainForm) {
        if (QWidget* watch = MainForm->Window(QStringLiteral("frmWatch")))
            watch->parentWidget()->raise();
    }
    txtAdr->setFocus();
}
