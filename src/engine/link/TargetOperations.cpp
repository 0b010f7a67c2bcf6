// The target operations of the link. Each serves both back-ends: a
// framed exchange with the board's monitor, or TargetMemory in simulator mode.
// Every operation starts with FindBoard and, on the board, keeps the receive
// event off (RThreshold 0, set by FindBoard) until its exchange is over.
#include "engine/code/Asm.h"
#include "engine/state/TargetState.h"
#include "platform/DoEvents.h"
#include "engine/link/MonitorFrames.h"
#include "engine/link/TargetLink.h"
#include "engine/link/TargetMemoryAccess.h"

#include <algorithm>
#include <utility>

namespace {
bool CountFits(int count, std::size_t available, int most)
{
    return count >= 1 && count <= most && static_cast<std::size_t>(count) <= available;
}
} // namespace

// ---- The exchange and its report --------------------------------------------

bool TargetLink::Exchange(const QByteArray& frame, const ExchangeRules& rules, QByteArray& reply,
                       const std::function<bool()>& abandoned)
{
    const ExchangeResult result = RunExchange(MSComm, frame, rules, reply, abandoned);
    if (result == ExchangeResult::Valid) {
        BoardConnected = true;
        // The first answer after a failure puts the panel back to the board's state.
        if (std::exchange(unanswered_, false))
            BoardStatus();
        return true;
    }
    // The caller gave the wait up itself and says what that means.
    if (result == ExchangeResult::Abandoned)
        return false;
    BoardConnected = false;
    unanswered_ = true;
    BoardStatus();
    reports_.LinkFailed(result == ExchangeResult::NoResponse ? LinkFailure::NoResponse : LinkFailure::InvalidData, {});
    MSComm.SetInBufferCount(0);
    return false;
}

void TargetLink::ReadSimulated(std::int32_t address, std::span<std::uint8_t> out)
{
    if (SimulatePeripherals)
        ChipSim.Read(address, out);
    else
        ReadTargetMemory(address, out);
}

bool TargetLink::ReadTarget(std::int32_t address, int count, std::uint32_t timeoutMs, std::span<std::uint8_t> out)
{
    if (TargetMode == SimulatorMode) {
        ReadSimulated(address, out.first(static_cast<std::size_t>(count)));
        return true;
    }
    if (TargetMode != BoardMode)
        return false;
    QByteArray reply;
    const ExchangeRules rules{monitor::ReadReplySize(count), ReplyCheck::Checksum, timeoutMs, false};
    if (!Exchange(monitor::ReadFrame(address, count), rules, reply))
        return false;
    const QByteArray data = monitor::ReadReplyData(reply);
    std::copy(data.begin(), data.end(), out.begin());
    return true;
}

void TargetLink::WriteTarget(char letter, std::int32_t address, std::span<const std::uint8_t> data, bool pumpEvents)
{
    FindBoard();
    if (!BoardConnected)
        return;
    if (TargetMode == SimulatorMode) {
        if (SimulatePeripherals)
            ChipSim.Write(address, data);
        else
            WriteTargetMemory(address, data);
    } else if (TargetMode == BoardMode) {
        const QByteArray frame =
            letter == 'P' ? monitor::ProgramFrame(address, data) : monitor::WriteFrame(address, data);
        QByteArray reply;
        Exchange(frame, {monitor::AckReplySize, ReplyCheck::Ack, exchange_timeout::Write, pumpEvents}, reply);
        MSComm.SetRThreshold(ReceiveThreshold);
    }
    BoardStatus();
}

// ---- Reads ------------------------------------------------------------------

void TargetLink::InByte(std::int32_t& Address, std::uint8_t& Data)
{
    FindBoard();
    if (!BoardConnected)
        return;
    std::uint8_t byte = 0;
    if (ReadTarget(Address, 1, exchange_timeout::Read, {&byte, 1}))
        Data = byte;
    EndRead();
}

void TargetLink::InBytes(std::int32_t& Address, std::vector<std::uint8_t>& Data, std::int16_t Count)
{
    if (Count < 1 || Count > monitor::MaxReadCount)
        return;
    FindBoard();
    if (!BoardConnected)
        return;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(Count));
    if (ReadTarget(Address, Count, exchange_timeout::Read, bytes))
        Data = std::move(bytes);
    EndRead();
}

void TargetLink::InCPU()
{
    FindBoard();
    if (!BoardConnected)
        return;
    std::array<std::uint8_t, SaveAreaSize> saved{};
    if (ReadTarget(SaveAreaAddress, SaveAreaSize, exchange_timeout::Read, saved)) {
        monitor::RegistersFromSaveArea(saved, CpuRegisters);
        SplitCCR();
    }
    if (TargetMode == BoardMode) {
        DoEvents();
        MSComm.SetRThreshold(ReceiveThreshold);
    }
    BoardStatus();
}

void TargetLink::InMemory()
{
    FindBoard();
    if (!BoardConnected)
        return;
    // Four pages in a row; the page number wraps at 8 bits, and a block that
    // fails ends the read with the blocks before it kept.
    constexpr int Block = 256;
    const std::int32_t low = MemoryPageAddress & 0xFF;
    const std::int32_t page = (MemoryPageAddress >> 8) & 0xFF;
    std::array<std::uint8_t, Block> bytes{};
    for (int k = 0; k < static_cast<int>(MemoryPage.size()) / Block; ++k) {
        const std::int32_t address = ((page + k) & 0xFF) * 256 + low;
        if (!ReadTarget(address, Block, exchange_timeout::Read, bytes))
            break;
        std::copy(bytes.begin(), bytes.end(), MemoryPage.begin() + k * Block);
    }
    EndRead();
}

void TargetLink::InProgram()
{
    FindBoard();
    if (!BoardConnected)
        return;
    if (TargetMode == BoardMode) {
        MSComm.SetRThreshold(0);
        MSComm.SetInputLen(0);
    }
    std::array<std::uint8_t, ProgramBuffer.size()> bytes{};
    if (ReadTarget(ProgramBase, static_cast<int>(bytes.size()), exchange_timeout::Program, bytes))
        ProgramBuffer = bytes;
    if (TargetMode == BoardMode) {
        MSComm.SetRThreshold(ReceiveThreshold);
        DoEvents();
    }
    BoardStatus();
}

void TargetLink::InStack()
{
    FindBoard();
    if (!BoardConnected)
        return;
    // Near $FFFF the nine bytes wrap to $0000, as every other read does.
    std::array<std::uint8_t, StackBuffer.size()> bytes{};
    if (ReadTarget(CpuRegisters.SP, static_cast<int>(bytes.size()), exchange_timeout::Read, bytes))
        StackBuffer = bytes;
    EndRead();
}

void TargetLink::InResetVector(std::int32_t& Vector)
{
    std::int32_t address = ResetVectorAddress;
    std::vector<std::uint8_t> bytes;
    InBytes(address, bytes, 2);
    // A failed read leaves the vector, so the caller's PC stays where it was.
    if (BoardConnected && bytes.size() == 2)
        Vector = bytes[0] * 256 + bytes[1];
}

void TargetLink::EndRead()
{
    if (TargetMode == BoardMode)
        MSComm.SetRThreshold(ReceiveThreshold);
    BoardStatus();
}

// ---- Writes -----------------------------------------------------------------

void TargetLink::OutByte(std::int32_t& Address, std::uint8_t Data)
{
    // The unit's window shows an edit of its cells whatever the target says.
    TellIoUnit(Address, Data);
    const std::uint8_t byte = Data;
    WriteTarget('W', Address, {&byte, 1}, true);
}

void TargetLink::OutBytes(std::int32_t& Address, const std::vector<std::uint8_t>& Data, std::int16_t Count)
{
    if (!CountFits(Count, Data.size(), monitor::MaxWriteCount))
        return;
    WriteTarget('W', Address, std::span(Data).first(static_cast<std::size_t>(Count)), true);
}

void TargetLink::Programm(std::int32_t& Address, const std::vector<std::uint8_t>& Data, std::int16_t Count)
{
    if (!CountFits(Count, Data.size(), monitor::MaxWriteCount))
        return;
    // The simulator writes any address: its flash area is plain memory.
    WriteTarget('P', Address, std::span(Data).first(static_cast<std::size_t>(Count)), false);
}

void TargetLink::TellIoUnit(std::int32_t address, std::uint8_t data)
{
    if (!IoUnitWindow)
        return;
    switch (address) {
    case IoUnitAddress: IoUnitWindow->setInFresh(data); break;
    case IoUnitAddress + 1: IoUnitWindow->setInDataRegister(data); break;
    case IoUnitAddress + 2: IoUnitWindow->setOutFresh(data); break;
    case IoUnitAddress + 3: IoUnitWindow->setOutDataRegister(data); break;
    default: break;
    }
}

void TargetLink::TerminalInput(const QByteArray& bytes)
{
    if (ChipSimulated())
        ChipSim.Receive(bytes);
    else
        MSComm.Output(bytes);
}
