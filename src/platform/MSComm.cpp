#include "platform/MSComm.h"

#include "platform/QtSerialDevice.h"
#include "platform/SettingsStore.h"

namespace {
constexpr int LinePollMs = 50;
}

QString DefaultPortDevicePath(int port)
{
    static const char* const paths[] = {"/dev/ttyS0", "/dev/ttyUSB0", "/dev/ttyUSB1", "/dev/ttyACM0"};
    return port >= 1 && port <= 4 ? QString::fromLatin1(paths[port - 1]) : QString();
}

namespace {
// Paths chosen in this process, by port number - 1; empty while none was.
QString& ChosenDevicePath(int port)
{
    static QString chosen[4];
    return chosen[port - 1];
}
}  // namespace

void SetPortDevicePath(int port, const QString& path)
{
    if (port >= 1 && port <= 4)
        ChosenDevicePath(port) = path;
}

QString PortDevicePath(int port)
{
    if (port < 1 || port > 4)
        return {};
    if (!ChosenDevicePath(port).isEmpty())
        return ChosenDevicePath(port);
    return GetSetting(QStringLiteral("Settings"), QStringLiteral("PortDevice%1").arg(port), DefaultPortDevicePath(port));
}

MSComm::MSComm(QObject* parent) : QObject(parent)
{
    factory_ = [](int port) -> std::unique_ptr<SerialDevice> {
        return std::make_unique<QtSerialDevice>(PortDevicePath(port));
    };
    linePoll_.setInterval(LinePollMs);
    connect(&linePoll_, &QTimer::timeout, this, &MSComm::PollLines);
}

MSComm::~MSComm()
{
    SetPortOpen(false);
}

bool MSComm::SetPortOpen(bool open)
{
    if (!open) {
        linePoll_.stop();
        if (device_) {
            device_->DataArrived = nullptr;
            device_->LineLost = nullptr;
            device_->Close();
            device_.reset();
        }
        buffer_.clear();
        waiting_.clear();
        return true;
    }
    if (device_)
        return true;
    error_.clear();
    std::unique_ptr<SerialDevice> device = factory_(commPort_);
    if (!device) {
        error_ = QStringLiteral("Invalid port number");
        return false;
    }
    if (!device->Open(error_))
        return false;
    device_ = std::move(device);
    buffer_.clear();
    waiting_.clear();
    device_->DataArrived = [this] {
        Pull();
        ScheduleReceiveEvent();
    };
    // Closing inside the device's own error report would pull it from under itself.
    device_->LineLost = [this] { QMetaObject::invokeMethod(this, &MSComm::LineLost, Qt::QueuedConnection); };
    lastCts_ = CTSHolding();
    linePoll_.start();
    return true;
}

void MSComm::LineLost()
{
    // Without its peer the line cannot hold CTS: a closed port reads low.
    const bool wasHigh = lastCts_;
    SetPortOpen(false);
    if (wasHigh) {
        commEvent_ = comEvCTS;
        emit OnComm();
    }
}

bool MSComm::CTSHolding()
{
    if (!device_)
        return false;
    return device_->Cts().value_or(true);
}

void MSComm::PollLines()
{
    if (!device_)
        return;
    const bool cts = CTSHolding();
    if (cts == lastCts_)
        return;
    lastCts_ = cts;
    commEvent_ = comEvCTS;
    emit OnComm();
}

void MSComm::Pull()
{
    // A device may report new bytes from inside its own read; the outer pull takes them.
    if (!device_ || pulling_)
        return;
    pulling_ = true;
    waiting_.append(device_->ReadAvailable());
    pulling_ = false;
    // The buffer shows at most its size; what does not fit waits behind it
    // and moves up as the program reads, so a fast sender loses nothing.
    const qsizetype room = ReceiveBufferSize - buffer_.size();
    buffer_.append(waiting_.left(room));
    waiting_.remove(0, std::min(room, waiting_.size()));
}

void MSComm::ScheduleReceiveEvent()
{
    if (rThreshold_ <= 0 || receiveEventPending_ || buffer_.size() < rThreshold_)
        return;
    // The event comes from the event loop, never from inside a poll of the buffer.
    receiveEventPending_ = true;
    QMetaObject::invokeMethod(this, &MSComm::RaiseReceiveEvent, Qt::QueuedConnection);
}

void MSComm::RaiseReceiveEvent()
{
    receiveEventPending_ = false;
    if (!device_ || rThreshold_ <= 0 || buffer_.size() < rThreshold_)
        return;
    commEvent_ = comEvReceive;
    emit OnComm();
}

void MSComm::SetRThreshold(int count)
{
    rThreshold_ = count;
    ScheduleReceiveEvent();
}

int MSComm::InBufferCount()
{
    Pull();
    ScheduleReceiveEvent();
    return static_cast<int>(buffer_.size());
}

void MSComm::SetInBufferCount(int count)
{
    if (count != 0)
        return;
    Pull();
    buffer_.clear();
    waiting_.clear();
}

QByteArray MSComm::Input()
{
    Pull();
    const qsizetype take = inputLen_ > 0 ? std::min<qsizetype>(inputLen_, buffer_.size()) : buffer_.size();
    QByteArray bytes = buffer_.left(take);
    buffer_.remove(0, take);
    if (!waiting_.isEmpty()) {
        // Bytes that waited behind the full buffer move up and are announced
        // at once: the device has nothing new to tell about them.
        Pull();
        ScheduleReceiveEvent();
    }
    return bytes;
}

void MSComm::WaitForInput(std::chrono::milliseconds most)
{
    if (device_)
        device_->WaitForInput(most);
    else
        std::this_thread::sleep_for(most);
}

void MSComm::Output(const QByteArray& bytes)
{
    if (device_)
        device_->Write(bytes);
}
