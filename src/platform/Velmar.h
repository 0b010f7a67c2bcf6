// Velmar: the simulator component. Executes one HC11 instruction on the
// registers it is handed; it keeps neither memory nor a PC. Every data access
// of the instruction is raised, synchronously and in the processor's order,
// as ReadRequest or WriteRequest; connect them directly (the default
// connection within one thread), since ReadRequest answers through its
// reference argument.
//
// What reaches it and what it does:
//  - Straight-line instructions run exactly as on the processor. A, B and CCR
//    come back in 0..255, IX, IY and SP in 0..65535; inputs out of range are
//    first reduced (A = 300 counts as 44, IX = -5 as $FFFB).
//  - A branch, taken or not, and JMP change no register (PC is the host's);
//    BRSET and BRCLR still read their tested byte.
//  - JSR, BSR and RTS are the host's work, with their stack traffic: here they
//    change nothing and raise no event.
//  - SWI and WAI stack their nine-byte frame; having no PC, the return
//    address in it is that of an instruction standing at $0000, that is the
//    instruction's length. SWI then sets I. RTI pulls its frame and drops the
//    PC word. WAI and STOP return at once: there are no interrupts to wait for.
//  - An illegal opcode changes nothing.
#pragma once

#include "hc11/Cpu.h"

#include <QObject>

#include <cstdint>
#include <memory>

class Velmar : public QObject {
    Q_OBJECT
public:
    explicit Velmar(QObject* parent = nullptr);
    ~Velmar() override;

    void ExecuteInstruction(std::int16_t& A, std::int16_t& B, std::int32_t& IX, std::int32_t& IY,
                            std::int32_t& SP, std::int16_t& CCR, std::int16_t Byte1, std::int16_t Byte2,
                            std::int16_t Byte3, std::int16_t Byte4, std::int16_t Byte5);

signals:
    // Data := the byte at Address. Data starts as 0; only its low 8 bits count.
    void ReadRequest(std::int32_t Address, std::int16_t& Data);
    // The byte at Address := Data (0..255).
    void WriteRequest(std::int32_t Address, std::int16_t Data);

private:
    class EventBus;
    std::unique_ptr<EventBus> bus_;
    hc11::Cpu cpu_;
};
