// The Edit menu's commands: each acts on the active editor, and does nothing
// when there is none (a shortcut can arrive after the last editor closed).
#include "platform/widgets/ModalDialog.h"
#include "ui/source/frmEditor.h"
#include "ui/source/frmLine.h"
#include "ui/source/frmReplace.h"
#include "ui/main/frmMain.h"

#include <QCheckBox>
#include <QRadioButton>

namespace {
template <typename Command>
void OnActiveEditor(Command command)
{
    if (frmEditor* editor = ActiveEditor())
        command(*editor);
}
}  // namespace

void frmMain::mnuEditUndo_Click() { OnActiveEditor([](frmEditor& e) { e.EditUndo(); }); }
void frmMain::mnuEditRedo_Click() { OnActiveEditor([](frmEditor& e) { e.EditRedo(); }); }
void frmMain::mnuEditCut_Click() { OnActiveEditor([](frmEditor& e) { e.EditCut(); }); }
void frmMain::mnuEditCopy_Click() { OnActiveEditor([](frmEditor& e) { e.EditCopy(); }); }
void frmMain::mnuEditPaste_Click() { OnActiveEditor([](frmEditor& e) { e.EditPaste(); }); }
void frmMain::mnuEditDelete_Click() { OnActiveEditor([](frmEditor& e) { e.EditDelete(); }); }
void frmMain::mnuEditSelectAll_Click() { OnActiveEditor([](frmEditor& e) { e.EditSelectAll(); }); }

void frmMain::mnuEditFind_Click()
{
    if (ActiveEditor())
        FindReplaceDialog()->ShowFind();
}

void frmMain::mnuEditReplace_Click()
{
    if (ActiveEditor())
        FindReplaceDialog()->ShowReplace();
}

void frmMain::mnuEditFindNext_Click()
{
    frmReplace* dialog = FindReplaceDialog();
    if (ActiveEditor())
        dialog->FindStr(dialog->optDown->isChecked(), dialog->chkCase->isChecked());
}

void frmMain::mnuEditGoToLine_Click()
{
    if (!ActiveEditor())
        return;
    frmLine dialog(this);
    RunModal(dialog);
}
