// "Watch": a watch's address, typed as a number in any notation or as a
// symbol (numbers win), and its data type. In: EntryText, EntryIsWord. Out,
// with EntryAccepted true: EntryValue, EntryIsWord and EntryLabel, the symbol
// in upper case or empty for a number.
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class QRadioButton;

class frmWatchAdr : public QDialog {
    Q_OBJECT
public:
    // Help context 350 when adding, 351 when editing.
    static void ShowModal(int helpContext);

    explicit frmWatchAdr(QWidget* parent = nullptr);

    QLineEdit* txtAdr = nullptr;
    QRadioButton* optByte = nullptr;
    QRadioButton* optWord = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

    void Form_Load();
    void cmdOK_Click();
};
