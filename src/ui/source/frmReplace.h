// The Find and Replace dialog: one window in two layouts, not modal. Its
// search history outlives it, since Find Next works from the menu after it
// is hidden. The search itself is TextSearch's.
#pragma once

#include "engine/source/TextSearch.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class frmEditor;
class frmMain;

class frmReplace : public QDialog {
    Q_OBJECT
public:
    explicit frmReplace(frmMain& main);

    QLabel* lbWhat;
    QComboBox* cbWhat;
    QLabel* lbWith;
    QComboBox* cbWith;
    QCheckBox* chkCase;
    QCheckBox* chkWord;
    QGroupBox* Frame;
    QRadioButton* optUp;
    QRadioButton* optDown;
    QPushButton* cmdFindNext;
    QPushButton* cmdReplace;
    QPushButton* cmdReplaceAll;
    QPushButton* cmdCancel;

    void ShowFind();
    void ShowReplace();
    // Searches the active editor for cbWhat's text and selects the match;
    // without one, "Search Text not found !" unless noMsg.
    bool FindStr(bool down, bool matchCase, bool noMsg = false);
    void AddItem();
    void UpdateCmd();
    void EndReplace();
    // The dialog lost the activation: the active editor's text takes the focus.
    void Form_Deactivate();

    void cmdFindNext_Click();
    void cmdReplace_Click();
    void cmdReplaceAll_Click();
    void cmdCancel_Click();

protected:
    void changeEvent(QEvent* event) override;

private:
    void SetLayout(bool replace);
    void CommonStart();
    SearchOptions Options(bool down, bool matchCase) const;
};

// The dialog, loaded hidden with the main window; nullptr without one.
frmReplace* FindReplaceDialog();
