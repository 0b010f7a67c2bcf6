#include <QApplication>

#include "workspace/frmMain.h"

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    frmMain window;
    window.showMaximized();
    return app.exec();
}
