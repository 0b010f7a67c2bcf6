#include "support/CpuHarness.h"

#include <QTest>

#include <algorithm>

void Poke(std::array<std::uint8_t, 65536>& memory, std::uint16_t address, std::initializer_list<int> bytes)
{
    for (int b : bytes)
        memory[address++] = std::uint8_t(b);
}

void CpuHarness::Poke(std::uint16_t address, std::initializer_list<int> bytes) { ::Poke(memory.bytes, address, bytes); }

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
    for (int bit = 7; bit >= 0; --bit)
        if (ccr & (1 << bit))
            letters += QLatin1Char("SXHINZVC"[7 - bit]);
    return letters;
}

void RunCpuCases(const std::vector<CpuCase>& cases)
{
    const auto hex = [](int v) { return QString::number(v, 16).toUpper(); };
    for (const CpuCase& c : cases) {
        CpuHarness h;
        std::copy(c.bytes.begin(), c.bytes.end(), h.memory.bytes.begin() + CpuHarness::Origin);
        h.cpu.regs = {std::uint8_t(c.d >> 8), std::uint8_t(c.d), c.x, c.y, 0x0100, CpuHarness::Origin, c.ccr};
        h.cpu.Step();
        const hc11::Registers& r = h.cpu.regs;
        const QString got = QStringLiteral("D=%1 X=%2 Y=%3 %4").arg(hex(r.D()), hex(r.ix), hex(r.iy), FlagLetters(r.ccr));
        const QString want = QStringLiteral("D=%1 X=%2 Y=%3 %4").arg(hex(c.outD), hex(c.outX), hex(c.outY), c.flags);
        if (got != want) {
            const QString what = QStringLiteral("opcode %1 on D=%2 X=%3 Y=%4 %5: got %6, want %7")
                                     .arg(hex(c.bytes[0]), hex(c.d), hex(c.x), hex(c.y), FlagLetters(c.ccr), got, want);
            QTest::qFail(qPrintable(what), __FILE__, __LINE__);
            return;
        }
    }
}
