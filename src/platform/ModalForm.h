// The one road to a modal form of our own (the about box and the value
// dialogs): shown over the active window until it closes. A test installs a
// handler that plays the user and returns the result the form would have had.
#pragma once

#include <functional>

class QDialog;

// QDialog::Accepted or QDialog::Rejected.
int ShowModal(QDialog& form);

using ModalFormHandler = std::function<int(QDialog& form)>;
// Replaces the real modal loop; an empty handler restores it. Returns the previous one.
ModalFormHandler SetModalFormHandler(ModalFormHandler handler);
