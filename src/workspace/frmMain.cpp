#include "workspace/frmMain.h"

#include <QMdiArea>

frmMain* MainForm = nullptr;

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), mdi_(new QMdiArea(this))
{
    MainForm = this;
    setWindowTitle(QStringLiteral("Orvane Integrated Development Tools"));
    setCentralWidget(mdi_);
}

frmMain::~frmMain()
{
    if (MainForm == this)
        MainForm = nullptr;
}
