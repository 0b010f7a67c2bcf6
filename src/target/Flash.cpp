// Erasing the board's flash before a download. Programming goes with the
// other writes in TargetOperations.cpp.
#include "core/TargetState.h"
#include "platform/MsgBox.h"
#include "target/MonitorFrames.h"
#include "workspace/frmMain.h"

#include <algorithm>

namespace {
const QString CommCaption = QStringLiteral("Orvane - Communication Error");
// A message without a subject of its own carries the application's title.
const QString ApplicationTitle = QStringLiteral("Orvane Integrated Development Tools");
} // namespace

void frmMain::FlashErase()
{
    if (TargetMode == SimulatorMode) {
        std::fill(TargetMemory.begin() + FlashAddress, TargetMemory.end(), 0xFF);
    } else if (TargetMode == BoardMode) {
        // The download erases without FindBoard, so the port may be closed:
        // say so at once rather than wait out the erase time-out.
        if (!MSComm.PortOpen()) {
            BoardConnected = false;
            MsgBox(QStringLiteral("Communication port is not open !"), MbOkOnly | MbExclamation, CommCaption);
        } else {
            QByteArray reply;
            const ExchangeRules rules{monitor::AckReplySize, ReplyCheck::Ack, exchange_timeout::Erase, true};
            const ExchangeResult result = RunExchange(MSComm, monitor::EraseFrame(), rules, reply);
            BoardConnected = result == ExchangeResult::Valid;
            if (result == ExchangeResult::NoResponse)
                MsgBox(QStringLiteral("No Response from M68HC11 Board !"), MbOkOnly | MbExclamation, CommCaption);
            else if (result == ExchangeResult::InvalidData && static_cast<std::uint8_t>(reply[0]) == monitor::Nak)
                MsgBox(QStringLiteral("Erasing Flash failed!"), MbOkOnly | MbExclamation, ApplicationTitle);
            else if (result == ExchangeResult::InvalidData)
                MsgBox(QStringLiteral("Invalid data from board !"), MbOkOnly | MbExclamation, CommCaption);
            if (!BoardConnected)
                MSComm.SetInBufferCount(0);
        }
    }
    MSComm.SetRThreshold(ReceiveThreshold);
}
