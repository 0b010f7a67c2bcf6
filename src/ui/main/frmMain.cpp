#include "ui/main/frmMain.h"

#include "ui/source/EditorDocuments.h"
#include "ui/source/frmEditor.h"
#include "ui/main/ToolbarIcons.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QToolBar>

frmMain* MainForm = nullptr;

namespace {
constexpr int PanelCount = 7;
// Design texts; panels 5 to 7 belong to the active editor and stay hidden without one.
const char* const PanelTexts[PanelCount] = {
    "HC11 Board:", "Program: <None>", "Symbols: <None>", "Clock:", "Line", "Col.", "INS"};
}  // namespace

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), mdi_(new QMdiArea(this))
{
    MainForm = this;
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Orvane Integrated Development Tools"));
    setCentralWidget(mdi_);
    Dialog.Owner = this;

    BuildMenus();
    BuildToolbar();
    BuildStatusBar();
    ConnectCommands();
    SetUpEditors(*this);
    ConnectEditorDocuments(*this);
    setWindowIcon(ProgramIcon());

    tmrComm.setInterval(50);
    connect(&tmrComm, &QTimer::timeout, this, &frmMain::tmrComm_Timer);
    tmrComm.start();
    tmrRefresh.setInterval(100);
    connect(&tmrRefresh, &QTimer::timeout, this, &frmMain::tmrRefresh_Timer);
    connect(&MSComm, &MSComm::OnComm, this, &frmMain::MSComm_OnComm);
    connect(this, &frmMain::SymbolsLoaded, this, &frmMain::WatchSymbolsReloaded);
}

frmMain::~frmMain()
{
    if (MainForm == this)
        MainForm = nullptr;
}

void frmMain::BuildStatusBar()
{
    sbStatusBar = statusBar();
    sbStatusBar->setObjectName(QStringLiteral("sbStatusBar"));
    for (int i = 0; i < PanelCount; ++i) {
        auto* panel = new QLabel(QString::fromLatin1(PanelTexts[i]), sbStatusBar);
        panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        panel->setMinimumWidth(i == 0 ? 240 : i < 4 ? 160 : 70);
        sbStatusBar->addWidget(panel, i == 0 ? 1 : 0);
        panel->setVisible(i < 4);
        panels_ << panel;
    }
}

QLabel* frmMain::Panel(int panel) const
{
    Q_ASSERT(panel >= 1 && panel <= PanelCount);
    return panels_[panel - 1];
}

void frmMain::SetPanelText(int panel, const QString& text)
{
    Panel(panel)->setText(text);
}

QString frmMain::PanelText(int panel) const
{
    return Panel(panel)->text();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    // Each child closes itself first; an editor whose user cancels keeps the
    // program running, and then nothing is saved.
    // The first Cancel ends the round: no other document is asked.
    for (QMdiSubWindow* child : mdi_->subWindowList()) {
        if (!child->close()) {
            event->ignore();
            return;
        }
    }
    MDIForm_Unload();
    event->accept();
}

void frmMain::mnuFileExit_Click()
{
    close();
}
