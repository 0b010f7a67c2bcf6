// The main window and hub: it owns the child windows, the menus, the toolbar,
// the status bar, the serial port, the simulator and the target operations.
#pragma once

#include <QMainWindow>

class QMdiArea;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    QMdiArea* mdiArea() const { return mdi_; }

private:
    QMdiArea* mdi_ = nullptr;
};

// The one main window of the process, or nullptr before it exists.
extern frmMain* MainForm;
