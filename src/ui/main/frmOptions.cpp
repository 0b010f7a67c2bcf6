#include "ui/main/frmOptions.h"

#include "engine/state/TargetState.h"
#include "platform/DeviceAccess.h"
#include "platform/MSComm.h"
#include "platform/widgets/ModalDialog.h"
#include "ui/source/frmEditor.h"
#include "ui/main/frmMain.h"
#include "ui/main/frmPortDevice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace {
constexpr int PortCount = 4;

void WriteLabels(const FontRecord& font, QLabel* name, QLabel* style, QLabel* size)
{
    name->setText(font.Name);
    style->setText(FontStyleText(font));
    size->setText(QString::number(font.Size));
}

void WriteDialog(const FontRecord& font, CommonDialog& dialog)
{
    dialog.FontName = font.Name;
    dialog.FontSize = font.Size;
    dialog.FontBold = font.Bold;
    dialog.FontItalic = font.Italic;
}

void ReadDialog(const CommonDialog& dialog, FontRecord& font)
{
    font.Name = dialog.FontName;
    font.Size = static_cast<float>(dialog.FontSize);
    font.Bold = dialog.FontBold;
    font.Italic = dialog.FontItalic;
}
}  // namespace

frmOptions::frmOptions(frmMain& main) : QDialog(&main), main_(main)
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));

    auto* general = new QWidget;
    auto* page = new QVBoxLayout(general);
    page->addWidget(FontFrame(QStringLiteral("EditorFont"), QStringLiteral("Editor Font"), 'E', lbEName, lbEStyle,
                              lbESize, cmdESet));
    page->addWidget(FontFrame(QStringLiteral("PrinterFont"), QStringLiteral("Printer Font"), 'P', lbPName, lbPStyle,
                              lbPSize, cmdPSet));

    auto* port = new QGroupBox(general);
    port->setObjectName(QStringLiteral("ComPort"));
    chSimEnabled = new QCheckBox(QStringLiteral("Simulator"), port);
    chSimEnabled->setObjectName(QStringLiteral("chSimEnabled"));
    chSimPeripherals = new QCheckBox(QStringLiteral("Simulate on-chip peripherals"), port);
    chSimPeripherals->setObjectName(QStringLiteral("chSimPeripherals"));
    auto* lbComPort = new QLabel(QStringLiteral("&Communication Port:"), port);
    lbComPort->setObjectName(QStringLiteral("lbComPort"));
    cbComPort = new QComboBox(port);
    cbComPort->setObjectName(QStringLiteral("cbComPort"));
    for (int number = 1; number <= PortCount; ++number)
        cbComPort->addItem(QStringLiteral("COM %1").arg(number));
    lbComPort->setBuddy(cbComPort);
    lbDevice = new QLabel(port);
    lbDevice->setObjectName(QStringLiteral("lbDevice"));
    cmdDevice = new QPushButton(QStringLiteral("&Device ..."), port);
    cmdDevice->setObjectName(QStringLiteral("cmdDevice"));
    auto* portGrid = new QGridLayout(port);
    portGrid->addWidget(chSimEnabled, 0, 0, 1, 3);
    portGrid->addWidget(chSimPeripherals, 1, 0, 1, 3);
    portGrid->addWidget(lbComPort, 2, 0);
    portGrid->addWidget(cbComPort, 2, 1);
    portGrid->addWidget(cmdDevice, 2, 2);
    portGrid->addWidget(lbDevice, 3, 1, 1, 2);
    page->addWidget(port);

    TabStrip = new QTabWidget(this);
    TabStrip->setObjectName(QStringLiteral("TabStrip"));
    TabStrip->addTab(general, QStringLiteral("General"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(TabStrip);
    layout->addLayout(OkCancelRow(*this, cmdOK, cmdCancel, [this] { cmdOK_Click(); }));

    connect(cmdESet, &QPushButton::clicked, this, &frmOptions::cmdESet_Click);
    connect(cmdPSet, &QPushButton::clicked, this, &frmOptions::cmdPSet_Click);
    connect(cmdDevice, &QPushButton::clicked, this, &frmOptions::cmdDevice_Click);
    connect(cbComPort, &QComboBox::currentIndexChanged, this, &frmOptions::ShowDevice);
    Form_Load();
}

QGroupBox* frmOptions::FontFrame(const QString& name, const QString& caption, char letter, QLabel*& fontName,
                                 QLabel*& style, QLabel*& size, QPushButton*& set)
{
    auto* frame = new QGroupBox(caption);
    frame->setObjectName(name);
    auto* grid = new QGridLayout(frame);
    const QString prefix = QStringLiteral("lb") + QLatin1Char(letter);
    const auto row = [&](int at, const QString& field, const QString& text, QLabel*& value) {
        auto* title = new QLabel(text, frame);
        title->setObjectName(prefix + field + QLatin1Char('0'));
        value = new QLabel(frame);
        value->setObjectName(prefix + field);
        grid->addWidget(title, at, 0);
        grid->addWidget(value, at, 1);
    };
    row(0, QStringLiteral("Name"), QStringLiteral("Name:"), fontName);
    row(1, QStringLiteral("Style"), QStringLiteral("Style:"), style);
    row(2, QStringLiteral("Size"), QStringLiteral("Size:"), size);
    set = new QPushButton(QStringLiteral("Set Font ..."), frame);
    set->setObjectName(QStringLiteral("cmd") + QLatin1Char(letter) + QStringLiteral("Set"));
    grid->addWidget(set, 0, 2, 3, 1, Qt::AlignVCenter);
    grid->setColumnStretch(1, 1);
    return frame;
}

void frmOptions::Form_Load()
{
    ScreenFontCopy = ScreenFont;
    PrintFontCopy = PrintFont;
    UpdateSLabels();
    UpdatePLabels();
    for (int number = 1; number <= PortCount; ++number)
        DeviceCopy[number - 1] = PortDevicePath(number);
    cbComPort->setCurrentIndex(std::clamp<int>(COMPort, 1, PortCount) - 1);
    ShowDevice();
    chSimEnabled->setChecked(TargetMode == SimulatorMode);
    chSimPeripherals->setChecked(SimulatePeripherals);
}

void frmOptions::UpdateSLabels() { WriteLabels(ScreenFontCopy, lbEName, lbEStyle, lbESize); }
void frmOptions::UpdatePLabels() { WriteLabels(PrintFontCopy, lbPName, lbPStyle, lbPSize); }
void frmOptions::UpdateSDialog() { WriteDialog(ScreenFontCopy, main_.Dialog); }
void frmOptions::UpdatePDialog() { WriteDialog(PrintFontCopy, main_.Dialog); }
void frmOptions::UpdateSFont() { ReadDialog(main_.Dialog, ScreenFontCopy); }
void frmOptions::UpdatePFont() { ReadDialog(main_.Dialog, PrintFontCopy); }

void frmOptions::cmdESet_Click()
{
    // Editors draw in a fixed-pitch face: the dialog offers those.
    UpdateSDialog();
    main_.Dialog.FixedPitchOnly = true;
    const bool chosen = main_.Dialog.ShowFont();
    main_.Dialog.FixedPitchOnly = false;
    if (!chosen)
        return;
    UpdateSFont();
    UpdateSLabels();
}

void frmOptions::cmdPSet_Click()
{
    UpdatePDialog();
    if (!main_.Dialog.ShowFont())
        return;
    UpdatePFont();
    UpdatePLabels();
}

void frmOptions::ShowDevice()
{
    const int index = cbComPort->currentIndex();
    const QString path = index >= 0 ? DeviceCopy[index] : QString();
    lbDevice->setText(WithAccessNote(path, path));
    lbDevice->setToolTip(AccessRefused(path) ? PermissionAdvice(path) : QString());
}

void frmOptions::cmdDevice_Click()
{
    const int index = cbComPort->currentIndex();
    if (index < 0)
        return;
    if (const std::optional<QString> path = frmPortDevice::Choose(index + 1, DeviceCopy[index], this)) {
        DeviceCopy[index] = *path;
        ShowDevice();
    }
}

void frmOptions::cmdOK_Click()
{
    ScreenFont = ScreenFontCopy;
    PrintFont = PrintFontCopy;
    // A run on the simulated chip ends before the simulator changes under it.
    if (ChipSimulated() && BoardRunning)
        main_.mnuRunPause_Click();
    TargetMode = chSimEnabled->isChecked() ? SimulatorMode : BoardMode;
    SimulatePeripherals = chSimPeripherals->isChecked();
    for (frmEditor* editor : LoadedEditors())
        editor->ApplyScreenFont();
    COMPort = static_cast<std::int16_t>(cbComPort->currentIndex() + 1);
    for (int number = 1; number <= PortCount; ++number)
        if (DeviceCopy[number - 1] != PortDevicePath(number))
            SetPortDevicePath(number, DeviceCopy[number - 1]);
    // Reopened even when nothing about the port changed: the board is looked at anew.
    main_.Link().OpenPort(COMPort);
    accept();
}

void frmMain::mnuViewOptions_Click()
{
    frmOptions form(*this);
    RunModal(form);
    // Whichever way it closed, the register entries and the run commands follow the mode.
    TargetModeMenus();
    RunCommandsChanged();
}
