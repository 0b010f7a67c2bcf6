#include "ui/devices/frmSerial.h"

#include "engine/state/TargetState.h"
#include "platform/widgets/Fonts.h"
#include "engine/link/TargetLink.h"
#include "ui/devices/TerminalKeys.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextCursor>

QWidget* CreateSerial(frmMain& main)
{
    auto* window = new frmSerial(main);
    main.SerialTerminalDisplay = [window](const QByteArray& bytes) { window->Display(bytes); };
    return window;
}

frmSerial::frmSerial(frmMain& main) : ToolWindow(main, QStringLiteral("Serial Terminal"), QStringLiteral("Serial"))
{
    RichText = new QPlainTextEdit(this);
    RichText->setObjectName(QStringLiteral("RichText"));
    RichText->setFont(FixedPitchFont(QStringLiteral("Terminal"), 9));
    RichText->setLineWrapMode(QPlainTextEdit::NoWrap);
    RichText->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    RichText->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    RichText->setUndoRedoEnabled(false);
    RichText->setAcceptDrops(false);
    RichText->setContextMenuPolicy(Qt::NoContextMenu);
    RichText->setAttribute(Qt::WA_InputMethodEnabled, false);
    RichText->installEventFilter(this);
    RichText->viewport()->installEventFilter(this);
    screen_.Beep = [] { QApplication::beep(); };
    redraw_.setSingleShot(true);
    connect(&redraw_, &QTimer::timeout, this, &frmSerial::Draw);
}

frmSerial::~frmSerial()
{
    if (MainForm)
        MainForm->SerialTerminalDisplay = nullptr;
}

void frmSerial::Load()
{
    const bool hex = main_.Menu(QStringLiteral("mnuPopupSerialHex"))->isChecked();
    screen_.SetMode(hex ? TerminalScreen::Mode::Hex : TerminalScreen::Mode::Ascii);
}

void frmSerial::Form_Unload()
{
    main_.SerialTerminalDisplay = nullptr;
}

void frmSerial::resizeEvent(QResizeEvent*)
{
    RichText->setGeometry(rect());
}

void frmSerial::Display(const QByteArray& InData)
{
    // The flat simulator passes one byte at a time; the chip's SCI a whole stream.
    screen_.Display(InData, TargetMode == SimulatorMode && !SimulatePeripherals);
    if (redraw_.isActive())
        return;
    const qint64 wait = sinceDrawn_.isValid() ? RedrawMs - sinceDrawn_.elapsed() : 0;
    if (wait > 0)
        redraw_.start(static_cast<int>(wait));
    else
        Draw();
}

void frmSerial::Draw()
{
    sinceDrawn_.start();
    const TerminalScreen::Change change = screen_.TakeChanges();
    if (change.whole) {
        RichText->setPlainText(screen_.Text());
    } else {
        QTextCursor cursor(RichText->document());
        cursor.beginEditBlock();
        if (change.droppedHead > 0) {
            cursor.setPosition(change.droppedHead, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        }
        cursor.setPosition(change.from);
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.insertText(screen_.Text().mid(change.from));
        cursor.endEditBlock();
    }
    ShowCaret();
}

void frmSerial::ShowCaret()
{
    QTextCursor caret = RichText->textCursor();
    caret.setPosition(screen_.Caret());
    RichText->setTextCursor(caret);
}

void frmSerial::SetMode(TerminalScreen::Mode mode)
{
    const bool hex = mode == TerminalScreen::Mode::Hex;
    main_.Menu(QStringLiteral("mnuPopupSerialAscii"))->setChecked(!hex);
    main_.Menu(QStringLiteral("mnuPopupSerialHex"))->setChecked(hex);
    screen_.SetMode(mode);
    RichText->clear();
}

void frmSerial::mnuPopupSerialAscii()
{
    SetMode(TerminalScreen::Mode::Ascii);
}

void frmSerial::mnuPopupSerialHex()
{
    SetMode(TerminalScreen::Mode::Hex);
}

void frmSerial::mnuPopupSerialClear()
{
    screen_.Clear();
    RichText->clear();
}

bool frmSerial::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        // Nothing typed reaches the text: the board echoes what it wants seen.
        const auto* key = static_cast<QKeyEvent*>(event);
        // The simulated chip's SCI listens whether it runs or steps.
        const bool line = TargetMode == BoardMode || ChipSimulated();
        const QByteArray bytes = TerminalKeyBytes(key->key(), key->modifiers().testFlag(Qt::ControlModifier),
                                                  key->text(), line, BoardRunning || ChipSimulated());
        if (!bytes.isEmpty())
            link_.TerminalInput(bytes);
        return true;
    }
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::Drop:
    case QEvent::ShortcutOverride:
        event->accept();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton)
            ShowPopup("mnuPopupSerial", RichText, mouse->globalPosition().toPoint());
        else
            RichText->setFocus();
        // A click or a drag leaves the writing position where it was.
        return true;
    }
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return true;
    default:
        return ToolWindow::eventFilter(watched, event);
    }
}
