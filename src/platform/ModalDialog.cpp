#include "platform/ModalDialog.h"

#include <QDialog>

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
