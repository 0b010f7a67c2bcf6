#include <QApplication>

#include "ui/main/frmMain.h"

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("Orvane"));
    frmMain window;
    window.MDIForm_Load();
    window.show();
    return app.exec();
}
