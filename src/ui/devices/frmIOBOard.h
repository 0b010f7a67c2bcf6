// "Input-Output Unit": the In Unit panel, where a byte is typed and entered
// for the simulated program, and the Out Unit panel, which shows the byte the
// program wrote in a chosen format and on eight LEDs. It mirrors an IoUnit.
#pragma once

#include "engine/link/IoUnitHooks.h"
#include "ui/views/ToolWindow.h"
#include "engine/link/IoUnit.h"

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

class frmIOBOard : public ToolWindow, public IoUnitHooks {
    Q_OBJECT
public:
    ~frmIOBOard() override;

    void setInFresh(std::uint8_t setting) override;
    void setInDataRegister(std::uint8_t Data) override;
    void setOutFresh(std::uint8_t setting) override;
    void setOutDataRegister(std::uint8_t Data) override;

    const IoUnit& Unit() const { return unit_; }

    QLineEdit* TextIn = nullptr;
    QComboBox* ComboFormatIn = nullptr;
    QPushButton* CommandInput = nullptr;
    QLineEdit* TextInBinary = nullptr;
    QLabel* ShapeInFresh = nullptr;
    QLineEdit* TextOut = nullptr;
    QComboBox* ComboFormatOut = nullptr;
    QPushButton* CommandRead = nullptr;
    QLineEdit* TextOutBinary = nullptr;
    QLabel* ShapeOutFresh = nullptr;
    std::array<QLabel*, 8> ShapeLed{};
    QCheckBox* CheckLEDPower = nullptr;
    QPushButton* CommandClose = nullptr;
    QPushButton* CommandIrq = nullptr;    // on the simulated chip only
    QPushButton* CommandXirq = nullptr;

    void CommandInput_Click();
    void CommandRead_Click();

protected:
    void Form_Unload() override;

private:
    friend QWidget* CreateIOBOard(frmMain&);
    explicit frmIOBOard(frmMain& main);
    // The controls from the unit's state.
    void Show();

    IoUnit unit_;
};

QWidget* CreateIOBOard(frmMain& main);
