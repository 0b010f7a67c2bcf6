// The link to the target: the serial control to the board's monitor, the
// simulator component, the simulated chip, and the operations on all of
// them. Every operation serves the back-end of TargetMode: a framed exchange
// with the monitor, or in simulator mode TargetMemory, through the chip's
// register block when SimulatePeripherals is set. It knows no window; failures and the
// panel's state go to the LinkReports that the GUI implements.
//
// How a window gets at it: frmMain owns the one link and hands it out by
// Link(); a tool window's factory receives frmMain and keeps
// `TargetLink& link = main.Link()`. Code below the windows (the debugger,
// the download) gets the link passed in.
#pragma once

#include "engine/code/Asm.h"
#include "engine/link/ChipSimulator.h"
#include "platform/MSComm.h"
#include "platform/Velmar.h"
#include "engine/link/IoUnitHooks.h"
#include "engine/link/LinkReports.h"
#include "engine/link/MonitorExchange.h"

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class TargetLink {
    // The input-output unit on the chip's bus: its cells are TargetMemory's,
    // and the program's accesses move its flags as the simulator's do.
    class IoUnitDevice final : public hc11::chip::OutsideDevice {
    public:
        explicit IoUnitDevice(TargetLink& link) : link_(link) {}
        std::uint8_t Read(std::uint16_t address) override;
        void Write(std::uint16_t address, std::uint8_t value) override;
        std::uint8_t Peek(std::uint16_t address) override { return TargetMemory[address]; }
        void Poke(std::uint16_t address, std::uint8_t value) override { TargetMemory[address] = value; }

    private:
        TargetLink& link_;
    };
    IoUnitDevice ioUnitDevice_{*this};

public:
    // RThreshold between exchanges: the monitor's reset report is 6 bytes.
    static constexpr int ReceiveThreshold = 6;

    explicit TargetLink(LinkReports& reports);
    TargetLink(const TargetLink&) = delete;
    TargetLink& operator=(const TargetLink&) = delete;

    ::MSComm MSComm;   // the serial port to the board's monitor
    Velmar Velmar1;    // the simulator component, called in simulator mode only
    ChipSimulator ChipSim{ioUnitDevice_};   // the simulated chip, with SimulatePeripherals
    // The input-output unit's window while it is loaded, else nullptr. Host
    // writes to $6000-$6003 and the simulator's accesses are told to it.
    IoUnitHooks* IoUnitWindow = nullptr;

    // Shows the link's state (LinkReports::LinkStateChanged).
    void BoardStatus();
    // Closes the port if it is open and opens it as port, in both target
    // modes. Success, and either outcome in simulator mode, connects and
    // shows the state by BoardStatus; a failure on the board disconnects and
    // shows the port error, with no message box: the next target operation
    // retries through FindBoard.
    void OpenPort(int port);
    // Sets BoardConnected: the simulator is always there; the board needs an
    // open port and CTS. On the board it turns the receive event off
    // (RThreshold 0) for the exchange that follows.
    void FindBoard();

    // None of the operations returns a status: the caller tests
    // BoardConnected afterwards, and a failed read leaves every copy unchanged.
    void InByte(std::int32_t& Address, std::uint8_t& Data);
    // Data is resized to Count (1 to 256) on success only.
    void InBytes(std::int32_t& Address, std::vector<std::uint8_t>& Data, std::int16_t Count);
    void InCPU();       // A, B, IX, IY, SP, CCR from the save area; PC stays
    void InMemory();    // MemoryPage: 1024 bytes at MemoryPageAddress
    void InProgram();   // ProgramBuffer: 256 bytes at ProgramBase
    void InStack();     // StackBuffer: 9 bytes at SP
    // Reads the reset vector into Vector; a failed read leaves Vector as it was.
    void InResetVector(std::int32_t& Vector);
    void OutByte(std::int32_t& Address, std::uint8_t Data);
    // Writes Data[0] to Data[Count - 1]; Count from 1 to 255.
    void OutBytes(std::int32_t& Address, const std::vector<std::uint8_t>& Data, std::int16_t Count);
    void FlashErase();
    // Programs Data[0] to Data[Count - 1] at Address; Count from 1 to 255.
    void Programm(std::int32_t& Address, const std::vector<std::uint8_t>& Data, std::int16_t Count);
    // The board takes the CPU with an "X" frame; true once it has acknowledged.
    // Then the receive event is still off: the caller sets ReceiveThreshold
    // once it has entered its run state, so that the reset report finds it.
    // Failures, and the simulator, which has no free run, are reported.
    bool StartFreeRun();

    // One exchange with the monitor, for every frame: empties the receive
    // buffer, sends, waits for the reply and checks it. On failure it sets
    // BoardConnected false, calls BoardStatus and reports the failure; on
    // success it sets BoardConnected true. A pumped wait that abandoned()
    // gives up returns false and reports nothing. RThreshold is the caller's
    // to restore.
    bool Exchange(const QByteArray& frame, const ExchangeRules& rules, QByteArray& reply,
                  const std::function<bool()>& abandoned = {});

    // The keys typed in the serial terminal: to the board's line, or to the
    // simulated chip's SCI.
    void TerminalInput(const QByteArray& bytes);
    // Simulator mode's bytes at address: the chip's (its registers read
    // without side effects) with SimulatePeripherals, else flat memory.
    void ReadSimulated(std::int32_t address, std::span<std::uint8_t> out);

    // Target bytes for the flow analysis, read by InBytes.
    const TargetBytesReader& Reader() const { return reader_; }

private:
    // The two halves of every operation: after FindBoard, count bytes at
    // address into out (false leaves out untouched); or the whole write of
    // data to address with a "W" or "P" frame, from FindBoard to the status
    // panel, restoring RThreshold.
    bool ReadTarget(std::int32_t address, int count, std::uint32_t timeoutMs, std::span<std::uint8_t> out);
    void WriteTarget(char letter, std::int32_t address, std::span<const std::uint8_t> data, bool pumpEvents);
    // Restores RThreshold after a read on the board, then BoardStatus.
    void EndRead();
    void TellIoUnit(std::int32_t address, std::uint8_t data);
    // The memory events of Velmar1: TargetMemory is the simulated target.
    void SimulatorRead(std::int32_t Address, std::int16_t& Data);
    void SimulatorWrite(std::int32_t Address, std::int16_t Data);

    LinkReports& reports_;
    TargetBytesReader reader_;   // built once: Play asks for it at every step
    bool unanswered_ = false;    // the last exchange failed: the panel says so
};
