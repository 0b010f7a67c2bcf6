// Plays the user of the value dialogs for the life of the object: the script
// gets each dialog as it comes up, shown and loaded, and may type into it and
// press its buttons. Dialogs the script leaves open close as by their window button.
#pragma once

#include "platform/widgets/ModalDialog.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QString>

class ModalPlayer {
public:
    explicit ModalPlayer(ModalHook script) { previous_ = SetModalHook(std::move(script)); }
    ~ModalPlayer() { SetModalHook(previous_); }

private:
    ModalHook previous_;
};

// Replaces the text of the dialog's entry box (named box) and presses its OK button.
inline void TypeAndPressOK(QDialog& dialog, const char* box, const QString& text)
{
    dialog.findChild<QLineEdit*>(box)->setText(text);
    dialog.findChild<QPushButton*>("cmdOK")->click();
}
