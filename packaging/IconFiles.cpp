// Writes the program's icon as PNG files in the layout of the hicolor icon
// theme, <folder>/<n>x<n>/apps/orvane.png, one for each size the desktops ask
// for. The picture is the one the main window shows, drawn at each size.
#include "ui/main/ToolbarIcons.h"

#include <QDir>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char* argv[])
{
    // Drawing the text of the picture needs the fonts, which need the application.
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fputs("Usage: orvane_icon_files <folder>\n", stderr);
        return 2;
    }
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString folder = QDir(QString::fromLocal8Bit(argv[1])).filePath(QStringLiteral("%1x%1/apps").arg(size));
        if (!QDir().mkpath(folder) || !ProgramIconImage(size).save(QDir(folder).filePath(QStringLiteral("orvane.png")))) {
            std::fprintf(stderr, "orvane_icon_files: cannot write the %d pixel icon into %s\n", size, argv[1]);
            return 1;
        }
    }
    return 0;
}
