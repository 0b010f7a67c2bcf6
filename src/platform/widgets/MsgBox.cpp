#include "platform/widgets/MsgBox.h"

#include <QApplication>
#include <QMessageBox>

namespace {
MsgBoxHandler& Handler()
{
    static MsgBoxHandler handler;
    return handler;
}

QMessageBox::StandardButtons ButtonsOf(int style)
{
    switch (style & 7) {
    case MbOkCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case MbYesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MbYesNo: return QMessageBox::Yes | QMessageBox::No;
    default: return QMessageBox::Ok;
    }
}

QMessageBox::Icon IconOf(int style)
{
    switch (style & 0x70) {
    case MbCritical: return QMessageBox::Critical;
    case MbQuestion: return QMessageBox::Question;
    case MbExclamation: return QMessageBox::Warning;
    case MbInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}
}  // namespace

MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler)
{
    return std::exchange(Handler(), std::move(handler));
}

MsgBoxResult MsgBox(const QString& text, int style, const QString& caption)
{
    if (Handler())
        return Handler()(text, style, caption);
    QMessageBox box(IconOf(style), caption, text, ButtonsOf(style), QApplication::activeWindow());
    switch (box.exec()) {
    case QMessageBox::Cancel: return MbResultCancel;
    case QMessageBox::Yes: return MbResultYes;
    case QMessageBox::No: return MbResultNo;
    case QMessageBox::Ok: return MbResultOk;
    default:   // closed by Escape or the window's close box
        return (style & 7) == MbOkOnly ? MbResultOk : (style & 7) == MbYesNo ? MbResultNo : MbResultCancel;
    }
}
