#include "code/frmDownload.h"

#include "code/S1Record.h"
#include "core/TargetState.h"
#include "platform/DoEvents.h"
#include "platform/ModalDialog.h"
#include "platform/MsgBox.h"
#include "source/SourceRecords.h"
#include "target/TargetLink.h"
#include "views/EntryFields.h"
#include "workspace/frmMain.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <stdexcept>

namespace {
const QString ReadErrorCaption = QStringLiteral("Orvane - Read Error");
const QString DownloadErrorCaption = QStringLiteral("Orvane - Download Error");

// A run-time failure of the run: its text goes to the user with " !" behind it.
struct DownloadFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Fail(const QString& text)
{
    throw DownloadFailure(text.toStdString());
}

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

frmDownload::Outcome frmDownload::Download()
{
    DoEvents();   // the window is drawn before the first byte moves
    DownloadStarted = true;
    ProgressBar->setValue(0);
    DownloadCancel = false;

    QFile file(MainForm->Dialog.FileName);
    try {
        if (!file.open(QIODevice::ReadOnly))
            Fail(file.errorString());

        // The simulated erase leaves BoardConnected alone, and a port that
        // failed at start-up left it false: the simulator is always there.
        if (TargetMode == SimulatorMode)
            MainForm->FindBoard();
        MainForm->FlashErase();
        if (!BoardConnected) {
            MsgBox(QStringLiteral("Can't Write to Memory !"), MbOkOnly | MbExclamation, DownloadErrorCaption);
            file.close();
            Unload();
            return Outcome::Failed;
        }

        EntryAccepted = false;
        const qint64 length = file.size();
        int lineNumber = 0;
        while (!file.atEnd() && !DownloadCancel) {
            const QByteArray line = file.readLine();
            ++lineNumber;
            if (line.isEmpty() && file.error() != QFileDevice::NoError)
                Fail(file.errorString());
            ProgressBar->setValue(DownloadProgress(file.pos(), length));

            S1Record record = ReadS1Line(line);
            if (record.kind == S1Record::Kind::NoData)
                Fail(QStringLiteral("S1 record without data in line %1").arg(lineNumber));
            if (record.kind == S1Record::Kind::Good) {
                // The monitor and the simulator would both wrap into the save area at $0000.
                if (!S1RecordFits(record))
                    Fail(QStringLiteral("S1 record past $FFFF in line %1").arg(lineNumber));
                const auto count = static_cast<std::int16_t>(record.Data.size());
                lbAddress->setText(DownloadAddressText(record.Address));
                lbSize->setText(DownloadSizeText(count));
                MainForm->Programm(record.Address, record.Data, count);
                if (!BoardConnected)
                    break;
                EntryAccepted = true;
            }
            DoEvents();   // cmdCancel gets its turn here
        }
    } catch (const DownloadFailure& failure) {
        file.close();
        MsgBox(QString::fromStdString(failure.what()) + QStringLiteral(" !"), MbOkOnly | MbExclamation,
               ReadErrorCaption);
        RaiseActiveChild();
        Unload();
        return Outcome::Failed;
    }

    // Also after a Cancel or a failed record, PC follows the vector in the target.
    MainForm->InResetVector(CpuRegisters.PC);
    RaiseActiveChild();
    lbAddress->clear();
    lbSize->clear();
    file.close();
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
