// Go To Line: a modal dialog that moves the active editor's caret to the
// start of a line.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

class frmLine : public QDialog {
    Q_OBJECT
public:
    explicit frmLine(QWidget* parent = nullptr);

    QLabel* lbLine;
    QLineEdit* txtLine;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

    void cmdOK_Click();
    void cmdCancel_Click();
};
