#include "platform/Velmar.h"

// Turns the core's memory accesses into the component's events.
class Velmar::EventBus final : public hc11::Bus {
public:
    explicit EventBus(Velmar& owner) : owner_(owner) {}

    std::uint8_t Read(std::uint16_t address) override
    {
        std::int16_t data = 0;
        emit owner_.ReadRequest(address, data);
        return std::uint8_t(data);
    }
    void Write(std::uint16_t address, std::uint8_t value) override { emit owner_.WriteRequest(address, value); }

private:
    Velmar& owner_;
};

namespace {
// Calls and returns, with their stack traffic, are the host's work.
bool IsCallOrReturn(const std::uint8_t* bytes)
{
    const hc11::Instruction* row = hc11::DecodeOpcode(bytes[0], bytes[1]);
    return row
        && (row->mnemonic == hc11::Mnemonic::JSR || row->mnemonic == hc11::Mnemonic::BSR
            || row->mnemonic == hc11::Mnemonic::RTS);
}
} // namespace

Velmar::Velmar(QObject* parent) : QObject(parent), bus_(std::make_unique<EventBus>(*this)), cpu_(*bus_) {}

Velmar::~Velmar() = default;

void Velmar::ExecuteInstruction(std::int16_t& A, std::int16_t& B, std::int32_t& IX, std::int32_t& IY,
                                std::int32_t& SP, std::int16_t& CCR, std::int16_t Byte1, std::int16_t Byte2,
                                std::int16_t Byte3, std::int16_t Byte4, std::int16_t Byte5)
{
    const std::uint8_t bytes[5] = {std::uint8_t(Byte1), std::uint8_t(Byte2), std::uint8_t(Byte3),
                                   std::uint8_t(Byte4), std::uint8_t(Byte5)};
    hc11::Registers& r = cpu_.regs;
    r.a = std::uint8_t(A);
    r.b = std::uint8_t(B);
    r.ix = std::uint16_t(IX);
    r.iy = std::uint16_t(IY);
    r.sp = std::uint16_t(SP);
    r.ccr = std::uint8_t(CCR);
    r.pc = 0;
    cpu_.SetState(hc11::RunState::Running);
    if (!IsCallOrReturn(bytes))
        cpu_.Execute(bytes);

    A = r.a;
    B = r.b;
    IX = r.ix;
    IY = r.iy;
    SP = r.sp;
    CCR = r.ccr;
}
