* Table lookup: squares of 0 to 15 from a table, and a seven-segment
* pattern for each hexadecimal digit, shown on the LEDs at $6001.

IOIN    EQU     $6000
IOOUT   EQU     $6001
RESULT  EQU     $0010           two bytes in the direct page

        ORG     $E000
START   LDS     #$00FF
MAIN    LDAB    IOIN            digit from the low switches
        ANDB    #$0F
        BSR     SQUARE
        STD     RESULT
        LDX     #SEGMENTS
        ABX
        LDAA    0,X
        STAA    IOOUT
        BRA     MAIN

* D := square of B (0 to 15), from a table of words.
SQUARE  PSHB
        LDX     #SQUARES
        ASLB                    two bytes per entry
        ABX
        LDD     0,X
        PULB
        RTS

SQUARES FDB     0,1,4,9,16,25,36,49
        FDB     64,81,100,121,144,169,196,225
SEGMENTS FCB    $3F,$06,$5B,$4F,$66,$6D,$7D,$07
        FCB     $7F,$6F,$77,$7C,$39,$5E,$79,$71
TABLEND EQU     *
SIZE    EQU     TABLEND-SQUARES

        ORG     $FFFE
        FDB     START
        END     START
