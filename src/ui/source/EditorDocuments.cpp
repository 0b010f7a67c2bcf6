#include "ui/source/EditorDocuments.h"

#include "engine/source/SourceDocuments.h"
#include "ui/source/frmEditor.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QPlainTextEdit>

namespace {

// Owned by the main window, as long-lived as the Documents pointer to it.
class EditorDocuments : public QObject, public SourceDocuments {
public:
    explicit EditorDocuments(frmMain& main) : QObject(&main), main_(main) {}

    QString ActiveTitle() const override
    {
        const frmEditor* editor = ActiveEditor();
        return editor ? editor->EditorTitle : QString();
    }
    QString ActiveName() const override
    {
        const frmEditor* editor = ActiveEditor();
        return editor ? editor->EditorName : QString();
    }
    void SaveActive() override
    {
        if (ActiveEditor())
            main_.mnuFileSave_Click();
    }
    void ShowLine(const QString& path, const QString&, int line) override
    {
        // The editor counts lines from 0, the error file from 1.
        OpenOrActivate(path, qMax(line, 1) - 1);
    }

private:
    frmMain& main_;
};

}  // namespace

void ConnectEditorDocuments(frmMain& main)
{
    main.Documents = new EditorDocuments(main);
    main.ActiveDocument = []() -> std::optional<frmMain::PrintableDocument> {
        const frmEditor* editor = ActiveEditor();
        if (!editor)
            return std::nullopt;
        return frmMain::PrintableDocument{editor->EditorTitle, editor->PlainText()};
    };
}
