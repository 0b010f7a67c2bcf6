// Plays the user of the value dialogs for the life of the object: the script
// gets each dialog as it comes up, shown and loaded, and may type into it and
// press its buttons. Dialogs the script leaves open close as by their window button.
#pragma once

#include "platform/widgets/ModalDialog.h"
#include "ui/views/ListWindow.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QTest>
#include <QTreeWidget>

class ModalPlayer {
public:
    explicit ModalPlayer(ModalHook script) { previous_ = SetModalHook(std::move(script)); }
    ~ModalPlayer() { SetModalHook(previous_); }

private:
    ModalHook previous_;
};

// Runs the action with the script playing the dialogs it brings up.
template <class Action>
void PlayDialogs(Action action, ModalHook script)
{
    ModalPlayer player(std::move(script));
    action();
}

// Replaces the text of the dialog's entry box (named box) and presses its OK button.
inline void TypeAndPressOK(QDialog& dialog, const char* box, const QString& text)
{
    dialog.findChild<QLineEdit*>(box)->setText(text);
    dialog.findChild<QPushButton*>("cmdOK")->click();
}

// Enters text for a list window's row with the Enter key and the value dialog;
// returns the dialog's label and the text it started from.
inline QStringList EnterValue(ListWindow* window, int row, const QString& text)
{
    QStringList seen;
    window->SelectRow(row);
    PlayDialogs([&] { QTest::keyClick(window->ListView, Qt::Key_Return); }, [&](QDialog& dialog) {
        seen << dialog.findChild<QLabel*>("Label")->text() << dialog.findChild<QLineEdit*>("Text")->text();
        TypeAndPressOK(dialog, "Text", text);
    });
    return seen;
}
