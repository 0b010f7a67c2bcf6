// The device behind one port number: a serial port the system reports, or
// any path typed in (a pseudo-terminal, say).
#pragma once

#include <QDialog>
#include <optional>

class QLineEdit;
class QListWidget;
class QPushButton;

class frmPortDevice : public QDialog {
    Q_OBJECT
public:
    // port is the number 1 to 4; path the device it stands for now.
    frmPortDevice(int port, const QString& path, QWidget* parent = nullptr);

    // Shows the dialog; the path chosen, or nothing on Cancel or an empty path.
    static std::optional<QString> Choose(int port, const QString& path, QWidget* parent);

    QListWidget* lstPorts = nullptr;
    QLineEdit* txtDevice = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;
};
