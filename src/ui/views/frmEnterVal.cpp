#include "ui/views/frmEnterVal.h"

#include "engine/state/Conversions.h"
#include "platform/widgets/Fonts.h"
#include "platform/widgets/ModalDialog.h"
#include "platform/widgets/MsgBox.h"
#include "ui/views/EntryFields.h"
#include "ui/main/frmMain.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {
void FocusMainForm()
{
    if (MainForm)
        MainForm->activateWindow();
}
}  // namespace

frmEnterVal::frmEnterVal(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmEnterVal"));
    setWindowTitle(QStringLiteral("Enter Value"));
    setProperty("HelpContextID", HelpContextID);

    Label = new QLabel(this);
    Label->setObjectName(QStringLiteral("Label"));
    Label->setFont(FixedPitchFont(QStringLiteral("Courier New"), 9.75));
    Text = new QLineEdit(this);
    Text->setObjectName(QStringLiteral("Text"));
    Text->setMaxLength(18);
    auto* layout = new QGridLayout(this);
    layout->addWidget(Label, 0, 0);
    layout->addWidget(Text, 0, 1);
    layout->addLayout(OkCancelRow(*this, cmdOK, cmdCancel, [this] { cmdOK_Click(); }), 1, 0, 1, 2);
}

void frmEnterVal::ShowModal()
{
    frmEnterVal form(MainForm);
    form.Form_Load();
    RunModal(form);
}

void frmEnterVal::Form_Load()
{
    Label->setText(EntryLabel + ':');
    Text->setText(EntryText);
    Text->selectAll();   // the first key typed replaces the old value
    Text->setFocus();
}

void frmEnterVal::cmdOK_Click()
{
    if (Text->text().isEmpty()) {
        Text->setFocus();
        return;
    }
    EntryValue = ParseNumber(Text->text(), EntryIsWord);
    if (EntryValue != -1) {
        EntryAccepted = true;
        accept();
        FocusMainForm();
        return;
    }
    Text->clear();
    MsgBox(QStringLiteral("Invalid Number !"), MbInformation, QStringLiteral("Orvane - Enter Value"));
    Text->setFocus();
}

void frmEnterVal::reject()
{
    QDialog::reject();
    FocusMainForm();
}
