// Answers every message box while it lives and keeps what was asked.
#pragma once

#include "platform/widgets/MsgBox.h"

#include <QList>
#include <QString>

class MsgBoxRecorder {
public:
    struct Box {
        QString text;
        int style;
        QString caption;
    };

    explicit MsgBoxRecorder(MsgBoxResult answer = MbResultOk);
    ~MsgBoxRecorder();

    QList<Box> boxes;
    MsgBoxResult answer;

private:
    MsgBoxHandler previous_;
};
