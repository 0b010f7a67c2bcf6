* LED counter on the input-output unit (simulator mode).
* Counts on the eight LEDs of the unit's output and restarts from the
* value the user enters in its input, whenever one is pending.

INFLAG  EQU     $6000           1: the user has entered a value
INDATA  EQU     $6001           the value; reading it clears INFLAG
OUTDATA EQU     $6003           the byte shown on the LEDs
STACK   EQU     $00FF
DELAY   EQU     200             inner loop turns per step

        ORG     $E000
START   LDS     #STACK
        CLRA
NEXT    STAA    OUTDATA         show the count
        BSR     WAIT
        TST     INFLAG          a value entered?
        BEQ     COUNT
        LDAA    INDATA          restart from it
        BRA     NEXT
COUNT   INCA
        BRA     NEXT

* Busy wait of DELAY turns; keeps A and B.
WAIT    PSHX
        LDX     #DELAY
WLOOP   DEX
        BNE     WLOOP
        PULX
        RTS

        ORG     $FFFE
        FDB     START           reset vector
        END     START
