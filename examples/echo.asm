* Serial echo on the SCI: every character received is sent back, a
* carriage return also with a line feed. 9600 baud from an 8 MHz crystal.

REGS    EQU     $1000           register block
BAUD    EQU     $2B             offsets in the register block
SCCR1   EQU     $2C
SCCR2   EQU     $2D
SCSR    EQU     $2E
SCDR    EQU     $2F
TDRE    EQU     %10000000       transmit data register empty
RDRF    EQU     %00100000       receive data register full
CR      EQU     13
LF      EQU     10

        ORG     $E000
START   LDS     #$00FF
        LDX     #REGS
        LDAA    #$30            prescaler 13, divider 1: 9600 baud
        STAA    BAUD,X
        CLR     SCCR1,X         8 data bits
        LDAA    #$0C            transmitter and receiver on
        STAA    SCCR2,X
        LDY     #GREET
        BSR     PUTS

LOOP    BRCLR   SCSR,X RDRF LOOP   wait for a character
        LDAA    SCDR,X
        BSR     PUTC
        CMPA    #CR
        BNE     LOOP
        LDAA    #LF
        BSR     PUTC
        BRA     LOOP

* Sends the character in A.
PUTC    BRCLR   SCSR,X,#TDRE,PUTC
        STAA    SCDR,X
        RTS

* Sends the text at Y up to its zero byte.
PUTS    LDAA    0,Y
        BEQ     PUTSEND
        BSR     PUTC
        INY
        BRA     PUTS
PUTSEND RTS

GREET   FCC     "Echo ready"
        FCB     CR,LF,0

        ORG     $FFFE
        FDB     START
        END     START
