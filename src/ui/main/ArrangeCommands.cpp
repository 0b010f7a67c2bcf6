// The Window menu's arrangements. The platform's own tiling is not used: the
// editor commands move editors and nothing else.
#include "ui/source/frmEditor.h"
#include "ui/main/WindowArrangement.h"
#include "ui/main/frmMain.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
QWidget* FrameOf(QWidget* window)
{
    auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    return frame ? static_cast<QWidget*>(frame) : window;
}

// A maximised editor would hide the arrangement: the first one found is restored.
void RestoreMaximisedEditor(const QList<frmEditor*>& editors)
{
    for (frmEditor* editor : editors)
        if (QWidget* frame = FrameOf(editor); frame->isMaximized()) {
            frame->showNormal();
            return;
        }
}

void PlaceEditors(const QList<frmEditor*>& editors, const std::vector<WindowPlacement>& placements)
{
    for (qsizetype i = 0; i < editors.size() && i < qsizetype(placements.size()); ++i) {
        MoveToPlacement(editors[i], placements[i]);
        FrameOf(editors[i])->raise();
    }
}
}  // namespace

void frmMain::mnuWindowArrangeDebugger_Click()
{
    for (QMdiSubWindow* child : mdiArea()->subWindowList())
        if (child->isMinimized() || child->isMaximized())
            child->showNormal();
    const QWidget* client = mdiArea()->viewport();
    for (const DebuggerPlacement& row :
         DebuggerPlacements(PixelsToTwipsX(client->width()), PixelsToTwipsY(client->height()))) {
        const QString window = QString::fromLatin1(row.window);
        if (QWidget* open = IsOpen(window) ? Window(window) : nullptr) {
            MoveToPlacement(open, row.placement);
            FrameOf(open)->raise();
        } else {
            // A closed window opens there next time.
            WritePlacement(QString::fromLatin1(row.prefix), row.placement);
        }
    }
}

void frmMain::mnuWindowCascade_Click()
{
    const QList<frmEditor*> editors = LoadedEditors();
    RestoreMaximisedEditor(editors);
    const QWidget* client = mdiArea()->viewport();
    PlaceEditors(editors, CascadePlacements(int(editors.size()), PixelsToTwipsX(client->width()),
                                            PixelsToTwipsY(client->height()), PixelsToTwipsX(1),
                                            PixelsToTwipsY(1)));
}

void frmMain::mnuWindowTileHorizontal_Click()
{
    const QList<frmEditor*> editors = LoadedEditors();
    RestoreMaximisedEditor(editors);
    const QWidget* client = mdiArea()->viewport();
    PlaceEditors(editors, TileHorizontalPlacements(int(editors.size()), PixelsToTwipsX(client->width()),
                                                   PixelsToTwipsY(client->height())));
    if (!editors.isEmpty())
        FrameOf(editors.first())->raise();
}

void frmMain::mnuWindowTileVertical_Click()
{
    const QList<frmEditor*> editors = LoadedEditors();
    RestoreMaximisedEditor(editors);
    const QWidget* client = mdiArea()->viewport();
    PlaceEditors(editors, TileVerticalPlacements(int(editors.size()), PixelsToTwipsX(client->width()),
                                                 PixelsToTwipsY(client->height())));
    if (!editors.isEmpty())
        FrameOf(editors.first())->raise();
}
