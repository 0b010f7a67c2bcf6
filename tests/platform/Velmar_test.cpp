#include "platform/Velmar.h"

#include <array>
#include <vector>

namespace {

struct Access {
    bool write;
    std::int32_t address;
    std::int16_t data;
    bool operator==(const Access&) const = default;
};
using Log = std::vector<Access>;

struct Rig {
    Velmar velmar;
    std::array<std::int16_t, 65536> memory{};
    Log log;
    std::int16_t A = 0, B = 0, CCR = 0;
    std::int32_t IX = 0, IY = 0, SP = 0x01FF;

    Rig()
    {
        QObject::connect(&velmar, &Velmar::ReadRequest, [this](std::int32_t address, std::int16_t& data) {
            data = memory[address];
            log.push_back({false, address, data});
        });
        QObject::connect(&velmar, &Velmar::WriteRequest, [this](std::int32_t address, std::int16_t data) {
            memory[address] = data;
            log.push_back({true, address, data});
        });
    }
    // Runs one instruction; unused bytes are NOP, as the host fills them.
    void Run(const std::vector<int>& bytes)
    {
        std::int16_t b[5] = {1, 1, 1, 1, 1};
        for (std::size_t i = 0; i < bytes.size(); ++i)
            b[i] = std::int16_t(bytes[i]);
        log.clear();
        velmar.ExecuteInstruction(A, B, IX, IY, SP, CCR, b[0], b[1], b[2], b[3], b[4]);
    }
};

} // namespace

class VelmarTest : public QObject {
    Q_OBJECT
private slots:
    void registersComeBackInRangeWhateverGoesIn()
    {
        Rig r;
        r.A = 300, r.B = -1, r.IX = -5, r.IY = 70000, r.SP = -1;
        r.CCR = 0x144;                                        // X and Z, bit 8 dropped
        r.Run({0x4C});                                        // INCA: 300 counts as $2C
        QCOMPARE(tuple(r.A, r.B, r.IX, r.IY, r.SP, r.CCR), tuple(0x2D, 0xFF, 0xFFFB, 70000 - 65536, 0xFFFF, 0x40));
        r.Run({0x01 + 0x100});                                // opcode bytes are reduced too: NOP
        QCOMPARE(r.A, std::int16_t(0x2D));
        r.velmar.disconnect();
        QObject::connect(&r.velmar, &Velmar::ReadRequest, [](std::int32_t, std::int16_t& data) { data = 0x1F0; });
        r.Run({0x96, 0x00});                                  // a handler's stray high bits
        QCOMPARE(r.A, std::int16_t(0xF0));
    }

    // The frame's contents are the core's; here it travels as events, and a WAI's wait ends with the call.
    void swiRtiAndWaiMoveTheirFrameThroughEvents()
    {
        Rig r;
        r.A = 0x11, r.B = 0x22, r.IX = 0x3344, r.IY = 0x5566, r.CCR = 0xC1;
        r.memory[0xFFF6] = 0xE0;
        r.Run({0x3F});                                        // SWI: the return address is its length
        QVERIFY(r.log.size() == 11 && r.log.front() == (Access{true, 0x1FF, 0x01}));
        QVERIFY(r.log.back() == (Access{false, 0xFFF7, 0x00}));
        QCOMPARE(tuple(r.SP, r.CCR), tuple(0x01F6, 0xD1));
        r.A = r.B = r.IX = r.IY = 0;
        r.Run({0x3B});                                        // RTI
        QCOMPARE(int(r.log.size()), 9);
        QCOMPARE(tuple(r.A, r.B, r.IX, r.IY, r.SP, r.CCR), tuple(0x11, 0x22, 0x3344, 0x5566, 0x01FF, 0xC1));
        r.Run({0x3E});                                        // WAI stacks, then returns
        QCOMPARE(r.SP, 0x01F6);
        r.Run({0x86, 0x05});
        QCOMPARE(r.A, std::int16_t(5));
    }
};

QTEST_APPLESS_MAIN(VelmarTest)
#include "Velmar_test.moc"
