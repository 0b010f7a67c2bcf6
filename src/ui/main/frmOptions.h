// The Options dialog: editor and printer fonts, the simulator switches and
// the serial port. It edits copies; OK applies all of them at once, with no
// restart, and Cancel drops them. The store gets the values at exit.
#pragma once

#include "engine/state/AppSettings.h"

#include <QDialog>
#include <QString>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTabWidget;
class frmMain;

class frmOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmOptions(frmMain& main);

    void Form_Load();
    void UpdateSLabels();
    void UpdatePLabels();
    void UpdateSDialog();
    void UpdatePDialog();
    void UpdateSFont();
    void UpdatePFont();
    void cmdESet_Click();
    void cmdPSet_Click();
    void cmdDevice_Click();
    void cmdOK_Click();

    FontRecord ScreenFontCopy;
    FontRecord PrintFontCopy;
    // The device of each port number as chosen here, by number - 1.
    QString DeviceCopy[4];

    QTabWidget* TabStrip = nullptr;
    QLabel* lbEName = nullptr;
    QLabel* lbEStyle = nullptr;
    QLabel* lbESize = nullptr;
    QPushButton* cmdESet = nullptr;
    QLabel* lbPName = nullptr;
    QLabel* lbPStyle = nullptr;
    QLabel* lbPSize = nullptr;
    QPushButton* cmdPSet = nullptr;
    QCheckBox* chSimEnabled = nullptr;
    QCheckBox* chSimPeripherals = nullptr;   // the simulator runs on the whole chip
    QComboBox* cbComPort = nullptr;
    QLabel* lbDevice = nullptr;      // the device of the selected port number
    QPushButton* cmdDevice = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    // A frame with Name, Style and Size labels and its Set Font button.
    QGroupBox* FontFrame(const QString& name, const QString& caption, char letter, QLabel*& fontName,
                         QLabel*& style, QLabel*& size, QPushButton*& set);
    void ShowDevice();

    frmMain& main_;
};
