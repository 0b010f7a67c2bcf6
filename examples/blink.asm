* Counts in binary on the input-output unit's LEDs, one step a quarter of a
* second, from the output compare 2 interrupt; the main program only waits.
* The interrupt comes every 25 ms at a 2 MHz E clock (8 MHz crystal); ten of
* them make one step of the count.

REGS    EQU     $1000           register block
TCNT    EQU     $0E             offsets in the register block
TOC2    EQU     $18
TMSK1   EQU     $22
TFLG1   EQU     $23
OC2F    EQU     %01000000       output compare 2 flag and its interrupt enable
LEDS    EQU     $6003           the input-output unit's out data
PERIOD  EQU     50000           E cycles between two interrupts: 25 ms
TICKS   EQU     10              interrupts for one step of the count

        ORG     $0010           behind the monitor's save area
TICK    RMB     1

        ORG     $E000
START   LDS     #$00FF
        LDX     #REGS
        CLR     TICK
        CLR     LEDS
        LDD     TCNT,X          the first compare one period from now
        ADDD    #PERIOD
        STD     TOC2,X
        LDAA    #OC2F
        STAA    TFLG1,X         a flag left from before is cleared
        STAA    TMSK1,X         the interrupt on
        CLI
IDLE    WAI
        BRA     IDLE

* Output compare 2: the next compare one period on, then the count.
OC2ISR  LDX     #REGS
        LDD     TOC2,X
        ADDD    #PERIOD
        STD     TOC2,X
        LDAA    #OC2F
        STAA    TFLG1,X
        INC     TICK
        LDAA    TICK
        CMPA    #TICKS
        BNE     DONE
        CLR     TICK
        INC     LEDS
DONE    RTI

        ORG     $FFE6
        FDB     OC2ISR
        ORG     $FFFE
        FDB     START
        END     START
