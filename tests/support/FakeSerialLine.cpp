#include "support/FakeSerialLine.h"

#include "platform/TickCount.h"

#include <deque>

struct FakeSerialLine::State {
    struct Pending {
        QByteArray bytes;
        std::uint32_t due;
    };
    QString openError;
    int openCount = 0;
    int lastPort = 0;
    bool cts = true;
    int ctsReads = 0;
    std::uint32_t replyDelay = 0;
    std::function<QByteArray(const QByteArray&)> responder;
    QByteArray written;
    std::deque<Pending> pending;
    SerialDevice* device = nullptr;   // the open device, if any

    // Bytes due at once are announced; a late reply is found by the host's
    // poll once the tick count has passed its time.
    void Queue(const QByteArray& bytes, std::uint32_t delay)
    {
        pending.push_back({bytes, GetTickCount() + delay});
        if (delay == 0 && device && device->DataArrived)
            device->DataArrived();
    }
};

namespace {
class FakeDevice : public SerialDevice {
public:
    FakeDevice(std::shared_ptr<FakeSerialLine::State> state, int port) : state_(std::move(state)), port_(port) {}
    ~FakeDevice() override { Close(); }

    bool Open(QString& error) override
    {
        state_->lastPort = port_;
        if (!state_->openError.isEmpty()) {
            error = state_->openError;
            return false;
        }
        ++state_->openCount;
        state_->device = this;
        return true;
    }

    void Close() override
    {
        if (state_->device == this)
            state_->device = nullptr;
    }

    QByteArray ReadAvailable() override
    {
        QByteArray out;
        const std::uint32_t now = GetTickCount();
        auto& pending = state_->pending;
        while (!pending.empty() && static_cast<std::int32_t>(now - pending.front().due) >= 0) {
            out += pending.front().bytes;
            pending.pop_front();
        }
        return out;
    }

    // Scripted replies come at once or by the test's clock: nothing to wait for.
    void WaitForInput(std::chrono::milliseconds) override {}

    void Write(const QByteArray& bytes) override
    {
        state_->written += bytes;
        if (state_->responder) {
            const QByteArray reply = state_->responder(bytes);
            if (!reply.isEmpty())
                state_->Queue(reply, state_->replyDelay);
        }
    }

    std::optional<bool> Cts() override
    {
        ++state_->ctsReads;
        return state_->cts;
    }

private:
    std::shared_ptr<FakeSerialLine::State> state_;
    int port_;
};
}  // namespace

FakeSerialLine::FakeSerialLine() : state_(std::make_shared<State>()) {}
FakeSerialLine::~FakeSerialLine() = default;

SerialDeviceFactory FakeSerialLine::Factory() const
{
    auto state = state_;
    return [state](int port) -> std::unique_ptr<SerialDevice> { return std::make_unique<FakeDevice>(state, port); };
}

void FakeSerialLine::FailOpen(const QString& description) { state_->openError = description; }
int FakeSerialLine::OpenCount() const { return state_->openCount; }
int FakeSerialLine::LastPort() const { return state_->lastPort; }
bool FakeSerialLine::IsOpen() const { return state_->device != nullptr; }
void FakeSerialLine::SetCTS(bool high) { state_->cts = high; }
int FakeSerialLine::CtsReads() const { return state_->ctsReads; }
void FakeSerialLine::Arrive(const QByteArray& bytes) { state_->Queue(bytes, 0); }
void FakeSerialLine::SetReplyDelay(std::uint32_t delayMs) { state_->replyDelay = delayMs; }

void FakeSerialLine::SetResponder(std::function<QByteArray(const QByteArray&)> responder)
{
    state_->responder = std::move(responder);
}

QByteArray FakeSerialLine::TakeWritten() { return std::exchange(state_->written, QByteArray()); }

void FakeSerialLine::Vanish()
{
    state_->pending.clear();
    if (state_->device && state_->device->LineLost)
        state_->device->LineLost();
}
