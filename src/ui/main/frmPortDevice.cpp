#include "ui/main/frmPortDevice.h"

#include "platform/widgets/ModalDialog.h"
#include "platform/DeviceAccess.h"
#include "platform/SerialPortList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmPortDevice::frmPortDevice(int port, const QString& path, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmPortDevice"));
    setWindowTitle(QStringLiteral("Device of COM %1").arg(port));

    lstPorts = new QListWidget(this);
    lstPorts->setObjectName(QStringLiteral("lstPorts"));
    for (const SerialPortChoice& choice : AvailableSerialPorts()) {
        auto* item = new QListWidgetItem(WithAccessNote(choice.label, choice.path), lstPorts);
        item->setData(Qt::UserRole, choice.path);
    }
    txtDevice = new QLineEdit(path, this);
    txtDevice->setObjectName(QStringLiteral("txtDevice"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Serial ports of this system:"), this));
    layout->addWidget(lstPorts);
    auto* entry = new QHBoxLayout;
    entry->addWidget(new QLabel(QStringLiteral("&Device:"), this));
    entry->addWidget(txtDevice);
    layout->addLayout(entry);
    layout->addLayout(OkCancelRow(*this, cmdOK, cmdCancel, [this] {
        if (txtDevice->text().trimmed().isEmpty())
            txtDevice->setFocus();
        else
            accept();
    }));

    connect(lstPorts, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item)
            txtDevice->setText(item->data(Qt::UserRole).toString());
    });
    connect(lstPorts, &QListWidget::itemDoubleClicked, cmdOK, &QPushButton::click);
    txtDevice->setFocus();
}

std::optional<QString> frmPortDevice::Choose(int port, const QString& path, QWidget* parent)
{
    frmPortDevice form(port, path, parent);
    if (RunModal(form) != QDialog::Accepted)
        return std::nullopt;
    return form.txtDevice->text().trimmed();
}
