#include "engine/link/MonitorExchange.h"

#include "platform/DoEvents.h"
#include "platform/MSComm.h"
#include "platform/TickCount.h"
#include "engine/link/MonitorFrames.h"

#include <chrono>

namespace {
// Between polls the exchange waits on the line, which wakes it as soon as the
// reply's bytes come, so the wait costs the round trip nothing; events still
// get their turn at least once a millisecond.
constexpr std::chrono::milliseconds PollWait{1};

bool ReplyValid(const QByteArray& reply, ReplyCheck check)
{
    if (check == ReplyCheck::Ack)
        return reply.size() == 1 && static_cast<std::uint8_t>(reply[0]) == monitor::Ack;
    return monitor::ChecksumValid(reply);
}
} // namespace

ExchangeResult RunExchange(MSComm& comm, const QByteArray& frame, const ExchangeRules& rules, QByteArray& reply,
                           const std::function<bool()>& abandoned)
{
    reply.clear();
    comm.SetInBufferCount(0);
    comm.Output(frame);
    const std::uint32_t start = GetTickCount();
    for (;;) {
        if (comm.InBufferCount() == rules.replySize)
            break;
        if (rules.timeoutMs && GetTickCount() - start >= *rules.timeoutMs * exchange_timeout::Stretch)
            return ExchangeResult::NoResponse;
        if (rules.pumpEvents) {
            DoEvents();
            if (abandoned && abandoned())
                return ExchangeResult::Abandoned;
        }
        comm.WaitForInput(PollWait);
    }
    reply = comm.Input();
    // Bytes that slipped in behind the count make the reply too long.
    if (reply.size() != rules.replySize)
        return ExchangeResult::NoResponse;
    return ReplyValid(reply, rules.check) ? ExchangeResult::Valid : ExchangeResult::InvalidData;
}
