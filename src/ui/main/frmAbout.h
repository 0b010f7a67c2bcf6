// The about box: the program's icon, its title and version, and OK.
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);

    QLabel* lblTitle;
    QLabel* lblVersion;
    QPushButton* cmdOK;
};
