// "Go To Address": the dialog behind the go-to commands of the disassembly
// and stack windows. It takes a number or a symbol and reports through
// EntryAccepted and EntryValue (ui/views/EntryFields.h).
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

class frmAddress : public QDialog {
    Q_OBJECT
public:
    // The caller clears EntryAccepted and sets HelpContextID (191 from the
    // disassembly window, 192 from the stack window), then calls ShowModal.
    // A true EntryAccepted afterwards means EntryValue is an address 0 to 65535.
    static void ShowModal();
    static inline int HelpContextID = 191;

    explicit frmAddress(QWidget* parent = nullptr);

    QLabel* lbAdr = nullptr;
    QLineEdit* txtAdr = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

    virtual void cmdOK_Click();
};
