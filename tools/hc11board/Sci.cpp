#include "hc11board/Sci.h"

namespace hc11board {

void Sci::Reset()
{
    lineOutput.clear();
    shifterFreeAt_ = now_;
    txPending_ = false;
    rxQueue_.clear();
    nextReceiveAt_ = now_;
    rdrf_ = false;
    rdrfSeen_ = false;
    rxData_ = 0;
}

void Sci::Advance(std::uint64_t cycle)
{
    now_ = cycle;
    if (txPending_ && now_ >= shifterFreeAt_) {
        lineOutput.push_back(txData_);
        shifterFreeAt_ = now_ + CyclesPerCharacter;
        txPending_ = false;
    }
    if (!rdrf_ && !rxQueue_.empty() && now_ >= nextReceiveAt_) {
        rxData_ = rxQueue_.front();
        rxQueue_.pop_front();
        rdrf_ = true;
        rdrfSeen_ = false;
        nextReceiveAt_ = now_ + CyclesPerCharacter;
    }
}

std::uint8_t Sci::Status() const
{
    std::uint8_t status = 0;
    if (!txPending_)
        status |= scsr::TDRE;
    if (!txPending_ && now_ >= shifterFreeAt_)
        status |= scsr::TC;
    if (rdrf_)
        status |= scsr::RDRF;
    return status;
}

std::uint8_t Sci::ReadStatus()
{
    const std::uint8_t status = Status();
    if (rdrf_)
        rdrfSeen_ = true;
    return status;
}

std::uint8_t Sci::ReadData()
{
    if (rdrf_ && rdrfSeen_) {
        rdrf_ = false;
        rdrfSeen_ = false;
    }
    return rxData_;
}

void Sci::WriteData(std::uint8_t value)
{
    if (!txPending_ && now_ >= shifterFreeAt_) {
        lineOutput.push_back(value);
        shifterFreeAt_ = now_ + CyclesPerCharacter;
        return;
    }
    // A write while the data register is still full overwrites it, as on the chip.
    txPending_ = true;
    txData_ = value;
}

bool Sci::InterruptRequested(std::uint8_t sccr2Value) const
{
    const std::uint8_t status = Status();
    return ((sccr2Value & sccr2::TIE) && (status & scsr::TDRE))
        || ((sccr2Value & sccr2::TCIE) && (status & scsr::TC))
        || ((sccr2Value & sccr2::RIE) && (status & scsr::RDRF));
}

} // namespace hc11board
