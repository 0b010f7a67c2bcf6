#include "ui/devices/frmIOBOard.h"

#include "platform/widgets/MsgBox.h"
#include "engine/link/TargetLink.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <tuple>

namespace {
const QColor Lit(255, 0, 0);
const QColor Unlit(128, 128, 128);

QLabel* Lamp(QWidget* parent, const QString& name)
{
    auto* lamp = new QLabel(parent);
    lamp->setObjectName(name);
    lamp->setFixedSize(16, 16);
    lamp->setAutoFillBackground(true);
    return lamp;
}

void Light(QLabel* lamp, bool lit)
{
    QPalette palette = lamp->palette();
    palette.setColor(QPalette::Window, lit ? Lit : Unlit);
    lamp->setPalette(palette);
}

QLineEdit* Field(QWidget* parent, const QString& name, bool readOnly)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(readOnly);
    return field;
}

// What tells the In Unit's group from the Out Unit's.
struct UnitGroupLook {
    const char* side;          // "In" or "Out": the caption and the controls' names carry it
    bool textReadOnly;         // the Out Unit's byte is only shown
    QStringList formats;
    const char* commandName;
    const char* commandCaption;
    const char* freshCaption;
};

// The controls of one group, the same for both units.
struct UnitGroup {
    QGroupBox* box;
    QLineEdit* text;
    QComboBox* format;
    QPushButton* command;
    QLineEdit* binary;
    QLabel* fresh;
    QFormLayout* form;

    auto Controls() const { return std::tuple(text, format, command, binary, fresh); }
};

// The byte, its format and the command on one line; the data register in
// binary; the lamp that says a byte waits.
UnitGroup BuildUnitGroup(QWidget* parent, const UnitGroupLook& look)
{
    const QString side = QString::fromLatin1(look.side);
    UnitGroup g{};
    g.box = new QGroupBox(side + QStringLiteral(" Unit"), parent);
    g.text = Field(g.box, QStringLiteral("Text") + side, look.textReadOnly);
    g.format = new QComboBox(g.box);
    g.format->setObjectName(QStringLiteral("ComboFormat") + side);
    g.format->addItems(look.formats);
    g.command = new QPushButton(QString::fromLatin1(look.commandCaption), g.box);
    g.command->setObjectName(QString::fromLatin1(look.commandName));
    g.binary = Field(g.box, QStringLiteral("Text%1Binary").arg(side), true);
    g.fresh = Lamp(g.box, QStringLiteral("Shape%1Fresh").arg(side));
    auto* entry = new QHBoxLayout;
    entry->addWidget(g.text);
    entry->addWidget(g.format);
    entry->addWidget(g.command);
    auto* fresh = new QHBoxLayout;
    fresh->addWidget(g.fresh);
    fresh->addWidget(new QLabel(QString::fromLatin1(look.freshCaption), g.box));
    fresh->addStretch();
    g.form = new QFormLayout;
    g.form->addRow(entry);
    g.form->addRow(QStringLiteral("Data Register"), g.binary);
    g.form->addRow(fresh);
    g.box->setLayout(g.form);
    return g;
}
}  // namespace

QWidget* CreateIOBOard(frmMain& main)
{
    auto* window = new frmIOBOard(main);
    main.Link().IoUnitWindow = window;
    return window;
}

// The unit keeps no placement: it opens where the MDI area puts it.
frmIOBOard::frmIOBOard(frmMain& main) : ToolWindow(main, QStringLiteral("Input-Output Unit"), QString())
{
    const UnitGroup in = BuildUnitGroup(
        this, {"In", false, iounit::InFormats(), "CommandInput", "Enter", "Data Pending"});
    std::tie(TextIn, ComboFormatIn, CommandInput, TextInBinary, ShapeInFresh) = in.Controls();

    const UnitGroup out = BuildUnitGroup(
        this, {"Out", true, iounit::OutFormats(), "CommandRead", "Read", "Data Ready"});
    std::tie(TextOut, ComboFormatOut, CommandRead, TextOutBinary, ShapeOutFresh) = out.Controls();
    auto* leds = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        auto* cell = new QVBoxLayout;
        ShapeLed[i] = Lamp(out.box, QStringLiteral("ShapeLed%1").arg(i));
        auto* label = new QLabel(QString::number(i + 1), out.box);
        label->setAlignment(Qt::AlignCenter);
        cell->addWidget(ShapeLed[i], 0, Qt::AlignHCenter);
        cell->addWidget(label);
        leds->addLayout(cell);
    }
    CheckLEDPower = new QCheckBox(QStringLiteral("LED Power On"), out.box);
    CheckLEDPower->setObjectName(QStringLiteral("CheckLEDPower"));
    out.form->addRow(leds);
    out.form->addRow(CheckLEDPower);

    CommandClose = new QPushButton(QStringLiteral("Close"), this);
    CommandClose->setObjectName(QStringLiteral("CommandClose"));
    // The simulated chip's interrupt pins, held low while a button is down.
    CommandIrq = new QPushButton(QStringLiteral("IRQ"), this);
    CommandIrq->setObjectName(QStringLiteral("CommandIrq"));
    CommandXirq = new QPushButton(QStringLiteral("XIRQ"), this);
    CommandXirq->setObjectName(QStringLiteral("CommandXirq"));
    for (QPushButton* pin : {CommandIrq, CommandXirq}) {
        pin->setCheckable(true);
        pin->setToolTip(QStringLiteral("Holds the simulated chip's %1 pin low while down").arg(pin->text()));
    }
    auto* closeRow = new QHBoxLayout;
    closeRow->addWidget(CommandIrq);
    closeRow->addWidget(CommandXirq);
    closeRow->addStretch();
    closeRow->addWidget(CommandClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(in.box);
    layout->addWidget(out.box);
    layout->addLayout(closeRow);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(CommandInput, &QPushButton::clicked, this, &frmIOBOard::CommandInput_Click);
    connect(TextIn, &QLineEdit::returnPressed, this, &frmIOBOard::CommandInput_Click);
    connect(CommandRead, &QPushButton::clicked, this, &frmIOBOard::CommandRead_Click);
    connect(TextIn, &QLineEdit::textEdited, this, [this](const QString& text) { unit_.TextIn = text; });
    connect(ComboFormatIn, &QComboBox::textActivated, this, [this](const QString& format) {
        unit_.SetInFormat(format);
        Show();
    });
    connect(ComboFormatOut, &QComboBox::textActivated, this, [this](const QString& format) {
        unit_.SetOutFormat(format);
        Show();
    });
    connect(CheckLEDPower, &QCheckBox::toggled, this, [this](bool on) {
        unit_.LedPower = on;
        Show();
    });
    connect(CommandClose, &QPushButton::clicked, this, [this] { parentWidget() ? parentWidget()->close() : close(); });
    connect(CommandIrq, &QPushButton::toggled, this, [this](bool down) { link_.ChipSim.SetIrq(down); });
    connect(CommandXirq, &QPushButton::toggled, this, [this](bool down) { link_.ChipSim.SetXirq(down); });
    Show();
}

frmIOBOard::~frmIOBOard()
{
    if (MainForm)
        Form_Unload();
}

void frmIOBOard::Form_Unload()
{
    if (link_.IoUnitWindow == this)
        link_.IoUnitWindow = nullptr;
    // With the window gone no button holds a pin low: a pin left low would
    // keep interrupting with nothing on screen to let it go.
    if (CommandIrq->isChecked())
        link_.ChipSim.SetIrq(false);
    if (CommandXirq->isChecked())
        link_.ChipSim.SetXirq(false);
}

void frmIOBOard::Show()
{
    if (TextIn->text() != unit_.TextIn)
        TextIn->setText(unit_.TextIn);
    TextInBinary->setText(unit_.TextInBinary);
    TextOut->setText(unit_.TextOut);
    TextOutBinary->setText(unit_.TextOutBinary);
    Light(ShapeInFresh, unit_.InFresh);
    Light(ShapeOutFresh, unit_.OutFresh);
    CommandIrq->setEnabled(ChipSimulated());
    CommandXirq->setEnabled(ChipSimulated());
    for (int i = 0; i < 8; ++i)
        Light(ShapeLed[i], unit_.LedLit(i));
}

void frmIOBOard::setInFresh(std::uint8_t setting)
{
    unit_.setInFresh(setting);
    Show();
}

void frmIOBOard::setInDataRegister(std::uint8_t Data)
{
    unit_.setInDataRegister(Data);
    Show();
}

void frmIOBOard::setOutFresh(std::uint8_t setting)
{
    unit_.setOutFresh(setting);
    Show();
}

void frmIOBOard::setOutDataRegister(std::uint8_t Data)
{
    unit_.setOutDataRegister(Data);
    Show();
}

void frmIOBOard::CommandInput_Click()
{
    unit_.TextIn = TextIn->text();
    if (!unit_.Enter())
        MsgBox(QStringLiteral("Wrong data format or Value out of range"), MbOkOnly, QStringLiteral("Input Error"));
    Show();
}

void frmIOBOard::CommandRead_Click()
{
    unit_.Read();
    Show();
}
