// libFuzzer target: the board's side of one exchange is any bytes, in any
// pieces. The host's exchange must end (the clock here moves on at every
// look), and it may only call a reply valid when the reply has exactly the
// expected size and passes its check.
#include "platform/DoEvents.h"
#include "platform/MSComm.h"
#include "platform/TickCount.h"
#include "engine/link/MonitorExchange.h"
#include "engine/link/MonitorFrames.h"

#include <QCoreApplication>
#include <cstdint>
#include <cstdlib>
#include <deque>

namespace {
// The board: what it sends arrives in pieces at the host's reads.
struct FakeLine final : SerialDevice {
    std::deque<QByteArray> pieces;
    bool Open(QString&) override { return true; }
    void Close() override {}
    QByteArray ReadAvailable() override
    {
        if (pieces.empty())
            return {};
        QByteArray piece = pieces.front();
        pieces.pop_front();
        return piece;
    }
    void WaitForInput(std::chrono::milliseconds) override {}
    void Write(const QByteArray&) override {}
    std::optional<bool> Cts() override { return std::nullopt; }
};

FakeLine* line = nullptr;
MSComm* comm = nullptr;
std::uint32_t ticks = 0;   // moves on at every look
}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    SetTickCountSource([] { return ++ticks; });
    SetDoEventsHook([] {});
    comm = new MSComm;
    comm->SetDeviceFactory([](int) {
        auto device = std::make_unique<FakeLine>();
        line = device.get();
        return device;
    });
    comm->SetPortOpen(true);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    // Byte 0: the operation; byte 1: the read count or the piece size.
    const bool read = data[0] & 1;
    const int count = data[1] + 1;
    const ExchangeRules rules{read ? monitor::ReadReplySize(count) : monitor::AckReplySize,
                              read ? ReplyCheck::Checksum : ReplyCheck::Ack, exchange_timeout::Read,
                              (data[0] & 2) != 0};
    const QByteArray frame = read ? monitor::ReadFrame(0xE000, count) : monitor::EraseFrame();
    const std::size_t pieceSize = 1 + data[0] / 4;
    line->pieces.clear();
    for (std::size_t i = 2; i < size; i += pieceSize)
        line->pieces.push_back(QByteArray(reinterpret_cast<const char*>(data + i),
                                          static_cast<qsizetype>(std::min(pieceSize, size - i))));

    QByteArray reply;
    const ExchangeResult result = RunExchange(*comm, frame, rules, reply);
    if (result == ExchangeResult::Valid) {
        if (reply.size() != rules.replySize)
            std::abort();
        if (read && (!monitor::ChecksumValid(reply) || monitor::ReadReplyData(reply).size() != count))
            std::abort();
        if (!read && static_cast<std::uint8_t>(reply[0]) != monitor::Ack)
            std::abort();
    }
    if (result == ExchangeResult::Abandoned)
        std::abort();   // nobody asked to give up
    return 0;
}
