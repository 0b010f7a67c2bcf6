// The editor on a 50,000-line source: opening it until it is shown, one typed
// character with the caret panels, Find Next, and a Replace All of 1,000 matches.
#include <QComboBox>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTextBlock>
#include <QTemporaryDir>
#include <QKeyEvent>
#include <QWindow>

#include "BenchFigures.h"
#include "HeadlessApp.h"
#include "platform/widgets/MsgBox.h"
#include "ui/source/frmEditor.h"
#include "ui/source/frmReplace.h"
#include "ui/main/frmMain.h"

namespace {
constexpr int Lines = 50000;

QByteArray Source()
{
    QByteArray text;
    for (int i = 0; i < Lines; ++i) {
        // Every 50th line holds the one word that Replace All looks for.
        const char* mnemonic = i % 50 == 0 ? "TARGET" : "LDAA";
        text += "L" + QByteArray::number(i) + "\t" + mnemonic + "\t#$" + QByteArray::number(i % 256, 16) +
                "\t; line " + QByteArray::number(i) + "\n";
    }
    return text;
}

void Settle()
{
    QCoreApplication::processEvents();
}
}  // namespace

int main(int argc, char* argv[])
{
    HeadlessApp app(argc, argv);
    SetMsgBoxHandler([](const QString&, int, const QString&) { return MbResultOk; });
    frmMain window;
    window.MDIForm_Load();
    window.resize(1000, 700);
    window.show();
    while (!(window.windowHandle() && window.windowHandle()->isExposed()))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("big.asm"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(Source()) < 0)
            return 1;
    }

    QElapsedTimer clock;
    clock.start();
    frmEditor* editor = window.OpenEditor(path);
    Settle();
    editor->Text->viewport()->repaint();
    Print("editor_open_50k_ms", static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
    if (!editor)
        return 1;

    // Typing in the middle of the document, each key with its caret panels and paint.
    editor->SetSelection(static_cast<int>(editor->Text->document()->findBlockByNumber(Lines / 2).position()), 0);
    const int keys = 200;
    Print("editor_keystroke_us", MeanMs(keys, [&] {
              QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
              QCoreApplication::sendEvent(editor->Text, &press);
              editor->Text->viewport()->repaint();
          }) * 1000, "us");

    frmReplace* dialog = FindReplaceDialog();
    dialog->cbWhat->setEditText(QStringLiteral("TARGET"));
    editor->SetSelection(0, 0);
    Print("find_next_50k_us", MeanMs(200, [&] {
              if (!dialog->FindStr(true, false, true))
                  editor->SetSelection(0, 0);
          }) * 1000, "us");

    dialog->ShowReplace();
    dialog->cbWith->setEditText(QStringLiteral("TGT"));
    dialog->optDown->setChecked(true);
    editor->SetSelection(0, 0);
    clock.restart();
    dialog->cmdReplaceAll_Click();
    Settle();
    Print("replace_all_50k_ms", static_cast<double>(clock.nsecsElapsed()) / 1e6, "ms");
    editor->TextChanged = false;
    return editor->PlainText().count(QStringLiteral("TGT")) == Lines / 50 ? 0 : 1;
}
