#include "hc11board/FlashPart.h"

namespace hc11board {

namespace {

// The part's answers in autoselect mode: AMD, Am29F040B, sector unprotected.
constexpr std::uint8_t ManufacturerId = 0x01;
constexpr std::uint8_t DeviceId = 0xA4;

namespace dq {
constexpr std::uint8_t Polling = 0x80, Toggle = 0x40, Exceeded = 0x20, EraseStarted = 0x08, EraseToggle = 0x04;
} // namespace dq

// Command cycles decode A10-A0.
bool At(std::uint16_t address, unsigned command) { return (address & 0x7FF) == command; }

} // namespace

FlashPart::FlashPart(Clock clock, FlashTiming timing) : clock_(std::move(clock)), timing_(timing)
{
    array_.fill(0xFF);
}

bool FlashPart::Busy()
{
    Finish();
    return phase_ == Phase::Running;
}

void FlashPart::Start(Operation operation, std::uint64_t cycles, bool fails)
{
    operation_ = operation;
    fails_ = fails;
    doneAt_ = clock_() + cycles;
    phase_ = Phase::Running;
}

void FlashPart::Finish()
{
    if (phase_ != Phase::Running || clock_() < doneAt_)
        return;
    if (operation_ == Operation::Program)
        array_[programAt_] &= programData_;   // a bit that stays 0 is 0 whatever the outcome
    else if (!fails_)
        array_.fill(0xFF);
    phase_ = fails_ ? Phase::Exceeded : Phase::ReadArray;
}

std::uint8_t FlashPart::Status()
{
    toggle_ = !toggle_;
    const bool erase = operation_ == Operation::Erase;
    std::uint8_t status = erase ? dq::EraseStarted : std::uint8_t(~programData_ & dq::Polling);
    if (toggle_)
        status |= erase ? dq::Toggle | dq::EraseToggle : dq::Toggle;
    if (phase_ == Phase::Exceeded)
        status |= dq::Exceeded;
    return status;
}

std::uint8_t FlashPart::Read(std::uint16_t address)
{
    Finish();
    switch (phase_) {
    case Phase::Running:
    case Phase::Exceeded:
        return Status();
    case Phase::Autoselect:
        switch (address & 0xFF) {
        case 0x00: return ManufacturerId;
        case 0x01: return DeviceId;
        default: return 0x00;
        }
    default:
        return array_[Offset(address)];
    }
}

void FlashPart::Write(std::uint16_t address, std::uint8_t value)
{
    Finish();
    switch (phase_) {
    case Phase::Running:
        return;   // the embedded algorithm ignores every command
    case Phase::Exceeded:
        if (value == 0xF0)
            phase_ = Phase::ReadArray;
        return;
    case Phase::ProgramSetup:
        programAt_ = Offset(address);
        programData_ = value;
        Start(Operation::Program, timing_.programCycles, (value & ~array_[programAt_]) != 0);
        return;
    case Phase::Unlocked:
        phase_ = At(address, 0x2AA) && value == 0x55 ? Phase::Commanded : Phase::ReadArray;
        return;
    case Phase::Commanded:
        phase_ = !At(address, 0x555)  ? Phase::ReadArray
                 : value == 0xA0      ? Phase::ProgramSetup
                 : value == 0x80      ? Phase::EraseSetup
                 : value == 0x90      ? Phase::Autoselect
                                      : Phase::ReadArray;
        return;
    case Phase::EraseSetup:
        phase_ = At(address, 0x555) && value == 0xAA ? Phase::EraseUnlocking : Phase::ReadArray;
        return;
    case Phase::EraseUnlocking:
        phase_ = At(address, 0x2AA) && value == 0x55 ? Phase::EraseUnlocked : Phase::ReadArray;
        return;
    case Phase::EraseUnlocked:
        if (value == 0x30)
            Start(Operation::Erase, timing_.sectorEraseCycles, timing_.eraseFails);
        else if (value == 0x10 && At(address, 0x555))
            Start(Operation::Erase, timing_.chipEraseCycles, timing_.eraseFails);
        else
            phase_ = Phase::ReadArray;
        return;
    case Phase::ReadArray:
    case Phase::Autoselect:
        // A sequence starts afresh with its first unlock cycle; anything
        // else, F0h among them, leaves the part reading its array.
        phase_ = At(address, 0x555) && value == 0xAA ? Phase::Unlocked : Phase::ReadArray;
        return;
    }
}

} // namespace hc11board
