#include "support/ui/MsgBoxRecorder.h"

MsgBoxRecorder::MsgBoxRecorder(MsgBoxResult answer) : answer(answer)
{
    previous_ = SetMsgBoxHandler([this](const QString& text, int style, const QString& caption) {
        boxes.append({text, style, caption});
        return this->answer;
    });
}

MsgBoxRecorder::~MsgBoxRecorder()
{
    SetMsgBoxHandler(previous_);
}
