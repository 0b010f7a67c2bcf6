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

QLineEdit* ReadOnlyField(QWidget* parent, const QString& name)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    return field;
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

    auto* in = new QGroupBox(QStringLiteral("In Unit"), this);
    TextIn = new QLineEdit(in);
    TextIn->setObjectName(QStringLiteral("TextIn"));
    ComboFormatIn = new QComboBox(in);
    ComboFormatIn->setObjectName(QStringLiteral("ComboFormatIn"));
    ComboFormatIn->addItems(iounit::InFormats());
    CommandInput = new QPushButton(QStringLiteral("Enter"), in);
    CommandInput->setObjectName(QStringLiteral("CommandInput"));
    TextInBinary = ReadOnlyField(in, QStringLiteral("TextInBinary"));
    ShapeInFresh = Lamp(in, QStringLiteral("ShapeInFresh"));
    auto* inRow = new QHBoxLayout;
    inRow->addWidget(TextIn);
    inRow->addWidget(ComboFormatIn);
    inRow->addWidget(CommandInput);
    auto* inPending = new QHBoxLayout;
    inPending->addWidget(ShapeInFresh);
    inPending->addWidget(new QLabel(QStringLiteral("Data Pending"), in));
    inPending->addStretch();
    auto* inForm = new QFormLayout;
    inForm->addRow(inRow);
    inForm->addRow(QStringLiteral("Data Register"), TextInBinary);
    inForm->addRow(inPending);
    in->setLayout(inForm);

    auto* out = new QGroupBox(QStringLiteral("Out Unit"), this);
    TextOut = ReadOnlyField(out, QStringLiteral("TextOut"));
    ComboFormatOut = new QComboBox(out);
    ComboFormatOut->setObjectName(QStringLiteral("ComboFormatOut"));
    ComboFormatOut->addItems(iounit::OutFormats());
    CommandRead = new QPushButton(QStringLiteral("Read"), out);
    CommandRead->setObjectName(QStringLiteral("CommandRead"));
    TextOutBinary = ReadOnlyField(out, QStringLiteral("TextOutBinary"));
    ShapeOutFresh = Lamp(out, QStringLiteral("ShapeOutFresh"));
    auto* outRow = new QHBoxLayout;
    outRow->addWidget(TextOut);
    outRow->addWidget(ComboFormatOut);
    outRow->addWidget(CommandRead);
    auto* outReady = new QHBoxLayout;
    outReady->addWidget(ShapeOutFresh);
    outReady->addWidget(new QLabel(QStringLiteral("Data Ready"), out));
    outReady->addStretch();
    auto* leds = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        auto* cell = new QVBoxLayout;
        ShapeLed[i] = Lamp(out, QStringLiteral("ShapeLed%1").arg(i));
        auto* label = new QLabel(QString::number(i + 1), out);
        label->setAlignment(Qt::AlignCenter);
        cell->addWidget(ShapeLed[i], 0, Qt::AlignHCenter);
        cell->addWidget(label);
        leds->addLayout(cell);
    }
    CheckLEDPower = new QCheckBox(QStringLiteral("LED Power On"), out);
    CheckLEDPower->setObjectName(QStringLiteral("CheckLEDPower"));
    auto* outForm = new QFormLayout;
    outForm->addRow(outRow);
    outForm->addRow(QStringLiteral("Data Register"), TextOutBinary);
    outForm->addRow(outReady);
    outForm->addRow(leds);
    outForm->addRow(CheckLEDPower);
    out->setLayout(outForm);

    CommandClose = new QPushButton(QStringLiteral("Close"), this);
    CommandClose->setObjectName(QStringLiteral("CommandClose"));
    auto* closeRow = new QHBoxLayout;
    closeRow->addStretch();
    closeRow->addWidget(CommandClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(in);
    layout->addWidget(out);
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
