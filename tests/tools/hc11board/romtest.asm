* A ROM for the board's tests, set up as on a real board: the SCI at 9600
* baud (8 MHz crystal, 2 MHz E clock). It sends a banner, times a fixed loop
* with TCNT and sends the count as "T=" and four hex digits, lets an output
* compare wake WAI and says so, then sleeps in WAI and answers every
* character it receives, from the receive interrupt, with its case swapped.

REGS    EQU     $1000           register block
TCNT    EQU     $0E             offsets in the register block
TOC2    EQU     $18
TMSK1   EQU     $22
TFLG1   EQU     $23
BAUD    EQU     $2B
SCCR1   EQU     $2C
SCCR2   EQU     $2D
SCSR    EQU     $2E
SCDR    EQU     $2F
TDRE    EQU     %10000000
OC2F    EQU     %01000000       OC2's flag in TFLG1, its enable in TMSK1
LOOPS   EQU     100             passes of the timed loop
WAIT    EQU     1000            E cycles until the output compare

START   EQU     $E000
T0      EQU     $0040           TCNT at the start of the timed loop
NUM     EQU     $0042           the number PUTD sends
WOKEN   EQU     $0044           counted up by the output compare interrupt

        ORG     START
        LDS     #$01FF
        LDX     #REGS
        LDAA    #$30            prescaler 13, divider 1: 9600 baud
        STAA    BAUD,X
        CLR     SCCR1,X
        LDAA    #$0C            transmitter and receiver on
        STAA    SCCR2,X
        LDY     #BANNER
        JSR     PUTS

* The timed loop: from one TCNT read to the next.
        LDD     TCNT,X
        STD     T0
        LDAB    #LOOPS
SPIN    DECB
        BNE     SPIN
        LDD     TCNT,X
        SUBD    T0
        STD     NUM
        LDY     #TIMED
        JSR     PUTS
        JSR     PUTD
        LDY     #CRLF
        JSR     PUTS

* An output compare ends WAI.
        CLR     WOKEN
        LDD     TCNT,X
        ADDD    #WAIT
        STD     TOC2,X
        LDAA    #OC2F
        STAA    TFLG1,X         a stale flag goes
        STAA    TMSK1,X
        CLI
        WAI
        LDY     #WOKE
        TST     WOKEN
        BNE     SAY
        LDY     #NOTWOKE
SAY     JSR     PUTS

* From here on the receive interrupt does the work.
        LDAA    #$2C            receive interrupt, transmitter, receiver
        STAA    SCCR2,X
IDLE    WAI
        BRA     IDLE

* Output compare 2: once is enough.
OC2ISR  LDX     #REGS
        LDAA    #OC2F
        STAA    TFLG1,X
        CLR     TMSK1,X
        INC     WOKEN
        RTI

* A received character goes back with its case swapped.
SCIISR  LDX     #REGS
        LDAA    SCSR,X          status, then data: RDRF clears
        LDAA    SCDR,X
        EORA    #$20
        JSR     PUTC
        RTI

* Sends the text at Y up to its zero byte.
PUTS    LDAA    0,Y
        BEQ     PUTSEND
        JSR     PUTC
        INY
        BRA     PUTS
PUTSEND RTS

* Sends NUM as four hex digits.
PUTD    LDAA    NUM
        BSR     PUTHEX
        LDAA    NUM+1
PUTHEX  PSHA
        LSRA
        LSRA
        LSRA
        LSRA
        BSR     PUTNIB
        PULA
        ANDA    #$0F
PUTNIB  ADDA    #'0'
        CMPA    #'9'
        BLS     PUTC
        ADDA    #7
* Sends the character in A; X points at the registers.
PUTC    BRCLR   SCSR,X,#TDRE,PUTC
        STAA    SCDR,X
        RTS

BANNER  FCC     "ROMTEST"
CRLF    FCB     13,10,0
TIMED   FCC     "T="
        FCB     0
WOKE    FCC     "WOKE"
        FCB     13,10,0
NOTWOKE FCC     "NOT WOKEN"
        FCB     13,10,0

        ORG     $FFD6           SCI
        FDB     SCIISR
        ORG     $FFE6           output compare 2
        FDB     OC2ISR
        ORG     $FFFE           reset
        FDB     START
        END     START
