#include "ui/code/frmDownload.h"

#include "engine/code/S1Record.h"
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/widgets/ModalDialog.h"
#include "platform/widgets/MsgBox.h"
#include "engine/source/SourceRecords.h"
#include "engine/link/TargetLink.h"
#include "ui/views/EntryFields.h"
#include "ui/main/frmMain.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
const QString ReadErrorCaption = QStringLiteral("Orvane - Read Error");
const QString DownloadErrorCaption = QStringLiteral("Orvane - Download Error");

void RaiseActiveChild()
{
    if (QMdiSubWindow* active = MainForm->mdiArea()->activeSubWindow())
        active->raise();
}

QMdiSubWindow* FrameOf(const char* window)
{
    QWidget* widget = MainForm->Window(QString::fromLatin1(window));
    return widget ? qobject_cast<QMdiSubWindow*>(widget->parentWidget()) : nullptr;
}
}  // namespace

void frmDownload::ShowModal()
{
    frmDownload form(MainForm);
    RunModal(form);
}

frmDownload::frmDownload(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDownload"));
    setWindowTitle(QStringLiteral("Download"));

    lbDown = new QLabel(QStringLiteral("Downloading:"), this);
    lbDown->setObjectName(QStringLiteral("lbDown"));
    lbAddress = new QLabel(this);
    lbAddress->setObjectName(QStringLiteral("lbAddress"));
    lbSize = new QLabel(this);
    lbSize->setObjectName(QStringLiteral("lbSize"));
    ProgressBar = new QProgressBar(this);
    ProgressBar->setObjectName(QStringLiteral("ProgressBar"));
    ProgressBar->setRange(0, 100);
    ProgressBar->setValue(0);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lbDown);
    auto* record = new QHBoxLayout;
    record->addWidget(lbAddress);
    record->addStretch();
    record->addWidget(lbSize);
    layout->addLayout(record);
    layout->addWidget(ProgressBar);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);
    setMinimumWidth(320);

    connect(cmdCancel, &QPushButton::clicked, this, &frmDownload::cmdCancel_Click);
}

void frmDownload::cmdCancel_Click()
{
    DownloadCancel = true;
    EntryAccepted = false;
}

void frmDownload::reject()
{
    if (DownloadStarted && !unloaded_) {
        cmdCancel_Click();
        return;
    }
    QDialog::reject();
}

void frmDownload::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    // The work starts once the window is up and the modal loop runs.
    if (!DownloadStarted)
        QTimer::singleShot(0, this, &frmDownload::Form_Activate);
}

void frmDownload::Form_Activate()
{
    if (DownloadStarted)
        return;
    if (Download() == Outcome::Ended)
        SetUpDownloadedProgram();
}

void frmDownload::Unload()
{
    unloaded_ = true;
    done(QDialog::Accepted);
}

void frmDownload::ShowProgress(int percent)
{
    ProgressBar->setValue(percent);
}

void frmDownload::ShowRecord(std::int32_t address, int count)
{
    lbAddress->setText(DownloadAddressText(address));
    lbSize->setText(DownloadSizeText(count));
}

void frmDownload::LetEventsRun()
{
    DoEvents();   // cmdCancel gets its turn here
}

frmDownload::Outcome frmDownload::Download()
{
    DoEvents();   // the window is drawn before the first byte moves
    DownloadStarted = true;
    ProgressBar->setValue(0);
    DownloadCancel = false;

    const DownloadResult result = DownloadMachineCode(MainForm->Link(), MainForm->Dialog.FileName, *this);
    EntryAccepted = result.written;
    switch (result.kind) {
    case DownloadResult::Kind::NoTarget:
        MsgBox(QStringLiteral("Can't Write to Memory !"), MbOkOnly | MbExclamation, DownloadErrorCaption);
        Unload();
        return Outcome::Failed;
    case DownloadResult::Kind::Failed:
        MsgBox(result.failure + QStringLiteral(" !"), MbOkOnly | MbExclamation, ReadErrorCaption);
        RaiseActiveChild();
        Unload();
        return Outcome::Failed;
    case DownloadResult::Kind::Ended: break;
    }
    RaiseActiveChild();
    lbAddress->clear();
    lbSize->clear();
    Unload();
    return Outcome::Ended;
}

void SetUpDownloadedProgram()
{
    if (!EntryAccepted)
        return;
    frmMain& main = *MainForm;
    main.SetPanelText(2, QStringLiteral("Program: ") + S19File);
    BreakpointTable.fill(0);
    BreakpointCount = 0;
    main.BreakpointCountChanged();

    main.Link().InCPU();
    if (!BoardConnected)
        return;
    for (const char* window : {"frmRegCPU", "frmStack"})
        if (!main.IsOpen(QString::fromLatin1(window)))
            main.LoadWindow(QString::fromLatin1(window));
    if (!BoardConnected)
        return;

    const QString disAsm = QStringLiteral("frmDisAsm");
    if (!main.IsOpen(disAsm)) {
        main.LoadWindow(disAsm);   // its load puts it on PC
    } else if (QWidget* window = main.Window(disAsm)) {
        main.mdiArea()->setActiveSubWindow(FrameOf("frmDisAsm"));
        window->setFocus();
        main.CallWindow(window, "mnuGoToPCAddress");
        main.CallWindow(window, "mnuRefresh");
    }
    main.RefreshRun();

    for (const char* window : {"frmStack", "frmRegCPU"})
        if (QMdiSubWindow* frame = FrameOf(window))
            frame->raise();
    if (QMdiSubWindow* frame = FrameOf("frmDisAsm")) {
        main.mdiArea()->setActiveSubWindow(frame);
        frame->widget()->setFocus();
    }
}
