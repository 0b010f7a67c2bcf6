// "Serial Terminal": the user program's own traffic on the board's serial
// line during a free run, or on the simulated chip's SCI. It shows what
// TerminalScreen makes of the bytes the target link passes to Display, and
// sends what is typed through the link (TargetLink::TerminalInput).
// The writing position is the control's caret, which no click may move.
// A flood of bytes is drawn at most once per RedrawMs: laying out the text
// control for every block that arrives would leave the program no time for
// its other events.
#pragma once

#include "ui/views/ToolWindow.h"
#include "engine/state/TerminalScreen.h"

#include <QElapsedTimer>
#include <QTimer>

class QPlainTextEdit;

class frmSerial : public ToolWindow {
    Q_OBJECT
public:
    ~frmSerial() override;

    QPlainTextEdit* RichText = nullptr;
    const TerminalScreen& Screen() const { return screen_; }

    static constexpr int RedrawMs = 25;

    // Takes the bytes into the screen; the control shows them at once if it
    // was last drawn RedrawMs ago, else when that time is up.
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
    // Brings the control up to the screen.
    void Draw();
    void ShowCaret();

    TerminalScreen screen_;
    QTimer redraw_;
    QElapsedTimer sinceDrawn_;
};

// The terminal's factory for the main window's tool-window table.
QWidget* CreateSerial(frmMain& main);
