#include "ui/main/OpenFileChoice.h"

#include "platform/widgets/CommonDialog.h"

bool ChooseFileToOpen(CommonDialog& dialog, const QString& title, const QString& filter, QString& file)
{
    dialog.DialogTitle = title;
    dialog.Filter = filter;
    dialog.FilterIndex = 1;
    dialog.FileName = file;
    if (!dialog.ShowOpen())
        return false;
    file = dialog.FileTitle;
    return true;
}
