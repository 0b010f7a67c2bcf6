// The about box: the program's icon, its title and version, and OK.
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// The program's version, major and minor, as the about box shows it.
constexpr int VersionMajor = 0;
constexpr int VersionMinor = 1;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);

    QLabel* lblTitle;
    QLabel* lblVersion;
    QPushButton* cmdOK;
};
