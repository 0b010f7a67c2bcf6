// Answers every message box while it lives and keeps what was asked.
#pragma once

#include "platform/widgets/MsgBox.h"

#include <QStringList>

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

    QStringList Texts() const   // what the boxes said, in order
    {
        QStringList texts;
        for (const Box& box : boxes)
            texts << box.text;
        return texts;
    }

private:
    MsgBoxHandler previous_;
};
