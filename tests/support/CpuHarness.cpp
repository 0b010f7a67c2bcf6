#include "support/CpuHarness.h"

#include <QTest>

void CpuHarness::Poke(std::uint16_t address, std::initializer_list<int> bytes)
{
    for (int b : bytes)
        memory.bytes[address++] = std::uint8_t(b);
}

std::uint16_t CpuHarness::Word(std::uint16_t address) const
{
    return std::uint16_t(memory.bytes[address] << 8 | memory.bytes[std::uint16_t(address + 1)]);
}

int CpuHarness::Run(std::initializer_list<int> instruction, std::uint16_t at)
{
    Poke(at, instruction);
    cpu.regs.pc = at;
    return cpu.Step();
}

QString FlagLetters(std::uint8_t ccr)
{
    QString letters;
    const char names[] = "SXHINZVC";
    for (int bit = 7; bit >= 0; --bit)
        if (ccr & (1 << bit))
            letters += QLatin1Char(names[7 - bit]);
    return letters;
}

void RunCpuCases(const std::vector<CpuCase>& cases)
{
    for (const CpuCase& c : cases) {
        CpuHarness h;
        for (std::size_t i = 0; i < c.bytes.size(); ++i)
            h.memory.bytes[CpuHarness::Origin + i] = std::uint8_t(c.bytes[i]);
        h.cpu.regs.SetD(c.d);
        h.cpu.regs.ix = c.x;
        h.cpu.regs.iy = c.y;
        h.cpu.regs.ccr = c.ccr;
        h.cpu.regs.pc = CpuHarness::Origin;
        h.cpu.Step();
        const auto hex = [](int v) { return QString::number(v, 16).toUpper(); };
        QString what = QStringLiteral("opcode %1, D=%2 X=%3 Y=%4 CCR=%5: ")
                           .arg(hex(c.bytes[0]), hex(c.d), hex(c.x), hex(c.y), FlagLetters(c.ccr));
        const auto check = [&](bool good, const QString& got) {
            if (!good)
                QTest::qFail(qPrintable(what + got), __FILE__, __LINE__);
            return good;
        };
        if (!check(h.cpu.regs.D() == c.outD, "D=" + hex(h.cpu.regs.D()))
            || !check(h.cpu.regs.ix == c.outX, "X=" + hex(h.cpu.regs.ix))
            || !check(h.cpu.regs.iy == c.outY, "Y=" + hex(h.cpu.regs.iy))
            || !check(FlagLetters(h.cpu.regs.ccr) == QLatin1String(c.flags), "flags " + FlagLetters(h.cpu.regs.ccr)))
            return;
    }
}
