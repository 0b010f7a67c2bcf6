// Erasing the board's flash before a download. Programming goes with the
// other writes in TargetOperations.cpp.
#include "engine/state/TargetState.h"
#include "engine/link/MonitorFrames.h"
#include "engine/link/TargetLink.h"

#include <algorithm>

void TargetLink::FlashErase()
{
    if (TargetMode == SimulatorMode) {
        std::fill(TargetMemory.begin() + FlashAddress, TargetMemory.end(), 0xFF);
    } else if (TargetMode == BoardMode) {
        // The download erases without FindBoard, so the port may be closed:
        // say so at once rather than wait out the erase time-out.
        if (!MSComm.PortOpen()) {
            BoardConnected = false;
            reports_.LinkFailed(LinkFailure::PortNotOpen, {});
        } else {
            QByteArray reply;
            const ExchangeRules rules{monitor::AckReplySize, ReplyCheck::Ack, exchange_timeout::Erase, true};
            const ExchangeResult result = RunExchange(MSComm, monitor::EraseFrame(), rules, reply);
            BoardConnected = result == ExchangeResult::Valid;
            if (result == ExchangeResult::NoResponse)
                reports_.LinkFailed(LinkFailure::NoResponse, {});
            else if (result == ExchangeResult::InvalidData && static_cast<std::uint8_t>(reply[0]) == monitor::Nak)
                reports_.LinkFailed(LinkFailure::EraseFailed, {});
            else if (result == ExchangeResult::InvalidData)
                reports_.LinkFailed(LinkFailure::EraseInvalidData, {});
            if (!BoardConnected)
                MSComm.SetInBufferCount(0);
        }
    }
    MSComm.SetRThreshold(ReceiveThreshold);
}
