* LED counter on the input-output unit.
* Counts on the eight LEDs of the output register at $6001 and
* restarts from the switches of the input register at $6000 whenever
* switch 7 is pressed.

IOIN    EQU     $6000           input register: the switches
IOOUT   EQU     $6001           output register: the LEDs
IOCTL   EQU     $6002           control register
STACK   EQU     $00FF
DELAY   EQU     5000            inner loop turns per step

        ORG     $E000
START   LDS     #STACK
        CLR     IOCTL           plain output, no interrupts
        CLRA
NEXT    STAA    IOOUT           show the count
        BSR     WAIT
        LDAB    IOIN
        BITB    #%10000000      switch 7 pressed?
        BEQ     COUNT
        TBA                     restart from the switches
        ANDA    #$7F
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
