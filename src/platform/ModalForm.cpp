#include "platform/ModalForm.h"

#include <QDialog>

namespace {
ModalFormHandler& Handler()
{
    static ModalFormHandler handler;
    return handler;
}
}  // namespace

ModalFormHandler SetModalFormHandler(ModalFormHandler handler)
{
    return std::exchange(Handler(), std::move(handler));
}

int ShowModal(QDialog& form)
{
    if (Handler())
        return Handler()(form);
    return form.exec();
}
