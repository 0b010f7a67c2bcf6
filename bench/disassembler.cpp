// How long decoding a full 50-row page of the disassembly window takes.
#include <chrono>
#include <cstdio>
#include <string>

#include "engine/code/Asm.h"
#include "engine/state/TargetState.h"

int main()
{
    // A realistic mix: every byte value in turn, so all modes and lengths occur.
    ProgramBase = 0xE000;
    for (std::size_t i = 0; i < ProgramBuffer.size(); ++i)
        ProgramBuffer[i] = static_cast<std::uint8_t>(i * 37 + 11);

    constexpr int Pages = 20000;
    std::string text;
    std::size_t sink = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int page = 0; page < Pages; ++page) {
        std::int32_t address = ProgramBase + (page % 5);
        for (int row = 0; row < 50; ++row) {
            std::int16_t length = 0;
            DisAsmLine(address, length, text);
            sink += text.size();
            address = (address + length) & 0xFFFF;
        }
    }
    const double us = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
    std::printf("disasm_page_us: %.2f us\n", us / Pages);
    return sink == 0;   // keeps the work from being optimised away
}
