#include "ui/views/frmMemAdr.h"

#include "engine/state/Conversions.h"
#include "platform/widgets/ModalDialog.h"
#include "ui/views/EntryFields.h"
#include "ui/views/MemoryGrid.h"
#include "ui/main/frmMain.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

std::int32_t MemoryGoAddress = 0;

namespace {
constexpr int AddressDigits = 4;
}  // namespace

frmMemAdr::frmMemAdr(QWidget* parent) : frmAddress(parent)
{
    setObjectName(QStringLiteral("frmMemAdr"));
    setWindowTitle(QStringLiteral("Memory Display Address"));
    lbAdr->setText(QStringLiteral("Hex Address:"));
    txtAdr->setMaxLength(AddressDigits + 1);
    txtAdr->installEventFilter(this);
}

void frmMemAdr::ShowModal()
{
    frmMemAdr form(MainForm);
    RunModal(form);
}

void frmMemAdr::cmdOK_Click()
{
    if (txtAdr->text().isEmpty()) {
        txtAdr->setFocus();
        return;
    }
    MemoryGoAddress = HexToLong(txtAdr->text());
    EntryAccepted = true;
    accept();
}

bool frmMemAdr::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != txtAdr || event->type() != QEvent::KeyPress)
        return frmAddress::eventFilter(watched, event);
    // Editing keys, Enter and Esc work as usual; a printable key is a digit or nothing.
    const QString typed = static_cast<QKeyEvent*>(event)->text();
    if (typed.size() != 1 || !typed.at(0).isPrint())
        return false;
    QString text = txtAdr->text();
    int caret = txtAdr->hasSelectedText() ? txtAdr->selectionStart() : txtAdr->cursorPosition();
    int selection = static_cast<int>(txtAdr->selectedText().size());
    if (TypeIntoBox(MemorySide::Hex, AddressDigits, typed.at(0), text, caret, selection)) {
        txtAdr->setText(text);
        txtAdr->setCursorPosition(caret);
    }
    return true;
}
