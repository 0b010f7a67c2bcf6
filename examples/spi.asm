* SPI master (simulator mode): every value entered in the input-output
* unit's input goes out on the SPI, and the byte the device answers with
* comes back on the unit's LEDs. In the simulator, the SPI window's
* "SPI answer" row sets what the device answers and "SPI sent" shows the
* last byte it got.

REGS    EQU     $1000           register block
DDRD    EQU     $09             offsets in the register block
SPCR    EQU     $28
SPSR    EQU     $29
SPDR    EQU     $2A
SPIF    EQU     %10000000       transfer complete
INFLAG  EQU     $6000           1: the user has entered a value
INDATA  EQU     $6001           the value; reading it clears INFLAG
OUTDATA EQU     $6003           the byte shown on the LEDs

        ORG     $E000
START   LDS     #$00FF
        LDX     #REGS
        LDAA    #%00111000      /SS, SCK and MOSI are outputs: /SS as
        STAA    DDRD,X          an output keeps the master from a mode fault
        LDAA    #%01010010      SPE and MSTR, E/16
        STAA    SPCR,X
WAIT    TST     INFLAG          a value entered?
        BEQ     WAIT
        LDAA    INDATA
        STAA    SPDR,X          starts the transfer
BUSY    BRCLR   SPSR,X SPIF BUSY
        LDAA    SPDR,X          the answer; with the status read, clears SPIF
        STAA    OUTDATA
        BRA     WAIT

        ORG     $FFFE
        FDB     START
        END     START
