// Answers the file dialogs for the life of the object and keeps what they
// proposed: answer is the file chosen (empty: Cancel), filterIndex the file
// type picked (0: the one proposed).
#pragma once

#include "platform/widgets/CommonDialog.h"

#include <QList>
#include <QString>

struct FileChooser {
    QString answer;
    int filterIndex = 0;
    QList<CommonDialog> asked;
    QList<CommonDialog::Kind> kinds;
    CommonDialog::Handler previous = CommonDialog::SetHandler([this](CommonDialog& dialog, CommonDialog::Kind kind) {
        asked << dialog;
        kinds << kind;
        dialog.FileName = answer;
        if (filterIndex)
            dialog.FilterIndex = filterIndex;
        return !answer.isEmpty();
    });
    ~FileChooser() { CommonDialog::SetHandler(previous); }
};
