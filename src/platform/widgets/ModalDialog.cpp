#include "platform/widgets/ModalDialog.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace {
ModalHook& Hook()
{
    static ModalHook hook;
    return hook;
}
}  // namespace

ModalHook SetModalHook(ModalHook hook)
{
    return std::exchange(Hook(), std::move(hook));
}

int RunModal(QDialog& dialog)
{
    if (!Hook())
        return dialog.exec();
    dialog.setResult(QDialog::Rejected);
    dialog.show();
    Hook()(dialog);
    if (dialog.isVisible())
        dialog.reject();
    return dialog.result();
}

QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton*& ok, QPushButton*& cancel, std::function<void()> onOK)
{
    ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    cancel = new QPushButton(QStringLiteral("Cancel"), &dialog);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    QObject::connect(ok, &QPushButton::clicked, &dialog, std::move(onOK));
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return row;
}
