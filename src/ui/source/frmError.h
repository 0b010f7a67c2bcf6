// The error list: the rows of the last error file, each leading to its line
// in the source. A small fixed dialog owned by the main window, not modal, so
// it stays up while the user corrects the source.
#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <vector>

class QListWidget;
class QPushButton;

class frmError : public QDialog {
    Q_OBJECT
public:
    explicit frmError(QWidget* owner);

    std::int16_t ErrorCount = 0;
    std::vector<std::int32_t> ErrorLines;   // source line of each row of List

    QListWidget* List = nullptr;
    QPushButton* cmdShow = nullptr;     // "Show Error", the default button
    QPushButton* cmdClose = nullptr;    // "Close", the cancel button

    // The jump to a 1-based source line; the main window sets it.
    std::function<void(int line)> GoToLine;

    // Reads ErrFile into the list and shows the window, or brings it up.
    void ErrorShow();
    // Goes to the selected error; with no row there is nowhere to go.
    void cmdShow_Click();
    void cmdClose_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
};
