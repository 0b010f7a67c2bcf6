// The common dialog `Dialog` of the main window: file open, file save and font
// choice. The caller fills the fields, calls Show..., and reads the fields back.
// A test installs a handler that plays the user.
#pragma once

#include <QString>
#include <functional>

class QWidget;

class CommonDialog {
public:
    enum class Kind { Open, Save, Font };

    // File dialogs. Filter pairs descriptions and patterns with "|":
    // "Assembler Files (*.asm)|*.asm|All Files (*.*)|*.*"; FilterIndex counts from 1.
    QString DialogTitle;
    QString FileName;        // in: proposed name; out: the full path chosen
    QString FileTitle;       // out: the chosen name without its folder
    QString Filter;
    int FilterIndex = 1;
    QString InitDir;

    // Font dialog.
    QString FontName;
    double FontSize = 0;
    bool FontBold = false;
    bool FontItalic = false;
    bool FixedPitchOnly = false;

    QWidget* Owner = nullptr;

    // Help: ShowHelp opens HelpFile with HelpCommand and HelpContext (platform/Help.h).
    QString HelpFile;
    int HelpCommand = 0;
    int HelpContext = 0;
    void ShowHelp();

    // Each returns false when the user cancels; the fields are then unchanged.
    // A chosen file makes its folder the current folder.
    bool ShowOpen();
    bool ShowSave();
    bool ShowFont();

    // The handler answers instead of the user: it fills the fields and returns
    // false for Cancel. An empty handler restores the real dialogs.
    using Handler = std::function<bool(CommonDialog& dialog, Kind kind)>;
    static Handler SetHandler(Handler handler);

private:
    bool ShowFile(Kind kind);
};

// "Text|*.txt;*.asc|All|*.*" in the form of the Qt file dialogs:
// "Text (*.txt *.asc);;All (*.*)".
QString QtFileFilter(const QString& filter);
