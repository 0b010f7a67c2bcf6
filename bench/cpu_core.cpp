// Speed of the HC11 core: a free run of a mixed program (loads, stores,
// arithmetic, branches, indexed and bit accesses, JSR/RTS, MUL/IDIV), and the
// same kind of straight-line work handed one instruction at a time to Velmar
// with its memory events. Real time is a 2 MHz E clock.

#include "hc11/InstructionSet.h"
#include "platform/Velmar.h"
#include "hc11/Cpu.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <vector>

namespace {

constexpr double EClockHz = 2'000'000.0;
constexpr std::uint16_t CodeBase = 0xC000;

double Seconds(std::chrono::steady_clock::time_point since)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

// Hand assembly: emits bytes at CodeBase and resolves relative offsets.
struct Code {
    std::vector<std::uint8_t> bytes;

    std::uint16_t Here() const { return std::uint16_t(CodeBase + bytes.size()); }
    void Emit(std::initializer_list<int> list)
    {
        for (int b : list)
            bytes.push_back(std::uint8_t(b));
    }
    // The offset byte of a branch whose next instruction starts right after it.
    void Offset(std::uint16_t target) { bytes.push_back(std::uint8_t(target - (Here() + 1))); }
};

std::vector<std::uint8_t> MixedProgram()
{
    Code c;
    c.Emit({0x8E, 0x00, 0xFF});                    // LDS  #$00FF
    const std::uint16_t outer = c.Here();
    c.Emit({0xCE, 0x20, 0x00});                    // LDX  #$2000
    c.Emit({0x18, 0xCE, 0x21, 0x00});              // LDY  #$2100
    const std::uint16_t loop = c.Here();
    c.Emit({0xA6, 0x00});                          // LDAA 0,X
    c.Emit({0xE6, 0x01});                          // LDAB 1,X
    c.Emit({0x1B});                                // ABA
    c.Emit({0x18, 0xA7, 0x00});                    // STAA 0,Y
    c.Emit({0x3D});                                // MUL
    c.Emit({0xC3, 0x12, 0x34});                    // ADDD #$1234
    c.Emit({0xDD, 0x40});                          // STD  $40
    const std::size_t jsrAt = c.bytes.size();
    c.Emit({0xBD, 0x00, 0x00});                    // JSR  sub (patched below)
    c.Emit({0x96, 0x43});                          // LDAA $43
    c.Emit({0x84, 0x7F});                          // ANDA #$7F
    c.Emit({0x4C});                                // INCA
    c.Emit({0xA7, 0x02});                          // STAA 2,X
    c.Emit({0x1C, 0x03, 0x01});                    // BSET 3,X #$01
    c.Emit({0x1F, 0x03, 0x80});                    // BRCLR 3,X #$80 skip
    const std::size_t brclrAt = c.bytes.size();
    c.bytes.push_back(0);
    c.Emit({0x01});                                // NOP
    c.bytes[brclrAt] = std::uint8_t(c.Here() - (CodeBase + brclrAt + 1));
    c.Emit({0x08});                                // skip: INX
    c.Emit({0x18, 0x08});                          // INY
    c.Emit({0x8C, 0x20, 0x80});                    // CPX  #$2080
    c.Emit({0x26}); c.Offset(loop);                // BNE  loop
    c.Emit({0x20}); c.Offset(outer);               // BRA  outer
    const std::uint16_t sub = c.Here();
    c.bytes[jsrAt + 1] = std::uint8_t(sub >> 8);
    c.bytes[jsrAt + 2] = std::uint8_t(sub);
    c.Emit({0x3C});                                // sub: PSHX
    c.Emit({0xDC, 0x40});                          // LDD  $40
    c.Emit({0xCE, 0x00, 0x07});                    // LDX  #$0007
    c.Emit({0x02});                                // IDIV
    c.Emit({0xDF, 0x42});                          // STX  $42
    c.Emit({0x38});                                // PULX
    c.Emit({0x39});                                // RTS
    return c.bytes;
}

void BenchCore()
{
    hc11::FlatMemory memory;
    const std::vector<std::uint8_t> program = MixedProgram();
    for (std::size_t i = 0; i < program.size(); ++i)
        memory.bytes[CodeBase + i] = program[i];
    for (int i = 0; i < 0x100; ++i)
        memory.bytes[0x2000 + i] = std::uint8_t(i * 37 + 11);
    memory.bytes[hc11::ResetVector] = CodeBase >> 8;
    memory.bytes[hc11::ResetVector + 1] = CodeBase & 0xFF;

    hc11::Cpu cpu(memory);
    cpu.Reset();
    constexpr long Instructions = 30'000'000;
    const auto start = std::chrono::steady_clock::now();
    for (long i = 0; i < Instructions; ++i)
        cpu.Step();
    const double seconds = Seconds(start);
    std::printf("cpu_core_mips: %.1f Minstr/s\n", Instructions / seconds / 1e6);
    std::printf("cpu_core_realtime: %.1f x\n", double(cpu.cycles) / seconds / EClockHz);
}

// Straight-line instructions as the stepping logic hands them over, five
// bytes each, the rest filled with NOP.
std::vector<std::array<std::int16_t, 5>> StraightLineWork()
{
    const std::initializer_list<std::initializer_list<int>> list = {
        {0xCE, 0x20, 0x00},          // LDX  #$2000
        {0x18, 0xCE, 0x21, 0x00},    // LDY  #$2100
        {0xA6, 0x00},                // LDAA 0,X
        {0xE6, 0x01},                // LDAB 1,X
        {0x1B},                      // ABA
        {0x18, 0xA7, 0x00},          // STAA 0,Y
        {0x3D},                      // MUL
        {0xC3, 0x12, 0x34},          // ADDD #$1234
        {0xDD, 0x40},                // STD  $40
        {0x3C},                      // PSHX
        {0xCE, 0x00, 0x07},          // LDX  #$0007
        {0x02},                      // IDIV
        {0xDF, 0x42},                // STX  $42
        {0x38},                      // PULX
        {0x1C, 0x03, 0x01},          // BSET 3,X #$01
        {0x1F, 0x03, 0x01, 0x10},    // BRCLR 3,X #$01 (bit set: not taken)
        {0x08},                      // INX
        {0x8C, 0x20, 0x80},          // CPX  #$2080
        {0x27, 0x10},                // BEQ  (not equal: not taken)
    };
    std::vector<std::array<std::int16_t, 5>> work;
    for (const auto& instruction : list) {
        std::array<std::int16_t, 5> bytes = {1, 1, 1, 1, 1};
        int i = 0;
        for (int b : instruction)
            bytes[i++] = std::int16_t(b);
        work.push_back(bytes);
    }
    return work;
}

void BenchVelmar()
{
    static std::array<std::uint8_t, 65536> memory{};
    Velmar velmar;
    QObject::connect(&velmar, &Velmar::ReadRequest,
                     [](std::int32_t address, std::int16_t& data) { data = memory[address & 0xFFFF]; });
    QObject::connect(&velmar, &Velmar::WriteRequest,
                     [](std::int32_t address, std::int16_t data) { memory[address & 0xFFFF] = std::uint8_t(data); });

    const auto work = StraightLineWork();
    std::vector<int> cycles;
    for (const auto& bytes : work)
        cycles.push_back(hc11::DecodeOpcode(std::uint8_t(bytes[0]), std::uint8_t(bytes[1]))->cycles);

    std::int16_t a = 0, b = 0, ccr = 0xD0;
    std::int32_t ix = 0, iy = 0, sp = 0x00FF;
    constexpr long Rounds = 300'000;
    std::uint64_t total = 0;
    const auto start = std::chrono::steady_clock::now();
    for (long round = 0; round < Rounds; ++round) {
        for (std::size_t i = 0; i < work.size(); ++i) {
            const auto& w = work[i];
            velmar.ExecuteInstruction(a, b, ix, iy, sp, ccr, w[0], w[1], w[2], w[3], w[4]);
            total += cycles[i];
        }
    }
    const double seconds = Seconds(start);
    std::printf("velmar_realtime: %.1f x\n", double(total) / seconds / EClockHz);
}

} // namespace

int main()
{
    BenchCore();
    BenchVelmar();
    return 0;
}
