// The program both chip benchmarks run: it keeps the SCI transmitting from
// its TDRE interrupt, takes an output compare interrupt every 1000 E cycles
// and the RTI at its fastest rate, around a main loop of mixed work. It
// starts at $E000, the reset vector's address.
#pragma once

#include "hc11/asm/S19Reader.h"

#include <cstdint>
#include <string>

namespace bench {

inline const char* const Program = R"(
REGS    EQU     $1000
        ORG     $E000
START   LDS     #$01FF
        LDX     #REGS
        LDAA    #$30            9600 baud
        STAA    $2B,X
        LDAA    #$88            TIE, TE
        STAA    $2D,X
        LDAA    #$40            OC2I
        STAA    $22,X
        STAA    $24,X           RTII, E/2^13
        CLI
OUTER   LDX     #$2000
        LDY     #$2100
LOOP    LDAA    0,X
        LDAB    1,X
        ABA
        STAA    0,Y
        MUL
        ADDD    #$1234
        STD     $40
        JSR     SUB
        LDAA    $43
        ANDA    #$7F
        INCA
        STAA    2,X
        BSET    3,X $01
        BRCLR   3,X $80 SKIP
        NOP
SKIP    INX
        INY
        CPX     #$2080
        BNE     LOOP
        BRA     OUTER
SUB     PSHX
        LDD     $40
        LDX     #$0007
        IDIV
        STX     $42
        PULX
        RTS

SCIH    LDAA    $102E           status read, then the data write clears TDRE
        LDAA    $50
        STAA    $102F
        INC     $50
        RTI
OC2H    LDD     $1018
        ADDD    #1000
        STD     $1018
        LDAA    #$40
        STAA    $1023
        RTI
RTIH    LDAA    #$40
        STAA    $1025
        INC     $51
        RTI

        ORG     $FFD6
        FDB     SCIH
        ORG     $FFE6
        FDB     OC2H
        ORG     $FFF0
        FDB     RTIH
        ORG     $FFFE
        FDB     START
)";

// The S1 records of the assembled program into memory.
inline void LoadS19(const std::string& s19, std::uint8_t* memory)
{
    hc11::as11::ForEachByte(hc11::as11::ReadS19(s19),
                            [memory](std::uint16_t address, std::uint8_t byte) { memory[address] = byte; });
}

} // namespace bench
