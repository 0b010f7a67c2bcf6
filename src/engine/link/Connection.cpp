// The state of the link to the target: board presence by CTS, the state the
// status panel shows, and the start of a free run.
#include "engine/state/TargetState.h"
#include "platform/TickCount.h"
#include "engine/link/MonitorFrames.h"
#include "engine/link/TargetLink.h"

#include <chrono>

TargetLink::TargetLink(LinkReports& reports) : reports_(reports)
{
    reader_ = [this](std::int32_t address, std::span<std::uint8_t> out) {
        std::vector<std::uint8_t> bytes;
        InBytes(address, bytes, static_cast<std::int16_t>(out.size()));
        if (!BoardConnected || bytes.size() != out.size())
            return false;
        std::copy(bytes.begin(), bytes.end(), out.begin());
        return true;
    };
    QObject::connect(&Velmar1, &Velmar::ReadRequest, &Velmar1,
                     [this](std::int32_t address, std::int16_t& data) { SimulatorRead(address, data); },
                     Qt::DirectConnection);
    QObject::connect(&Velmar1, &Velmar::WriteRequest, &Velmar1,
                     [this](std::int32_t address, std::int16_t data) { SimulatorWrite(address, data); },
                     Qt::DirectConnection);
}

void TargetLink::BoardStatus()
{
    if (TargetMode == SimulatorMode)
        reports_.LinkStateChanged(BoardRunning ? LinkState::SimulatorRunning : LinkState::Simulator);
    else if (!MSComm.CTSHolding())
        reports_.LinkStateChanged(LinkState::NotConnected);
    else if (BoardRunning)
        reports_.LinkStateChanged(LinkState::Running);
    else if (BoardConnected)
        reports_.LinkStateChanged(LinkState::Ready);
    else
        reports_.LinkStateChanged(LinkState::NotResponding);
}

void TargetLink::OpenPort(int port)
{
    MSComm.SetPortOpen(false);
    MSComm.SetCommPort(port);
    // The simulator needs no port: its mode is what the panel shows, open or not.
    if (MSComm.SetPortOpen(true) || TargetMode == SimulatorMode) {
        BoardConnected = true;
        BoardStatus();
        return;
    }
    BoardConnected = false;
    reports_.LinkStateChanged(LinkState::PortError);
}

void TargetLink::FindBoard()
{
    if (TargetMode == SimulatorMode) {
        BoardConnected = true;
        return;
    }
    if (TargetMode != BoardMode)
        return;
    if (!MSComm.PortOpen() && !MSComm.SetPortOpen(true)) {
        BoardConnected = false;
        reports_.LinkStateChanged(LinkState::PortError);
        reports_.LinkFailed(LinkFailure::PortError, MSComm.ErrorDescription());
        return;
    }
    if (MSComm.CTSHolding()) {
        // No receive event may cut into the exchange that follows.
        MSComm.SetRThreshold(0);
        BoardConnected = true;
        return;
    }
    BoardConnected = false;
    reports_.LinkFailed(LinkFailure::NotConnected, {});
    BoardStatus();
}

bool TargetLink::StartFreeRun()
{
    if (TargetMode != BoardMode) {
        // The command is off in this mode unless the port failed at start.
        reports_.LinkFailed(LinkFailure::SimulatorRun, {});
        return false;
    }
    MSComm.SetRThreshold(0);
    MSComm.SetInBufferCount(0);
    MSComm.Output(monitor::ExecuteFrame(CpuRegisters));
    // The acknowledgement is one byte; no events may run meanwhile.
    const std::uint32_t start = GetTickCount();
    while (MSComm.InBufferCount() < 1 && GetTickCount() - start < exchange_timeout::Write * exchange_timeout::Stretch)
        MSComm.WaitForInput(std::chrono::milliseconds(1));
    QByteArray answer;
    if (MSComm.InBufferCount() >= 1) {
        // Only the ACK: what stands behind it may be the program's first output.
        MSComm.SetInputLen(1);
        answer = MSComm.Input();
        MSComm.SetInputLen(0);
    }
    if (answer.size() == 1 && static_cast<std::uint8_t>(answer[0]) == monitor::Ack)
        return true;
    BoardConnected = false;
    BoardStatus();
    reports_.LinkFailed(answer.isEmpty() ? LinkFailure::NoResponse : LinkFailure::InvalidData, {});
    MSComm.SetInBufferCount(0);
    MSComm.SetRThreshold(ReceiveThreshold);
    return false;
}
