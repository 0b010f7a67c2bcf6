#include "support/ChipHarness.h"

#include "hc11/asm/Assembler.h"
#include "support/S19Image.h"

#include <QFile>
#include <QTest>

QString AssembleInto(std::array<std::uint8_t, 65536>& memory, const std::string& source)
{
    const auto result = hc11::as11::AssembleSource(source);
    if (!result.errors.empty())
        return QString::fromStdString(result.ErrorFileText());
    const asmtest::S19Image image = asmtest::ReadS19(result.s19);
    for (const auto& [address, byte] : image.bytes)
        memory[address] = byte;
    return {};
}

bool AssembleExampleInto(std::array<std::uint8_t, 65536>& memory, const char* name)
{
    QFile file(QFINDTESTDATA(QStringLiteral("../../examples/") + QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) && AssembleInto(memory, file.readAll().toStdString()).isEmpty();
}

ChipHarness::ChipHarness(const std::string& source, const hc11::chip::ChipSetup& setup) : chip(setup)
{
    if (const QString errors = Load(source); !errors.isEmpty())
        qFatal("%s", qPrintable(errors));
}

QString ChipHarness::Load(const std::string& source)
{
    auto& ram = chip.Ram();
    ram[0xFFFE] = 0xE0;
    ram[0xFFFF] = 0x00;
    const QString errors = AssembleInto(ram, source);
    if (errors.isEmpty())
        chip.Reset();
    return errors;
}

bool ChipHarness::RunTo(std::uint16_t address, std::uint64_t limit)
{
    const std::uint64_t end = chip.Cycles() + limit;
    while (chip.Core().regs.pc != address || chip.Core().State() != hc11::RunState::Running) {
        if (chip.Cycles() >= end)
            return false;
        chip.Step();
    }
    return true;
}
