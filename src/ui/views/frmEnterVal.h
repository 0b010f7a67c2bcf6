// "Enter Value": the one dialog in which the user types a number for a
// register, a stack byte or a watch. It knows nothing of targets: it loads
// itself from the exchange fields (ui/views/EntryFields.h) and leaves the parsed
// number in EntryValue.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

class frmEnterVal : public QDialog {
    Q_OBJECT
public:
    // The caller's side: clear EntryAccepted, set EntryLabel, EntryText and
    // EntryIsWord, call ShowModal, then test EntryAccepted.
    static void ShowModal();

    // The help topic of the dialog; the watch window sets 194 for its call
    // and puts 193 back afterwards.
    static inline int HelpContextID = 193;

    explicit frmEnterVal(QWidget* parent = nullptr);

    QLabel* Label = nullptr;
    QLineEdit* Text = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

    void Form_Load();
    void cmdOK_Click();
    void reject() override;   // Cancel, Esc and the window button
};
