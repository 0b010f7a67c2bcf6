// The one road to showing a value dialog modally. A test installs a hook
// that plays the user: it gets the dialog, already loaded and shown, types
// into it and presses its buttons. A dialog the hook leaves open is closed as
// by its window button, which counts as Cancel.
#pragma once

#include <functional>

class QDialog;

// Shows the dialog modally (or hands it to the hook) and returns its result,
// QDialog::Accepted or QDialog::Rejected.
int RunModal(QDialog& dialog);

using ModalHook = std::function<void(QDialog& dialog)>;
// Replaces the user; an empty hook restores the real modal loop. Returns the previous one.
ModalHook SetModalHook(ModalHook hook);

class QHBoxLayout;
class QPushButton;

// The buttons a dialog ends with, in a row at the right that the caller lays
// out: ok "OK" (cmdOK, the default button, so Enter in a box reaches it)
// calling onOK, and cancel "Cancel" (cmdCancel) rejecting the dialog.
QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton*& ok, QPushButton*& cancel, std::function<void()> onOK);
