// "Serial Terminal": the user program's own traffic on the board's serial
// line during a free run. It shows what TerminalScreen makes of the bytes the
// target link passes to Display, and sends what is typed through MSComm.
// The writing position is the control's caret, which no click may move.
#pragma once

#include "ui/views/ToolWindow.h"
#include "engine/state/TerminalScreen.h"

class QPlainTextEdit;

class frmSerial : public ToolWindow {
    Q_OBJECT
public:
    ~frmSerial() override;

    QPlainTextEdit* RichText = nullptr;
    const TerminalScreen& Screen() const { return screen_; }

    void Display(const QByteArray& InData);

    Q_INVOKABLE void mnuPopupSerialAscii();
    Q_INVOKABLE void mnuPopupSerialHex();
    Q_INVOKABLE void mnuPopupSerialClear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void Load() override;
    void Form_Unload() override;

private:
    friend QWidget* CreateSerial(frmMain&);
    explicit frmSerial(frmMain& main);
    void SetMode(TerminalScreen::Mode mode);
    void ShowCaret();

    TerminalScreen screen_;
};

// The terminal's factory for the main window's tool-window table.
QWidget* CreateSerial(frmMain& main);
