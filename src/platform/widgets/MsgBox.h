// The one road to a modal message box. Styles and answers use the classic
// numeric codes, so a caller writes MsgBox(text, MbExclamation, caption).
// A test installs a handler and answers without a person.
#pragma once

#include <QString>
#include <functional>

// Buttons (low bits) and kind (next bits) of a message box; add one of each.
enum MsgBoxStyle : int {
    MbOkOnly = 0,
    MbOkCancel = 1,
    MbYesNoCancel = 3,
    MbYesNo = 4,
    MbCritical = 16,
    MbQuestion = 32,
    MbExclamation = 48,   // the warning kind
    MbInformation = 64,
};

// The button that closed the box.
enum MsgBoxResult : int {
    MbResultOk = 1,
    MbResultCancel = 2,
    MbResultYes = 6,
    MbResultNo = 7,
};

MsgBoxResult MsgBox(const QString& text, int style, const QString& caption);

using MsgBoxHandler = std::function<MsgBoxResult(const QString& text, int style, const QString& caption)>;
// Replaces the real box; an empty handler restores it. Returns the previous one.
MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler);
