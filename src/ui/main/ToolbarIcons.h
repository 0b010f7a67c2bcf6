// The 16 by 16 pictures of the toolbar buttons (the image list imlIcons),
// drawn here rather than loaded, so that they scale and need no files.
#pragma once

#include <QIcon>
#include <QImage>
#include <QString>

// The picture of the button with that tool tip; a null icon for an unknown one.
QIcon ToolbarIcon(const QString& toolTip);
// The program's icon: an HC11 chip.
QIcon ProgramIcon();
// The same picture as one square image of size pixels, for the desktop's icon files.
QImage ProgramIconImage(int size);
